#include "data/jet/IndexCheck.h"

#include <algorithm>
#include <set>

#include "data/jet/Catalog.h"
#include "data/jet/IndexKeys.h"
#include "data/jet/IndexNode.h"
#include "data/jet/RowScan.h"
#include "data/jet/UsageMap.h"

namespace quillform::test {

namespace {

using namespace jet;

struct Walk {
    const PageFile& file;
    std::set<std::uint32_t> pages{};
    std::vector<std::string> entries{};
    std::vector<std::uint32_t> leaves{};
    std::size_t levels = 0;
    std::string fault{};

    void Fault(std::uint32_t page, const std::string& what) {
        if (fault.empty()) fault = "page " + std::to_string(page) + ": " + what;
    }

    /// Entries under the page must lie above `low` and, where there is one, not above `high`.
    void Visit(std::uint32_t page, const std::string& low, const std::string* high, std::size_t depth) {
        if (depth > 10 || !pages.insert(page).second) return Fault(page, "is reached twice or too deep");
        levels = std::max(levels, depth);
        const IndexNode node = ReadIndexNode(file, page);
        std::string before = low;
        for (const std::string& entry : node.entries) {
            const std::string leafPart(node.isLeaf ? std::string_view(entry) : LeafPartOf(entry));
            if (leafPart <= before && !before.empty()) Fault(page, "entries out of order");
            if (high && leafPart > *high) Fault(page, "entry above the key of the page");
            if (node.isLeaf)
                entries.push_back(entry);
            else
                Visit(ChildOf(entry), before, &leafPart, depth + 1);
            before = leafPart;
        }
        if (node.isLeaf)
            leaves.push_back(page);
        else if (node.tail == 0)
            Fault(page, "no last child");
        else
            Visit(node.tail, before, high, depth + 1);
    }

    void CheckChain() {
        for (std::size_t i = 0; i < leaves.size(); ++i) {
            const IndexNode node = ReadIndexNode(file, leaves[i]);
            if (node.previous != (i == 0 ? 0 : leaves[i - 1])) Fault(leaves[i], "wrong link back");
            if (node.next != (i + 1 == leaves.size() ? 0 : leaves[i + 1])) Fault(leaves[i], "wrong link on");
        }
    }
};

std::vector<std::string> EntriesOfRows(const PageFile& file, const TableDefinition& table, const Tree& tree,
                                       const KeyMaker& keys) {
    std::vector<std::string> entries;
    const RowForm form(table, file.Form(), file.FileHeader().codePage);
    std::string key;
    for (RowScan scan(file, table, form); scan.Next();) {
        const auto nulls = keys.Make(scan, key);
        if (tree.IgnoresNulls() && nulls == KeyMaker::Nulls::All) continue;
        AppendRowPointer(key, scan.Place());
        entries.push_back(key);
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

std::string Hex(std::string_view bytes) {
    std::string out;
    for (const char byte : bytes) {
        out.push_back("0123456789abcdef"[static_cast<unsigned char>(byte) >> 4]);
        out.push_back("0123456789abcdef"[byte & 15]);
    }
    return out;
}

void CheckTree(const PageFile& file, const TableDefinition& table, std::size_t number, IndexFindings& findings) {
    const Tree& tree = table.trees[number];
    Walk walk{file};
    walk.Visit(tree.root, {}, nullptr, 1);
    walk.CheckChain();
    const std::vector<std::uint32_t> owned = ReadUsageMap(file, tree.map);
    for (const std::uint32_t page : walk.pages)
        if (!std::binary_search(owned.begin(), owned.end(), page)) walk.Fault(page, "is not in the map of the index");
    findings.levels = std::max(findings.levels, walk.levels);
    const KeyMaker keys(table, tree, file.FileHeader());
    if (keys.IsOrderKnown() && walk.fault.empty()) {
        const std::vector<std::string> expected = EntriesOfRows(file, table, tree, keys);
        const auto [found, wanted] =
            std::mismatch(walk.entries.begin(), walk.entries.end(), expected.begin(), expected.end());
        if (found != walk.entries.end() || wanted != expected.end())
            walk.fault = std::to_string(walk.entries.size()) + " entries, " + std::to_string(expected.size()) +
                         " rows; " + (found == walk.entries.end() ? "nothing" : Hex(*found)) + " instead of " +
                         (wanted == expected.end() ? "nothing" : Hex(*wanted));
        for (std::size_t i = 1; tree.IsUnique() && i < walk.entries.size(); ++i) {
            const auto key = [&](std::size_t k) { return walk.entries[k].substr(0, walk.entries[k].size() - 4); };
            const bool isNull = key(i).find_first_not_of('\0') == std::string::npos;
            if (key(i) == key(i - 1) && !isNull) walk.Fault(tree.root, "a key is there twice");
        }
        ++findings.trees;
        findings.entries += walk.entries.size();
    } else if (!keys.IsOrderKnown()) {
        ++findings.unknownOrders;
    }
    if (!walk.fault.empty())
        findings.fault +=
            "definition " + std::to_string(table.page) + ", tree " + std::to_string(number) + ": " + walk.fault + "\n";
}

void Append(std::vector<std::uint32_t>& pages, const std::vector<std::uint32_t>& more) {
    pages.insert(pages.end(), more.begin(), more.end());
}

}  // namespace

void CheckIndexes(const PageFile& file, const TableDefinition& table, IndexFindings& findings) {
    for (std::size_t i = 0; i < table.trees.size(); ++i) CheckTree(file, table, i, findings);
}

IndexFindings CheckAllIndexes(const PageFile& file) {
    IndexFindings findings;
    for (const CatalogEntry& entry : ReadCatalog(file))
        if (entry.kind == CatalogEntry::LocalTable)
            CheckIndexes(file, ReadTableDefinition(file, static_cast<std::uint32_t>(entry.id)), findings);
    return findings;
}

std::vector<std::uint32_t> PagesOfTable(const PageFile& file, const TableDefinition& table) {
    std::vector<std::uint32_t> pages = DefinitionPages(file, table.page);
    Append(pages, ReadUsageMap(file, table.ownedMap));
    for (const Tree& tree : table.trees) Append(pages, ReadUsageMap(file, tree.map));
    for (const Column& column : table.columns) Append(pages, ReadUsageMap(file, column.ownedMap));
    return pages;
}

}  // namespace quillform::test
