#include "data/columns/Sorting.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <numeric>
#include <string>
#include <string_view>

#include "data/collation/TextOrder.h"

namespace quillform::data {
namespace {

struct Keyed {
    std::uint64_t key;
    std::uint32_t item;
};

constexpr unsigned digitBits = 11;
constexpr std::size_t digits = std::size_t{1} << digitBits;
constexpr std::size_t radixPays = 512;

void RadixPass(std::vector<Keyed>& from, std::vector<Keyed>& to, unsigned shift) {
    std::array<std::uint32_t, digits> next{};
    for (const Keyed& keyed : from) ++next[keyed.key >> shift & (digits - 1)];
    if (std::ranges::find(next, from.size()) != next.end()) return;  // one digit for all: nothing to move
    std::uint32_t start = 0;
    for (std::uint32_t& slot : next) start += std::exchange(slot, start);
    for (const Keyed& keyed : from) to[next[keyed.key >> shift & (digits - 1)]++] = keyed;
    from.swap(to);
}

/// Sorts by the key, stable.
void SortByKey(std::vector<Keyed>& items) {
    if (items.size() < radixPays) {
        std::ranges::stable_sort(items, {}, &Keyed::key);
        return;
    }
    std::uint64_t differing = 0;
    for (const Keyed& keyed : items) differing |= keyed.key ^ items.front().key;
    std::vector<Keyed> other(items.size());
    for (unsigned shift = 0; shift < 64; shift += digitBits)
        if (differing >> shift & (digits - 1)) RadixPass(items, other, shift);
}

std::uint64_t OrderedBits(double number) {
    if (number == 0) number = 0;  // -0 is 0
    const auto bits = std::bit_cast<std::uint64_t>(number);
    return bits >> 63 ? ~bits : bits | 0x8000000000000000ULL;
}

std::uint64_t OrderedBits(std::int64_t number) { return static_cast<std::uint64_t>(number) ^ 0x8000000000000000ULL; }

bool KeepsWholeNumbers(ValueKind kind) { return kind == ValueKind::Integer || kind == ValueKind::Currency; }

/// Numbers: whole numbers of a narrow range are their own ranks, all others are sorted and counted.
Ranks RankNumbers(const Column& column, std::span<const RowPosition> rows) {
    Ranks ranks;
    ranks.of.assign(rows.size(), 0);
    std::vector<Keyed> items;
    items.reserve(rows.size());
    std::uint64_t least = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t most = 0;
    for (std::uint32_t i = 0; i < rows.size(); ++i) {
        if (column.IsNull(rows[i])) continue;
        const std::uint64_t key =
            KeepsWholeNumbers(column.Kind()) ? OrderedBits(column.Whole(rows[i])) : OrderedBits(column.Number(rows[i]));
        least = std::min(least, key);
        most = std::max(most, key);
        items.push_back({key, i});
    }
    if (items.empty()) return ranks;
    if (most - least < std::numeric_limits<std::uint32_t>::max() - 1) {
        for (const Keyed& keyed : items) ranks.of[keyed.item] = static_cast<std::uint32_t>(keyed.key - least) + 1;
        ranks.most = static_cast<std::uint32_t>(most - least) + 1;
        return ranks;
    }
    SortByKey(items);
    std::uint64_t previous = ~items.front().key;
    for (const Keyed& keyed : items) {
        if (keyed.key != previous) ++ranks.most;
        previous = keyed.key;
        ranks.of[keyed.item] = ranks.most;
    }
    return ranks;
}

/// The keys of many texts, in one piece of memory.
struct TextKeys {
    std::string bytes;
    std::vector<std::size_t> ends;

    std::string_view operator[](std::size_t i) const {
        const std::size_t begin = i == 0 ? 0 : ends[i - 1];
        return std::string_view(bytes).substr(begin, ends[i] - begin);
    }
};

/// The first eight bytes as a number that orders as they do.
std::uint64_t Prefix(std::string_view key, std::size_t from) {
    std::array<unsigned char, 8> head{};
    if (key.size() > from) std::memcpy(head.data(), key.data() + from, std::min<std::size_t>(8, key.size() - from));
    std::uint64_t number = 0;
    for (const unsigned char byte : head) number = number << 8 | byte;
    return number;
}

std::size_t CommonPrefix(const TextKeys& keys) {
    std::size_t common = keys.ends.empty() ? 0 : keys[0].size();
    for (std::size_t i = 1; i < keys.ends.size() && common > 0; ++i) {
        const std::string_view first = keys[0];
        const std::string_view key = keys[i];
        common = std::min(common, key.size());
        while (common > 0 && std::memcmp(first.data(), key.data(), common) != 0) --common;
    }
    return common;
}

/// Sorts items whose eight first bytes are sorted already: runs of equal ones by the rest.
void SortRuns(std::vector<Keyed>& items, const TextKeys& keys, std::size_t from) {
    for (std::size_t begin = 0; begin < items.size();) {
        std::size_t end = begin + 1;
        while (end < items.size() && items[end].key == items[begin].key) ++end;
        if (end - begin > 1) {
            std::stable_sort(items.begin() + static_cast<std::ptrdiff_t>(begin),
                             items.begin() + static_cast<std::ptrdiff_t>(end), [&](const Keyed& a, const Keyed& b) {
                                 const std::string_view left = keys[a.item];
                                 const std::string_view right = keys[b.item];
                                 return left.substr(std::min(from, left.size())) <
                                        right.substr(std::min(from, right.size()));
                             });
        }
        begin = end;
    }
}

Ranks RankBytes(const Column& column, std::span<const RowPosition> rows) {
    const bool isText = ClassOf(column.Kind()) == CompareClass::Text;
    Ranks ranks;
    ranks.of.assign(rows.size(), 0);
    TextKeys keys;
    std::vector<std::uint32_t> places;  // where in `rows` the n-th key stands
    keys.ends.reserve(rows.size());
    places.reserve(rows.size());
    for (std::uint32_t i = 0; i < rows.size(); ++i) {
        if (column.IsNull(rows[i])) continue;
        if (isText)
            collation::AppendKey(column.Text(rows[i]), keys.bytes);
        else
            keys.bytes.append(column.Text(rows[i]));
        keys.ends.push_back(keys.bytes.size());
        places.push_back(i);
    }
    if (places.empty()) return ranks;
    const std::size_t from = CommonPrefix(keys);
    std::vector<Keyed> items(places.size());
    for (std::uint32_t n = 0; n < items.size(); ++n) items[n] = {Prefix(keys[n], from), n};
    SortByKey(items);
    SortRuns(items, keys, from);
    for (std::size_t n = 0; n < items.size(); ++n) {
        if (n == 0 || items[n].key != items[n - 1].key || keys[items[n].item] != keys[items[n - 1].item]) ++ranks.most;
        ranks.of[places[items[n].item]] = ranks.most;
    }
    return ranks;
}

unsigned BitsOf(const SortKey& key) { return static_cast<unsigned>(std::bit_width(key.ranks.most)); }

}  // namespace

Ranks RankRows(const Column& column, std::span<const RowPosition> rows) {
    return ClassOf(column.Kind()) == CompareClass::Number ? RankNumbers(column, rows) : RankBytes(column, rows);
}

Ranks RankAll(const Column& column) {
    std::vector<RowPosition> rows(column.Size());
    std::iota(rows.begin(), rows.end(), 0U);
    return RankRows(column, rows);
}

std::vector<RowPosition> SortedOrder(std::span<const SortKey> keys, std::size_t count) {
    std::vector<Keyed> items(count);
    for (std::uint32_t i = 0; i < count; ++i) items[i] = {0, i};
    // As many trailing columns as fit into 64 bits are sorted at once, then the columns before them; each sort is
    // stable, so the first column decides in the end.
    for (std::size_t end = keys.size(); end > 0;) {
        std::size_t begin = end;
        unsigned bits = 0;
        while (begin > 0 && bits + BitsOf(keys[begin - 1]) <= 64) bits += BitsOf(keys[--begin]);
        for (Keyed& item : items) {
            item.key = 0;
            for (std::size_t k = begin; k < end; ++k) {
                const std::uint32_t rank = keys[k].ranks.of[item.item];
                item.key = item.key << BitsOf(keys[k]) | (keys[k].descending ? keys[k].ranks.most - rank : rank);
            }
        }
        SortByKey(items);
        end = begin;
    }
    std::vector<RowPosition> order(count);
    for (std::size_t i = 0; i < count; ++i) order[i] = items[i].item;
    return order;
}

}  // namespace quillform::data
