#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/LabelStyles.h"
#include "model/DataAccess.h"
#include "model/Layout.h"

namespace quillform::dialogs {

/// The label styles that the report options offer: those in `Report - Labels` of the report database. A path means the
/// database that a run of the layout would open for it.
class LabelList {
public:
    /// Both outlive the list.
    LabelList(const Layout& layout, DBEngine& engine) : layout_(layout), engine_(engine) {}

    /// Reads the descriptions that the path leads to; none where there is no such database or table. False, at the cost
    /// of a look at the file, if that is what was read last and the file hasn't changed since.
    bool Read(std::string_view path);
    /// The next Read reads in any case.
    void Forget() { looked_.reset(); }
    const std::vector<std::string>& Descriptions() const { return descriptions_; }

    /// The first style of this description, empty if there is none any more. RunTimeError if the database can't be
    /// read.
    std::optional<LabelStyle> Find(std::string_view path, std::string_view description) const;

private:
    /// Tells one content of a file from another without reading it. Without a path: no file.
    struct Look {
        std::filesystem::path path;
        std::filesystem::file_time_type time;
        std::uintmax_t size = 0;
        friend bool operator==(const Look&, const Look&) = default;
    };
    Look LookAt(std::string_view path) const;

    const Layout& layout_;
    DBEngine& engine_;
    std::optional<Look> looked_;  // at the last Read
    std::vector<std::string> descriptions_;
};

}  // namespace quillform::dialogs
