#pragma once

#include <functional>

#include "catalog/CheckDatabase.h"
#include "catalog/PageAsker.h"
#include "catalog/WizardPage.h"

namespace quillform {

/// The configuration as a person goes through it, one wizard page at a time. Rows are written as their answers are
/// given, so a walk that is broken off leaves all that was answered until then.
class WizardWalk final : public ConfigurationWalk {
public:
    using LabelForm = std::function<void(Database&)>;

    /// `page` and `user` outlive the walk. `labels` shows the form for label styles; empty where there is none.
    /// `databasePath` goes into the rows of `Report - Index`; where it is empty, the path by which the database was
    /// opened.
    WizardWalk(WizardPage& page, UserInterface& user, LabelForm labels = {}, std::string databasePath = {})
        : pages_(page, user), labels_(std::move(labels)), databasePath_(std::move(databasePath)) {}

    /// Asks nothing once the catalog holds all the rows that a report can select.
    void ConfigureTableFields(Database& database, const TableDef& table, Recordset& index) override;
    void ConfigureTableRelation(const TableDef& first, const TableDef& second, Recordset& relations,
                                std::string_view firstPath, std::string_view secondPath) override;
    void MaintainLabels(Database& database) override {
        if (labels_) labels_(database);
    }

private:
    PageAsker pages_;
    LabelForm labels_;
    std::string databasePath_;
    bool isFull_ = false;
};

}  // namespace quillform
