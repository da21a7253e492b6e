#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "catalog/Answers.h"
#include "catalog/CatalogTables.h"
#include "model/DataAccess.h"

namespace quillform {

/// Given answers applied to one database: for each of its tables, fields and pairs of tables what is to be answered,
/// by the answers where they name it, else by their rules for what they don't name.
class AnswerBook {
public:
    /// Both outlive the book.
    AnswerBook(const Database& database, const Answers& answers) : database_(database), answers_(answers) {}

    /// The answers for a table and, where it is included, for each of its fields in the table's order. RunTimeError
    /// InvalidFileFormat for a table or field that must be listed and isn't, and for a width of a field that can't be
    /// described as a text.
    TableAnswers ForTable(const TableDef& table);
    /// The field of either table that links the two, in their order, and the line that says so; none if they aren't
    /// linked. RunTimeError InvalidFileFormat for a field that isn't there.
    std::optional<LinkAnswers> ForLink(const TableDef& first, const TableDef& second);

    /// What is out of the ordinary, a whole sentence each.
    std::vector<std::string>& Notes() { return notes_; }
    [[noreturn]] void Fail(int line, std::string_view problem) const;

private:
    TableAnswers ForUnlisted(const TableDef& table);
    FieldAnswers ForField(const TableDef& table, const Field& field, const TableAnswers* listed);
    std::optional<LinkAnswers> ForUnlistedLink(const TableDef& first, const TableDef& second);
    const std::string& FieldName(const TableDef& table, const std::string& name, int line) const;

    const Database& database_;
    const Answers& answers_;
    std::optional<std::vector<CatalogRelation>> proposedLinks_;
    std::vector<std::string> notes_;
};

/// The answers whose lines aren't in `used`, a sentence each, about tables and fields or about links. What stands below
/// an unused line is not told again.
std::vector<std::string> UnusedFieldAnswers(const Answers& answers, const std::set<int>& used);
std::vector<std::string> UnusedLinkAnswers(const Answers& answers, const std::set<int>& used);

}  // namespace quillform
