#include "catalog/CatalogWriter.h"
#include "catalog/ReplyChecks.h"
#include "catalog/WizardTexts.h"
#include "catalog/WizardWalk.h"

namespace quillform {

namespace {

std::string ProblemOfNames(const TableDef& first, const TableDef& second) {
    std::string problem = wizard::CheckName("The table", first.Name);
    return problem.empty() ? wizard::CheckName("The table", second.Name) : problem;
}

std::string ProblemOfColumns(const PageAsker& pages) {
    std::string problem = wizard::CheckName("The field", pages.Field1());
    return problem.empty() ? wizard::CheckName("The field", pages.Field2()) : problem;
}

}  // namespace

void WizardWalk::ConfigureTableRelation(const TableDef& first, const TableDef& second, Recordset& relations,
                                        std::string_view firstPath, std::string_view secondPath) {
    WizardTopic topic{WizardQuestion::Link, &first, nullptr, &second, 1};
    do {
        topic.question = WizardQuestion::Link;
        const WizardResponse response = pages_.AskYesNo(topic, wizard::LinkPage(first.Name, second.Name),
                                                        WizardResponse::Yes, ProblemOfNames(first, second));
        if (response == WizardResponse::No) return;
        topic.question = WizardQuestion::LinkColumns;
    } while (pages_.AskColumns(topic, wizard::LinkColumnsPage(first.Name, second.Name),
                               [&] { return ProblemOfColumns(pages_); }) == WizardResponse::Back);
    if (pages_.Field1().empty() || pages_.Field2().empty()) return;
    RelationWriter(relations, firstPath, secondPath).Write({first.Name, second.Name, pages_.Field1(), pages_.Field2()});
}

}  // namespace quillform
