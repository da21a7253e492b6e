#include "catalog/ReplyChecks.h"

#include <limits>

#include "catalog/CatalogTables.h"
#include "catalog/FormulaLists.h"
#include "catalog/Quoted.h"
#include "model/clssFields.h"
#include "platform/Numbers.h"
#include "platform/Text.h"

namespace quillform::wizard {

namespace {

constexpr std::size_t columnWidth = 50;  // of every text column that a reply goes to

/// `subject` has more characters than fit.
Objection TooLong(std::string_view subject, std::string_view text, std::size_t room, std::string_view remedy) {
    const std::size_t length = CountCharacters(text);
    if (length <= room) return {};
    return Objection::Refuse(std::string(subject) + " has " + std::to_string(length) +
                             " characters, and the catalog holds " + std::to_string(room) + ". " + std::string(remedy));
}

Objection Doubtful(std::string sentence) { return Objection::Doubt(std::move(sentence) + std::string(keepHint)); }

}  // namespace

std::optional<std::int16_t> WholeNumber(std::string_view text) {
    try {
        return CInt(Val(text));
    } catch (const RunTimeError&) {
        return std::nullopt;  // beyond the range is the only failure of the two
    }
}

std::string NameProblem(std::string_view name) {
    if (CountCharacters(name) > columnWidth)
        return "its name has more than " + std::to_string(columnWidth) + " characters";
    if (name.find_first_of("[]") != std::string_view::npos) return "its name holds a bracket";
    return {};
}

std::string CheckName(std::string_view what, std::string_view name) {
    const std::string problem = NameProblem(name);
    return problem.empty() ? problem : std::string(what) + " " + Quoted(name) + " can't be included: " + problem + ".";
}

Objection CheckDescription(std::string_view description, std::size_t behind) {
    Objection tooLong = TooLong("The description", description, columnWidth, "Please shorten it.");
    if (!tooLong.text.empty() || behind == 0) return tooLong;
    if (CountCharacters(Trim(description)) + behind <= columnWidth) return {};
    return Doubtful("The mask is written behind the description. With the longest that is proposed, " +
                    Quoted(description) + " would have more than the " + std::to_string(columnWidth) +
                    " characters that the catalog holds.");
}

Objection CheckMask(std::string_view mask, std::size_t room) {
    return TooLong("The mask", mask, room, "Please shorten it.");
}

Objection CheckMaskedText(std::string_view text) {
    return TooLong("The description with its mask, " + Quoted(text) + ",", text, columnWidth,
                   "Please take a shorter mask or go back to the description.");
}

Objection CheckMaskCount(std::string_view reply) {
    const auto count = WholeNumber(reply);
    if (!count || *count > ItemCode::LastCatalog)
        return Objection::Refuse(Quoted(reply) + " masks are more than the " + std::to_string(ItemCode::LastCatalog) +
                                 " entries that the catalog can have.");
    if (ParseNumber(reply) && *count > 0) return {};
    if (!ParseNumber(reply) && *count == 0)
        return Doubtful(Quoted(reply) + " is no number and counts as 0: the field would get no mask and no entry.");
    if (*count > 0) return Doubtful(Quoted(reply) + " counts as " + std::to_string(*count) + " masks.");
    return Doubtful("With " + Quoted(reply) + " masks the field gets no entry.");
}

Objection CheckParameter(std::string_view parameter, std::string_view reply, int least) {
    const std::string subject = "The " + std::string(parameter);
    Objection tooLong = TooLong(subject, reply, columnWidth - 1, "Please shorten it.");
    if (!tooLong.text.empty()) return tooLong;
    const auto number = WholeNumber(reply);
    if (!number)
        return Objection::Refuse(subject + " " + Quoted(reply) + " is beyond " +
                                 std::to_string(std::numeric_limits<std::int16_t>::max()) + ".");
    if (ParseNumber(reply) && *number >= least) return {};
    return Doubtful(subject + " " + Quoted(reply) + " is no number from " + std::to_string(least) +
                    " up. A report that shows the formula would fail.");
}

Objection CheckAlias(Database& database, std::string_view alias) {
    Objection tooLong = TooLong("The alias", alias, columnWidth, "Please shorten it.");
    if (!tooLong.text.empty()) return tooLong;
    if (Trim(alias).empty()) return Doubtful("The alias is empty. A report that shows the formula would fail.");
    if (alias.find_first_of("[]") != std::string_view::npos)
        return Doubtful("The alias " + Quoted(alias) + " holds a bracket. A report that shows the formula would fail.");
    const auto rows = database.OpenRecordset("SELECT * FROM [Report - Index]", RecordsetType::Snapshot);
    for (; !rows->IsEOF(); rows->MoveNext())
        if (NumberOf(rows->Value("Formula Flag")) != 0 && EqualCaseBlind(rows->Text("Alias Name"), alias))
            return Doubtful("The alias " + Quoted(alias) + " is that of the formula " + Quoted(rows->Text("Text")) +
                            " already. A report that shows both would fail.");
    return {};
}

Objection CheckFormula(FieldType type, std::string_view entry) {
    if (FormulaOf(type, entry)) return {};
    return Objection::Refuse(Quoted(entry) + " is no formula for a field of this type.");
}

}  // namespace quillform::wizard
