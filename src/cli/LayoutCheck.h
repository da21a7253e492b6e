#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "catalog/CatalogTables.h"
#include "model/DataAccess.h"
#include "model/Layout.h"
#include "model/UserInterface.h"
#include "persistence/LayoutFile.h"

namespace quillform::cli {

enum class Weight {
    Note,           ///< what something refers to
    Warning,        ///< runs, and may not look as it was meant
    Error,          ///< keeps the report from running, or an item from showing its field
    DatabaseError,  ///< the database is missing or can't be opened
};
/// "note", "warning", "error"
std::string_view NameOf(Weight weight);

struct Finding {
    Weight weight;
    std::string text;
};

/// Looks a layout over without running it. The layout's items are put in the order of a run.
class LayoutCheck {
public:
    /// All outlive the check. `fonts` are the names of the fonts that count as present.
    LayoutCheck(Layout& layout, DBEngine& engine, UserInterface& user, const std::vector<std::string>& fonts)
        : layout_(layout), engine_(engine), user_(user), fonts_(fonts) {}

    /// `problems` are those of the load. Used once.
    std::vector<Finding> Findings(const std::vector<LayoutProblem>& problems);

private:
    void Add(Weight weight, std::string text) { findings_.push_back({weight, std::move(text)}); }

    void CheckFonts();
    void CheckPlaces();
    void CheckLabels();
    void CheckAgainstDatabase();
    bool OpenDatabase();
    void CheckItems();
    void CheckMask(const std::string& name, const clssFields& item, FieldType type);
    /// The column that a catalog row means; null, with a finding, if it is gone.
    const Field* CheckColumn(const std::string& name, const CatalogRow& row);
    void CheckConditions();
    void CheckSorting();
    std::vector<std::string> TablesUsed() const;
    bool CheckTables();
    void CheckStatement();

    Layout& layout_;
    DBEngine& engine_;
    UserInterface& user_;
    const std::vector<std::string>& fonts_;
    std::unique_ptr<Database> database_;
    Catalog catalog_;
    std::vector<Finding> findings_;
};

}  // namespace quillform::cli
