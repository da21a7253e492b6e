#include "catalog/TableLinks.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <optional>
#include <string_view>
#include <tuple>

#include "platform/Text.h"

namespace quillform {

namespace {

constexpr std::string_view keyEndings[] = {"id", "no", "nr", "num", "number", "code", "key", "#"};

// Every table may have such a field, and it means something else in each.
constexpr std::string_view commonNames[] = {"id",          "no",     "nr",      "num",        "number", "code",
                                            "key",         "#",      "counter", "autonumber", "name",   "type",
                                            "description", "status", "date",    "index",      "title"};

/// Types whose values can be compared with each other.
enum class Comparison { None, Number, Text, Date, Guid };

Comparison ComparisonOf(FieldType type) {
    if (IsNumber(type)) return Comparison::Number;
    switch (type) {
        case FieldType::Text:
            return Comparison::Text;
        case FieldType::Date:
            return Comparison::Date;
        case FieldType::Guid:
            return Comparison::Guid;
        default:
            return Comparison::None;
    }
}

bool CanCompare(const Field& left, const Field& right) {
    const Comparison comparison = ComparisonOf(left.Type);
    return comparison != Comparison::None && comparison == ComparisonOf(right.Type);
}

bool IsCommonName(std::string_view name) {
    const std::string lower = LowerCase(name);
    return std::find(std::begin(commonNames), std::end(commonNames), lower) != std::end(commonNames);
}

bool ReadsAsKey(std::string_view name) {
    const std::string lower = LowerCase(name);
    return std::any_of(std::begin(keyEndings), std::end(keyEndings),
                       [&](std::string_view ending) { return lower.ends_with(ending); });
}

/// The single field that tells the rows of a table apart; none where its name could be any table's.
struct Key {
    const Field* field = nullptr;
    bool isDeclared = false;  ///< by an index, not just by its name
};

Key KeyOf(const TableDef& table) {
    const auto fieldOf = [&](const IndexDef& index) -> const Field* {
        const int found = index.Columns.size() == 1 ? table.FindField(index.Columns[0].Name) : -1;
        return found < 0 ? nullptr : &table.Fields[static_cast<std::size_t>(found)];
    };
    const auto keyOf = [](const Field* field, bool isDeclared) {
        return field && !IsCommonName(field->Name) ? Key{field, isDeclared} : Key{};
    };
    for (const IndexDef& index : table.Indexes)
        if (index.Primary) return keyOf(fieldOf(index), true);
    for (const IndexDef& index : table.Indexes)
        if (index.Unique && fieldOf(index)) return keyOf(fieldOf(index), true);
    if (table.Fields.empty() || !ReadsAsKey(table.Fields[0].Name)) return {};
    return keyOf(&table.Fields[0], false);
}

/// Which tables are connected by the links so far.
class Forest {
public:
    explicit Forest(std::size_t count) : parents_(count) { std::iota(parents_.begin(), parents_.end(), 0U); }

    bool AreConnected(std::size_t left, std::size_t right) const { return RootOf(left) == RootOf(right); }
    void Connect(std::size_t left, std::size_t right) { parents_[RootOf(left)] = RootOf(right); }

private:
    std::size_t RootOf(std::size_t node) const {
        while (parents_[node] != node) node = parents_[node];
        return node;
    }
    std::vector<std::size_t> parents_;
};

/// A pair of tables by their positions, and the fields that link them; `left` is below `right`.
struct Link {
    std::size_t left;
    std::size_t right;
    const Field* leftField;
    const Field* rightField;
};

class Linker {
public:
    explicit Linker(const std::vector<TableDef>& tables) : tables_(tables), forest_(tables.size()) {
        for (const TableDef& table : tables_) keys_.push_back(KeyOf(table));
    }

    void TakeOwn(const Relation& relation) {
        const std::optional<std::size_t> one = Find(relation.Table);
        const std::optional<std::size_t> many = Find(relation.ForeignTable);
        if (!one || !many || relation.Fields.empty() || relation.ForeignFields.empty()) return;
        const std::string name = "The relation \"" + relation.Name + "\"";
        if (*one == *many) return LeaveOut(name + " links \"" + relation.Table + "\" with itself; it is left out.");
        const Field* oneField = FieldOf(*one, relation.Fields[0]);
        const Field* manyField = FieldOf(*many, relation.ForeignFields[0]);
        if (!oneField || !manyField) return LeaveOut(name + " names a field that doesn't exist; it is left out.");
        if (forest_.AreConnected(*one, *many))
            return LeaveOut(name + " between \"" + relation.Table + "\" and \"" + relation.ForeignTable +
                            "\" is left out: they are linked already, and a report joins a table only once.");
        if (relation.Fields.size() > 1)
            LeaveOut(name + " has " + std::to_string(relation.Fields.size()) +
                     " pairs of fields, and only the first is used: a report over it may repeat records.");
        Add(*one, *many, oneField, manyField);
    }

    /// Fields of one table that are named as the key of another.
    void GuessReferences() {
        ForEachPair([&](std::size_t left, std::size_t right) {
            GuessReference(left, right);
            GuessReference(right, left);
        });
    }
    /// Tables whose keys have one name.
    void GuessSharedKeys() {
        ForEachPair([&](std::size_t left, std::size_t right) {
            const Key& one = keys_[left];
            const Key& other = keys_[right];
            if (!one.field || !other.field || !(one.isDeclared || other.isDeclared)) return;
            if (one.field->AutoNumber && other.field->AutoNumber) return;
            if (!ReadsAsKey(one.field->Name)) return;
            if (EqualCaseBlind(one.field->Name, other.field->Name)) Guess(left, right, one.field, other.field);
        });
    }

    TableLinks Result() {
        std::sort(links_.begin(), links_.end(),
                  [](const Link& a, const Link& b) { return std::tie(a.left, a.right) < std::tie(b.left, b.right); });
        for (const Link& link : links_)
            result_.relations.push_back(
                {tables_[link.left].Name, tables_[link.right].Name, link.leftField->Name, link.rightField->Name});
        return std::move(result_);
    }

private:
    template <typename Action>
    void ForEachPair(Action action) const {
        for (std::size_t i = 0; i < tables_.size(); ++i)
            for (std::size_t j = i + 1; j < tables_.size(); ++j) action(i, j);
    }

    std::optional<std::size_t> Find(std::string_view name) const {
        for (std::size_t i = 0; i < tables_.size(); ++i)
            if (EqualCaseBlind(tables_[i].Name, name)) return i;
        return std::nullopt;
    }
    const Field* FieldOf(std::size_t table, std::string_view name) const {
        const int found = tables_[table].FindField(name);
        return found < 0 ? nullptr : &tables_[table].Fields[static_cast<std::size_t>(found)];
    }
    bool AreLinked(std::size_t left, std::size_t right) const {
        return std::any_of(links_.begin(), links_.end(), [&](const Link& link) {
            return link.left == std::min(left, right) && link.right == std::max(left, right);
        });
    }

    void GuessReference(std::size_t from, std::size_t to) {
        const Field* key = keys_[to].field;
        if (!key) return;
        const Field* field = FieldOf(from, key->Name);
        if (field && field != keys_[from].field && !field->AutoNumber) Guess(from, to, field, key);
    }
    void Guess(std::size_t one, std::size_t other, const Field* oneField, const Field* otherField) {
        if (!CanCompare(*oneField, *otherField)) return;
        if (!forest_.AreConnected(one, other)) return Add(one, other, oneField, otherField);
        // Of tables that all share one key, each pair but a few is connected by way of the others: nothing is lost.
        if (AreLinked(one, other) || oneField == keys_[one].field) return;
        LeaveOut("\"" + tables_[one].Name + "\" and \"" + tables_[other].Name + "\" both have the field \"" +
                 oneField->Name + "\", but are linked by way of other tables already; no relation is made of it.");
    }

    void Add(std::size_t one, std::size_t other, const Field* oneField, const Field* otherField) {
        forest_.Connect(one, other);
        if (one < other)
            links_.push_back({one, other, oneField, otherField});
        else
            links_.push_back({other, one, otherField, oneField});
    }
    void LeaveOut(std::string sentence) { result_.leftOut.push_back(std::move(sentence)); }

    const std::vector<TableDef>& tables_;
    std::vector<Key> keys_;
    Forest forest_;
    std::vector<Link> links_;
    TableLinks result_;
};

}  // namespace

TableLinks LinkTables(const std::vector<TableDef>& tables, const std::vector<Relation>& own) {
    Linker linker(tables);
    for (const Relation& relation : own) linker.TakeOwn(relation);
    linker.GuessReferences();
    linker.GuessSharedKeys();
    return linker.Result();
}

}  // namespace quillform
