#include "dialogs/QueryBuilder.h"

#include <algorithm>
#include <utility>

#include "platform/Numbers.h"
#include "platform/Text.h"

namespace quillform::dialogs {

namespace {

bool IsBlank(std::string_view text) { return Trim(text).empty(); }

std::string TextOf(const clssQuery& line, bool isFirst, QueryBuilder::Blanks blanks) {
    const auto part = [blanks](const std::string& text) {
        return std::string(blanks == QueryBuilder::Blanks::Trimmed ? Trim(text) : std::string_view(text));
    };
    const std::string head = isFirst ? std::string() : part(line.Join) + " ";
    return head + part(line.Text) + " " + part(line.Operator) + " '" + part(line.Value) + "'";
}

/// Whether an apostrophe stands alone: a statement takes two of them for one inside the text, and one for its end.
bool HasLoneApostrophe(std::string_view value) {
    for (std::size_t at = value.find('\''); at != std::string_view::npos; at = value.find('\'', at)) {
        const std::size_t end = std::min(value.find_first_not_of('\'', at), value.size());
        if ((end - at) % 2 != 0) return true;
        at = end;
    }
    return false;
}

std::string ValueHint(std::string_view value) {
    return HasLoneApostrophe(value) ? "Write an apostrophe in a value twice: O''Brien." : "";
}

std::string Joined(const std::string& first, const std::string& second) {
    return first + (first.empty() || second.empty() ? "" : "\n") + second;
}

}  // namespace

std::string_view RefusalOf(const QueryEntry& entry) {
    if (IsBlank(entry.field)) return "You cannot save a query line without selecting the 'Field' for the Query.";
    if (IsBlank(entry.operation)) return "You cannot save a query line without an operation";
    if (IsBlank(entry.join)) return "You cannot save a query line without entering a 'Join'.";
    return {};
}

std::vector<std::string> QueryBuilder::Texts(Blanks blanks) const {
    std::vector<std::string> texts;
    for (const clssQuery& line : Lines()) texts.push_back(TextOf(line, texts.empty(), blanks));
    return texts;
}

void QueryBuilder::Store(const QueryEntry& entry, int selected) {
    collQuery& lines = Lines();
    clssQuery line{.Key = selected > 0 ? lines.Item(selected).Key : Str(lines.Count() + 1.0),
                   .Text = entry.field,
                   .Join = entry.join,
                   .Value = entry.value,
                   .Operator = entry.operation,
                   .Code = code_};
    if (selected > 0)
        lines.Item(selected) = std::move(line);
    else
        lines.Add(std::move(line));
}

QueryEntry QueryBuilder::Edit(int position) {
    const clssQuery& line = Lines().Item(position);
    PickField(line.Code);
    const auto operation = std::ranges::find(queryOperations, Trim(line.Operator));
    return {.field = line.Text,
            .operation = std::string(operation != queryOperations.end() ? *operation : queryOperations.back()),
            .value = line.Value,
            .join = std::string(line.Join == queryJoins.front() ? queryJoins.front() : queryJoins.back())};
}

bool QueryBuilder::Exchange(int upper) {
    collQuery moved;
    const auto copy = [&](int position) { moved.Add(std::as_const(*this).Lines().Item(position)); };
    for (int position = 1; position <= Lines().Count(); ++position) {
        if (position == upper) {
            copy(position + 1);
            copy(position++);
        } else {
            copy(position);
        }
    }
    own_ = std::move(moved);
    return true;
}

void QueryBuilder::HandOver() {
    if (!own_) return;
    queries_ = *std::move(own_);
    own_.reset();
}

void QueryBuilder::KnowFields(const std::vector<QueryTable>& tables) {
    fields_.clear();
    for (const QueryTable& table : tables)
        for (const QueryTable::Row& row : table.rows) fields_.emplace(row.id, row.text);
}

std::string QueryBuilder::Hint(const QueryEntry& entry) const {
    const std::string field = IsBlank(entry.field) ? std::string() : FieldHint(code_, entry.field);
    return Joined(field, ValueHint(entry.value));
}

std::string QueryBuilder::LineHint(int position) const {
    const clssQuery& line = Lines().Item(position);
    return Joined(FieldHint(line.Code, line.Text), ValueHint(line.Value));
}

std::string QueryBuilder::FieldHint(std::int16_t code, std::string_view text) const {
    if (code < 1) return "No field is picked in the tree: reports leave the line out.";
    const auto field = fields_.find(code);
    if (field == fields_.end()) return "The database has no such field: reports leave the line out.";
    if (Trim(field->second) == Trim(text)) return {};
    return "The line asks for the field \"" + field->second + "\", whatever name stands here.";
}

}  // namespace quillform::dialogs
