#pragma once

#include <optional>
#include <string>
#include <vector>

// The answers to a whole configuration as values: what an answers file holds, what a recording gives, and what is
// proposed where nobody answers. What isn't answered gets the reply that the page proposes.
namespace quillform {

/// One reply; `line` is where it stands in its file, from 1, and 0 where it comes from no file.
struct Answer {
    std::string text;
    int line = 0;
};

/// One formula over a field.
struct FormulaAnswers {
    Answer choice;  ///< as in the list of formulas: "Sum(Field)"
    std::optional<Answer> position;
    std::optional<Answer> length;
    std::optional<Answer> mask;
    std::optional<Answer> alias;
    std::optional<Answer> description;
};

struct FieldAnswers {
    std::string name;
    int line = 0;
    bool isIncluded = true;
    bool isRaw = true;  ///< as it is, without a formula
    int rawLine = 0;
    bool isDate = false;  ///< a text that holds a date as digits
    int dateLine = 0;
    /// Characters of the text that a memo or a GUID is to be described as, rather than as a number; 0: as a number.
    int asText = 0;
    int asTextLine = 0;
    std::optional<Answer> description;
    std::optional<Answer> maskCount;  ///< missing: as many as there are masks
    /// One for a number or a text; of a date's passes those that aren't here are blank. None: as proposed.
    std::vector<Answer> masks;
    std::vector<FormulaAnswers> formulas;
};

struct TableAnswers {
    std::string name;
    int line = 0;
    bool isIncluded = true;
    std::vector<FieldAnswers> fields;
};

/// Whether two tables, in any order, are linked, and by which fields.
struct LinkAnswers {
    std::string table1;
    std::string table2;
    std::string field1;  ///< of table1; both are empty where the tables aren't linked
    std::string field2;
    int line = 0;
};

/// What becomes of tables, fields or pairs of tables that have no answers.
enum class Unlisted {
    Default,  ///< they get what is proposed
    No,       ///< they are left out
    Stop,     ///< the configuration fails, and the database stays as it is
};

struct Answers {
    std::string fileName;  ///< for messages; empty where the answers come from no file
    Unlisted unlisted = Unlisted::Default;
    Unlisted unlistedLinks = Unlisted::Default;
    bool commonSheets = true;  ///< the common label sheets are added to a labels table that is made
    std::vector<TableAnswers> tables;
    std::vector<LinkAnswers> links;
};

/// The element of that name, case not counted; null if there is none.
const TableAnswers* FindAnswers(const std::vector<TableAnswers>& tables, const std::string& name);
const FieldAnswers* FindAnswers(const std::vector<FieldAnswers>& fields, const std::string& name);
const LinkAnswers* FindAnswers(const std::vector<LinkAnswers>& links, const std::string& table1,
                               const std::string& table2);

}  // namespace quillform
