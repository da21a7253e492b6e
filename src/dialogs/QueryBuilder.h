#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dialogs/QueryFields.h"
#include "model/collQuery.h"

namespace quillform::dialogs {

/// What can stand in the two combo boxes, in their order.
inline constexpr std::array<std::string_view, 7> queryOperations{"=", ">=", "<=", "<>", "<", ">", "LIKE"};
inline constexpr std::array<std::string_view, 2> queryJoins{"AND", "OR"};

/// What the entry controls hold.
struct QueryEntry {
    std::string field;
    std::string operation;
    std::string value;
    std::string join;

    friend bool operator==(const QueryEntry&, const QueryEntry&) = default;
};

/// Why an entry can't be stored, in words for people; empty if it can.
std::string_view RefusalOf(const QueryEntry& entry);

/// The lines that the query builder works on. They are the layout's own until one is moved: what was added, changed or
/// deleted stays even if the form is left by Exit. The first move makes a copy, and from then on only HandOver gives
/// the layout what was done.
class QueryBuilder {
public:
    /// `queries` are the layout's lines and outlive the builder.
    explicit QueryBuilder(collQuery& queries) : queries_(queries) {}

    collQuery& Lines() { return own_ ? *own_ : queries_; }
    const collQuery& Lines() const { return own_ ? *own_ : queries_; }

    enum class Blanks { Kept, Trimmed };
    /// The lines as people read them. The first one is shown without its join word. Every value stands in apostrophes,
    /// unlike in a statement.
    std::vector<std::string> Texts(Blanks blanks = Blanks::Kept) const;

    /// The entry is about this catalog row from now on.
    void PickField(std::int16_t code) { code_ = code; }
    /// Replaces the line at position `selected`, or adds one if that is 0. The entry isn't refused.
    void Store(const QueryEntry& entry, int selected);
    /// The entry that a line is edited by. An operation that isn't in the list shows as LIKE, a join as OR.
    QueryEntry Edit(int position);
    void Delete(int position) { Lines().Remove(position); }
    /// Exchanges a line with its neighbour above or below. False if it has none, or `position` is 0.
    bool MoveUp(int position) { return position > 1 && Exchange(position - 1); }
    bool MoveDown(int position) { return position > 0 && position < Lines().Count() && Exchange(position); }

    void HandOver();

    /// Tells what the catalog has, so that there can be hints.
    void KnowFields(const std::vector<QueryTable>& tables);
    /// What the entry would do in a report, or a line does, that its writer may not expect; empty if nothing. Lines of
    /// another database's query file ask for other fields, or for none.
    std::string Hint(const QueryEntry& entry) const;
    std::string LineHint(int position) const;

private:
    bool Exchange(int upper);
    std::string FieldHint(std::int16_t code, std::string_view text) const;

    collQuery& queries_;
    std::optional<collQuery> own_;
    std::int16_t code_ = 0;  // of the field that the entry is about
    std::unordered_map<std::int32_t, std::string> fields_;
};

}  // namespace quillform::dialogs
