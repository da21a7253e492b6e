#include "data/direct/DirectSelect.h"

#include <algorithm>
#include <map>
#include <numeric>

#include "data/direct/Relation.h"

namespace quillform::data {
namespace {

using namespace direct;

std::uint64_t Bit(int source) { return std::uint64_t{1} << source; }

/// Runs one plan.
class Run {
public:
    Run(const Plan& plan, TableCache& cache)
        : plan_(plan), tables_(plan, cache), used_(plan.conditions.size(), false) {}

    Relation Rows() {
        Relation rows = Evaluate(plan_.from, false);
        rows.Keep(UnusedFilters(~std::uint64_t{0}));
        Group(rows);
        Sort(rows);
        return rows;
    }
    const Tables& TheTables() const { return tables_; }

private:
    struct Leaf {
        int source = 0;
        std::size_t rows = 0;                // of the table
        std::optional<std::size_t> lookup;   // the condition that an index answers
        std::span<const RowPosition> found;  // its rows
    };

    Relation Evaluate(const JoinNode& node, bool mayBeMissing);
    Relation EvaluateInner(const JoinNode& node, bool mayBeMissing);
    Relation LeafRows(const Leaf& leaf, bool mayBeMissing);
    Leaf LookAt(int source, bool mayBeMissing);
    std::optional<std::span<const RowPosition>> Lookup(const Condition& condition);
    std::vector<RowFilter> UnusedFilters(std::uint64_t sources);
    Ranks RanksFor(const Operand& operand, const Relation& rows);
    void Group(Relation& rows);
    void Sort(Relation& rows);

    const Plan& plan_;
    Tables tables_;
    std::vector<bool> used_;  // per condition: met by all rows of the relation in hand
};

/// Conditions on these sources alone that haven't been applied yet; they count as applied from here on.
std::vector<RowFilter> Run::UnusedFilters(std::uint64_t sources) {
    std::vector<RowFilter> filters;
    for (std::size_t i = 0; i < used_.size(); ++i) {
        if (used_[i] || (plan_.conditions[i].Sources() & ~sources) != 0) continue;
        used_[i] = true;
        filters.emplace_back(plan_.conditions[i], tables_);
    }
    return filters;
}

/// The rows that a condition "column = constant" leaves, by an index. Only a column that is asked again and again gets
/// one: for a single question looking at each row is cheaper.
std::optional<std::span<const RowPosition>> Run::Lookup(const Condition& condition) {
    if (condition.kind != Condition::Kind::WithConstant || condition.op != sql::Operator::Equal || condition.isNull)
        return std::nullopt;
    const ColumnIndex* index = tables_.At(condition.left.source).IndexForLookup(condition.left.view);
    if (!index) return std::nullopt;
    return condition.left.compareClass == CompareClass::Text ? index->FindText(condition.text)
                                                             : index->FindKey(EqualityKey(condition.number));
}

Run::Leaf Run::LookAt(int source, bool mayBeMissing) {
    Leaf leaf{source, tables_.At(source).RowCount(), {}, {}};
    for (std::size_t i = 0; i < used_.size() && !mayBeMissing; ++i) {
        if (used_[i] || plan_.conditions[i].Sources() != Bit(source)) continue;
        const auto found = Lookup(plan_.conditions[i]);
        if (!found || (leaf.lookup && leaf.found.size() <= found->size())) continue;
        leaf.lookup = i;
        leaf.found = *found;
    }
    return leaf;
}

Relation Run::LeafRows(const Leaf& leaf, bool mayBeMissing) {
    std::vector<RowPosition> rows;
    if (leaf.lookup) {
        rows.assign(leaf.found.begin(), leaf.found.end());
        used_[*leaf.lookup] = true;
    } else {
        rows.resize(leaf.rows);
        std::iota(rows.begin(), rows.end(), 0U);
    }
    Relation relation(plan_.tables.size());
    relation.Set(leaf.source, std::move(rows));
    if (!mayBeMissing) relation.Keep(UnusedFilters(Bit(leaf.source)));
    return relation;
}

Relation Run::Evaluate(const JoinNode& node, bool mayBeMissing) {
    if (node.source >= 0) return LeafRows(LookAt(node.source, mayBeMissing), mayBeMissing);
    if (node.IsInner()) return EvaluateInner(node, mayBeMissing);
    const Relation left = Evaluate(*node.left, mayBeMissing);
    const bool rightMayBeMissing = mayBeMissing || node.isOuter;
    const int leaf = node.right->source;
    const Relation right = leaf >= 0 && rightMayBeMissing
                               ? Relation::WholeTable(plan_.tables.size(), leaf, tables_.At(leaf).RowCount())
                               : Evaluate(*node.right, rightMayBeMissing);
    return Join(left, right, node.equalities, node.isOuter, tables_);
}

void AddLeaves(const JoinNode& node, std::vector<int>& sources, std::vector<Equality>& equalities) {
    if (node.source >= 0) return sources.push_back(node.source);
    AddLeaves(*node.left, sources, equalities);
    AddLeaves(*node.right, sources, equalities);
    equalities.insert(equalities.end(), node.equalities.begin(), node.equalities.end());
}

/// Equalities between the joined sources and one more, that one on the right.
std::vector<Equality> Connecting(const std::vector<Equality>& equalities, std::uint64_t joined, int source) {
    std::vector<Equality> connecting;
    for (const Equality& equality : equalities) {
        if ((Bit(equality.left.source) & joined) && equality.right.source == source)
            connecting.push_back(equality);
        else if ((Bit(equality.right.source) & joined) && equality.left.source == source)
            connecting.push_back({equality.right, equality.left});
    }
    return connecting;
}

/// Inner joins in whatever order is cheapest: from the few rows that a lookup leaves, else from the largest table, so
/// that the small ones are indexed. Afterwards the rows are put in the order of the tables as written.
Relation Run::EvaluateInner(const JoinNode& node, bool mayBeMissing) {
    std::vector<int> sources;
    std::vector<Equality> equalities;
    AddLeaves(node, sources, equalities);
    std::vector<Leaf> leaves;
    for (const int source : sources) leaves.push_back(LookAt(source, mayBeMissing));
    const auto isBetterStart = [](const Leaf& one, const Leaf& other) {
        if (one.lookup.has_value() != other.lookup.has_value()) return one.lookup.has_value();
        return one.lookup ? one.found.size() < other.found.size() : one.rows > other.rows;
    };
    const Leaf& start = *std::ranges::min_element(leaves, isBetterStart);
    Relation joined = LeafRows(start, mayBeMissing);
    std::uint64_t done = Bit(start.source);
    bool inOrder = true;
    int last = start.source;
    for (std::size_t step = 1; step < leaves.size(); ++step) {
        for (const Leaf& leaf : leaves) {
            if (done & Bit(leaf.source)) continue;
            const std::vector<Equality> connecting = Connecting(equalities, done, leaf.source);
            if (connecting.empty()) continue;
            const Relation all = Relation::WholeTable(plan_.tables.size(), leaf.source, leaf.rows);
            joined = Join(joined, all, connecting, false, tables_);
            done |= Bit(leaf.source);
            if (!mayBeMissing) joined.Keep(UnusedFilters(done));
            inOrder = inOrder && last < leaf.source;
            last = leaf.source;
            break;
        }
    }
    if (inOrder) return joined;
    std::ranges::sort(sources);
    std::vector<SortKey> keys;
    for (const int source : sources)
        keys.push_back({{joined.Of(source), static_cast<std::uint32_t>(tables_.At(source).RowCount())}, false});
    joined.Choose(SortedOrder(keys, joined.Count()));
    return joined;
}

/// Ranks of a column in the rows in hand: from the ranks of the whole table where those are there or where most of the
/// table is looked at, else among these rows.
Ranks Run::RanksFor(const Operand& operand, const Relation& rows) {
    CachedTable& table = tables_.At(operand.source);
    const std::vector<RowPosition>& positions = rows.Of(operand.source);
    const bool wholePays = positions.size() * 4 >= table.RowCount();
    const Ranks* all = wholePays ? &table.RanksOf(operand.view) : table.ExistingRanks(operand.view);
    if (!all) return RankRows(*tables_.Get(operand), positions);
    Ranks ranks;
    ranks.most = all->most;
    ranks.of.resize(positions.size());
    for (std::size_t i = 0; i < positions.size(); ++i) ranks.of[i] = positions[i] == noRow ? 0 : all->of[positions[i]];
    return ranks;
}

void Run::Group(Relation& rows) {
    if (plan_.groupBy.empty()) return;
    std::vector<SortKey> keys;
    for (const Operand& operand : plan_.groupBy) keys.push_back({RanksFor(operand, rows), false});
    const std::vector<RowPosition> order = SortedOrder(keys, rows.Count());
    std::vector<RowPosition> firsts;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const bool isNew = i == 0 || std::ranges::any_of(keys, [&](const SortKey& key) {
                               return key.ranks.of[order[i]] != key.ranks.of[order[i - 1]];
                           });
        if (isNew) firsts.push_back(order[i]);
    }
    rows.Choose(firsts);
}

void Run::Sort(Relation& rows) {
    if (plan_.orderBy.empty() || rows.Count() < 2) return;
    std::vector<SortKey> keys;
    for (const SortTerm& term : plan_.orderBy) keys.push_back({RanksFor(term.operand, rows), term.descending});
    rows.Choose(SortedOrder(keys, rows.Count()));
}

bool IsWholeTable(const std::vector<RowPosition>& rows, std::size_t tableRows) {
    if (rows.size() != tableRows) return false;
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (rows[i] != i) return false;
    return true;
}

}  // namespace

std::optional<Result> DirectSelect(const sql::CheckedSelect& select, TableCache& cache) {
    const std::optional<Plan> plan = MakePlan(select);
    if (!plan) return std::nullopt;
    Run run(*plan, cache);
    Relation rows = run.Rows();
    Result result;
    result.count = rows.Count();
    std::map<int, int> lists;  // by source
    for (const Operand& operand : plan->columns) {
        if (!lists.contains(operand.source)) {
            const bool isWhole = IsWholeTable(rows.Of(operand.source), run.TheTables().At(operand.source).RowCount());
            lists[operand.source] = isWhole ? -1 : static_cast<int>(result.rows.size());
            if (!isWhole) result.rows.push_back(rows.Take(operand.source));
        }
        result.columns.push_back({run.TheTables().Get(operand), lists[operand.source]});
    }
    return result;
}

std::optional<std::vector<RowId>> DirectRows(const sql::CheckedSelect& select, TableCache& cache) {
    const std::optional<Plan> plan = MakePlan(select);
    if (!plan || plan->tables.size() != 1 || !plan->groupBy.empty()) return std::nullopt;
    Run run(*plan, cache);
    const Relation rows = run.Rows();
    std::vector<RowId> ids;
    ids.reserve(rows.Count());
    for (const RowPosition row : rows.Of(0)) ids.push_back(run.TheTables().At(0).IdAt(row));
    return ids;
}

}  // namespace quillform::data
