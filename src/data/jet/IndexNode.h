#pragma once

#include <string>
#include <vector>

#include "data/jet/PageFile.h"

namespace quillform::jet {

/// One page of a B-tree, its entries whole. docs/mdb-format.md, "Index pages".
///
/// An entry of a leaf is a key, then the row's page (3 bytes) and slot (1 byte); one of an inner page is the last entry
/// of the leaves under a child, then the child's page (4 bytes); all big-endian, so that entries sort as bytes.
struct IndexNode {
    bool isLeaf = true;
    std::uint32_t table = 0;
    std::uint32_t previous = 0;
    std::uint32_t next = 0;
    std::uint32_t tail = 0;  ///< inner: the last child, which has no entry
    std::uint8_t level = 0;
    std::vector<std::string> entries{};
};

inline constexpr std::size_t rowPointerBytes = 4, childBytes = 4;

IndexNode ReadIndexNode(const PageFile& file, std::uint32_t page);
/// Whether the entries fit on one page.
bool FitsOnPage(const IndexNode& node, const Layout& form);
void WriteIndexNode(PageFile& file, std::uint32_t page, const IndexNode& node);

/// Child of an entry of an inner page.
std::uint32_t ChildOf(const std::string& entry);
/// The entry without its child.
std::string_view LeafPartOf(const std::string& entry);
void AppendRowPointer(std::string& key, RowPointer row);
RowPointer RowPointerOf(std::string_view leafEntry);
std::string InnerEntry(std::string_view leafEntry, std::uint32_t child);

}  // namespace quillform::jet
