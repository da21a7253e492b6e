#pragma once

#include <bit>
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

/// Calls `use(shared, own)` with both parts of each entry of a page, in order, until it gives false. Damaged if an
/// entry isn't inside the page.
template <typename Use>
void ForEachEntry(const PageRef& page, std::uint32_t number, const Layout& form, Use use);

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

template <typename Use>
void ForEachEntry(const PageRef& page, std::uint32_t number, const Layout& form, Use use) {
    const std::uint8_t* bytes = page.get();
    const std::size_t prefix = form.nodePrefixWidth == 1 ? bytes[form.nodePrefix] : GetU16(bytes + form.nodePrefix);
    const std::size_t shortest = rowPointerBytes + (bytes[0] == leafNode ? 0 : childBytes);
    const char* area = reinterpret_cast<const char*>(bytes + form.nodeEntries);
    std::string_view shared{};
    std::size_t start = 0;
    for (std::size_t i = 0; i < form.nodeEntries - form.nodeBitmap; ++i) {
        for (unsigned bits = bytes[form.nodeBitmap + i]; bits != 0; bits &= bits - 1) {
            const std::size_t end = 8 * i + static_cast<std::size_t>(std::countr_zero(bits));
            if (end == 0) continue;  // marks no end
            if (end > form.pageSize - form.nodeEntries || shared.size() + end - start < shortest ||
                (start == 0 && end < prefix))
                Damaged("an entry of the index page " + std::to_string(number) + " isn't inside the page");
            if (!use(shared, std::string_view(area + start, end - start))) return;
            if (start == 0) shared = std::string_view(area, prefix);
            start = end;
        }
    }
}

}  // namespace quillform::jet
