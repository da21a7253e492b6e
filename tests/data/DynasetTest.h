#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "data/SmallDatabase.h"

namespace quillform::data {

inline constexpr RecordsetType dynaset = RecordsetType::Dynaset;

/// A small database in each of the formats: what holds for one holds for all.
class FormatsTest : public testing::TestWithParam<DatabaseVersion> {
protected:
    void SetUp() override {
        engine_ = MakeEngine(clock_);
        database_ = engine_->CreateDatabase(Path(), GetParam());
        FillSmall(*database_);
    }
    std::string Path() const { return folder_.File("small.db"); }
    std::unique_ptr<Recordset> Open(const char* source) { return database_->OpenRecordset(source, dynaset); }

    /// Number of the error that an action ends in; 0 if it ends well.
    static ErrorNumber NumberOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const RunTimeError& error) {
            EXPECT_EQ(std::string(error.what()).back(), '.') << error.what();
            return error.Number();
        }
        return ErrorNumber{};
    }

    FixedClock clock_{36161.5};
    ScratchFolder folder_;
    std::unique_ptr<DBEngine> engine_;
    std::unique_ptr<Database> database_;
};

inline const auto allFormats = testing::Values(DatabaseVersion::Jet30, DatabaseVersion::Jet40, DatabaseVersion::Sqlite);

inline std::string NameOfFormat(const testing::TestParamInfo<DatabaseVersion>& format) {
    if (format.param == DatabaseVersion::Sqlite) return "Sqlite";
    return format.param == DatabaseVersion::Jet30 ? "Jet3" : "Jet4";
}

}  // namespace quillform::data
