#include "data/jet/IndexNode.h"

#include <algorithm>

namespace quillform::jet {

namespace {

std::uint32_t BigEndian(std::string_view bytes) {
    std::uint32_t value = 0;
    for (const char byte : bytes) value = value << 8 | static_cast<unsigned char>(byte);
    return value;
}

void AppendBigEndian(std::string& out, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<char>(value >> shift));
}

/// Bytes that all entries have in common, at most the key of the first.
std::size_t CommonPrefix(const IndexNode& node) {
    if (node.entries.size() < 2) return 0;
    const std::string& first = node.entries.front();
    const std::size_t behindKey = rowPointerBytes + (node.isLeaf ? 0 : childBytes);
    // The entries are in order: what first and last share, all share.
    const std::string& last = node.entries.back();
    std::size_t common = 0;
    const std::size_t longest = std::min(first.size(), last.size()) - behindKey;
    while (common < longest && first[common] == last[common]) ++common;
    for (const std::string& entry : node.entries) common = std::min(common, entry.size() - behindKey);
    return std::min<std::size_t>(common, 255);
}

std::size_t StoredBytes(const IndexNode& node, std::size_t prefix) {
    std::size_t bytes = 0;
    for (const std::string& entry : node.entries) bytes += entry.size() - prefix;
    return node.entries.empty() ? 0 : bytes + prefix;
}

std::size_t Capacity(const Layout& form) { return form.pageSize - form.nodeEntries; }

}  // namespace

std::uint32_t ChildOf(const std::string& entry) {
    return BigEndian(std::string_view(entry).substr(entry.size() - childBytes));
}

std::string_view LeafPartOf(const std::string& entry) {
    return std::string_view(entry).substr(0, entry.size() - childBytes);
}

void AppendRowPointer(std::string& key, RowPointer row) { AppendBigEndian(key, row.value); }

RowPointer RowPointerOf(std::string_view leafEntry) {
    return {BigEndian(leafEntry.substr(leafEntry.size() - rowPointerBytes))};
}

std::string InnerEntry(std::string_view leafEntry, std::uint32_t child) {
    std::string entry(leafEntry);
    AppendBigEndian(entry, child);
    return entry;
}

IndexNode ReadIndexNode(const PageFile& file, std::uint32_t page) {
    const Layout& form = file.Form();
    const PageRef pin = file.Read(page);
    const std::uint8_t* bytes = pin.get();
    if (bytes[0] != leafNode && bytes[0] != innerNode)
        Damaged("page " + std::to_string(page) + " should be part of an index and isn't");
    IndexNode node;
    node.isLeaf = bytes[0] == leafNode;
    node.table = GetU32(bytes + 4);
    node.previous = GetU32(bytes + form.nodePrevious);
    node.next = GetU32(bytes + form.nodeNext);
    node.tail = GetU32(bytes + form.nodeTail);
    node.level = bytes[form.nodeLevel];
    ForEachEntry(pin, page, form, [&node](std::string_view shared, std::string_view own) {
        node.entries.emplace_back(shared).append(own);
        return true;
    });
    return node;
}

bool FitsOnPage(const IndexNode& node, const Layout& form) {
    return StoredBytes(node, CommonPrefix(node)) <= Capacity(form);
}

void WriteIndexNode(PageFile& file, std::uint32_t page, const IndexNode& node) {
    const Layout& form = file.Form();
    if (!FitsOnPage(node, form)) Damaged("the index page " + std::to_string(page) + " holds more than it can");
    std::uint8_t* bytes = file.Modify(page);
    std::memset(bytes, 0, form.pageSize);
    const std::size_t prefix = CommonPrefix(node);
    bytes[0] = node.isLeaf ? leafNode : innerNode;
    bytes[1] = 1;
    PutU16(bytes + 2, Capacity(form) - StoredBytes(node, prefix));
    PutU32(bytes + 4, node.table);
    PutU32(bytes + form.nodePrevious, node.previous);
    PutU32(bytes + form.nodeNext, node.next);
    PutU32(bytes + form.nodeTail, node.tail);
    bytes[form.nodePrefix] = static_cast<std::uint8_t>(prefix);
    bytes[form.nodeLevel] = node.level;
    std::size_t at = 0;
    for (const std::string& entry : node.entries) {
        const std::size_t skipped = at == 0 ? 0 : prefix;
        std::memcpy(bytes + form.nodeEntries + at, entry.data() + skipped, entry.size() - skipped);
        at += entry.size() - skipped;
        bytes[form.nodeBitmap + at / 8] = static_cast<std::uint8_t>(bytes[form.nodeBitmap + at / 8] | 1u << at % 8);
    }
}

}  // namespace quillform::jet
