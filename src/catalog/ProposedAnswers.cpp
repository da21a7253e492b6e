#include "catalog/ProposedAnswers.h"

#include "catalog/CatalogDefinitions.h"
#include "catalog/FieldRows.h"
#include "catalog/Quoted.h"
#include "catalog/ReplyChecks.h"
#include "catalog/TableLinks.h"
#include "platform/Text.h"

namespace quillform {

namespace {

constexpr int memoWidth = 50;
constexpr int guidWidth = 38;  // 32 digits, 4 hyphens, 2 braces
constexpr std::size_t longestText = 50;

std::string LeftOut(const std::string& what, const std::string& reason) {
    return "The " + what + " is left out: " + reason + ".";
}

}  // namespace

std::string ProblemOfTable(const TableDef& table, bool& isSilent) {
    isSilent = table.IsSystem || !IsOfferedTable(table.Name);
    const std::string what = "table " + Quoted(table.Name);
    if (isSilent) return LeftOut(what, "it is hidden");
    if (table.IsLinked) return LeftOut(what, "its records are in another file");
    const std::string problem = wizard::NameProblem(table.Name);
    return problem.empty() ? problem : LeftOut(what, problem);
}

FieldAnswers ProposedField(const TableDef& table, const Field& field, std::vector<std::string>& notes) {
    FieldAnswers answers;
    answers.name = field.Name;
    std::string problem = wizard::NameProblem(field.Name);
    if (field.Type == FieldType::Binary || field.Type == FieldType::LongBinary)
        problem = std::string(FieldTypeName(field.Type)) + " fields can't be printed";
    answers.isIncluded = problem.empty();
    if (!answers.isIncluded)
        notes.push_back(LeftOut("field " + Quoted(field.Name) + " of " + Quoted(table.Name), problem));
    if (field.Type == FieldType::Memo) answers.asText = memoWidth;
    if (field.Type == FieldType::Guid) answers.asText = guidWidth;
    const std::size_t room = longestText - CharactersBehindDescription(field);
    if (answers.isIncluded && field.Type == FieldType::Date && CountCharacters(field.Name) > room) {
        answers.description = Answer{std::string(LeftCharacters(field.Name, room)), 0};
        notes.push_back("The description of " + Quoted(field.Name) + " of " + Quoted(table.Name) +
                        " is cut, so that it and its mask fit into " + std::to_string(longestText) + " characters.");
    }
    return answers;
}

std::vector<CatalogRelation> ProposedLinks(const Database& database, std::vector<std::string>& notes) {
    std::vector<TableDef> tables;
    for (const TableDef& table : database.TableDefs()) {
        bool isSilent = false;
        if (ProblemOfTable(table, isSilent).empty()) tables.push_back(table);
    }
    TableLinks links = LinkTables(tables, database.Relations());
    for (std::string& sentence : links.leftOut) notes.push_back(std::move(sentence));
    return std::move(links.relations);
}

}  // namespace quillform
