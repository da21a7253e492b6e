#include <algorithm>

#include "data/jet/IndexTree.h"
#include "data/jet/UsageMap.h"

namespace quillform::jet {

namespace {

/// Decides how many entries go on one page, the shared prefix counted once.
class PagePacker {
public:
    PagePacker(const Layout& form, std::size_t behindKey) : capacity_(form.nodeFill), behindKey_(behindKey) {}

    /// Whether the entry still fits; if so it is on the page. Entries come in order.
    bool Take(std::string_view entry) {
        const std::size_t shared = count_ == 0 ? entry.size() - behindKey_ : SharedWith(entry);
        const std::size_t bytes = sum_ + entry.size() - shared * count_;
        if (count_ > 0 && bytes > capacity_) return false;
        if (count_ == 0) first_ = entry;
        shared_ = shared;
        sum_ += entry.size();
        ++count_;
        return true;
    }
    void Clear() { count_ = sum_ = 0; }

private:
    std::size_t SharedWith(std::string_view entry) const {
        const std::size_t longest = std::min<std::size_t>({shared_, entry.size() - behindKey_, 255});
        std::size_t shared = 0;
        while (shared < longest && first_[shared] == entry[shared]) ++shared;
        return shared;
    }

    std::size_t capacity_;
    std::size_t behindKey_;
    std::string_view first_{};
    std::size_t shared_ = 0;
    std::size_t sum_ = 0;
    std::size_t count_ = 0;
};

/// Ends of the groups of entries that share a page.
std::vector<std::size_t> Groups(const std::vector<std::string>& entries, const Layout& form, std::size_t behindKey) {
    PagePacker packer(form, behindKey);
    std::vector<std::size_t> ends;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (packer.Take(entries[i])) continue;
        ends.push_back(i);
        packer.Clear();
        packer.Take(entries[i]);
    }
    ends.push_back(entries.size());
    return ends;
}

class TreeBuilder {
public:
    TreeBuilder(PageFile& file, PageAllocator& allocator, std::uint32_t table, const Tree& tree)
        : file_(file), allocator_(allocator), table_(table), tree_(tree) {}

    void FreeOldPages() {
        for (const std::uint32_t page : ReadUsageMap(file_, tree_.map)) {
            if (page == tree_.root) continue;
            // A map that names pages of others must not make us wipe them.
            const PageRef bytes = file_.Read(page);
            const bool isOurs = (bytes[0] == leafNode || bytes[0] == innerNode) && GetU32(bytes.get() + 4) == table_;
            RemoveFromMap(file_, tree_.map, page);
            if (isOurs) allocator_.Free(page);
        }
    }

    void Build(const std::vector<std::string>& leafEntries) {
        std::vector<std::size_t> ends = Groups(leafEntries, file_.Form(), rowPointerBytes);
        std::vector<std::string> children = WriteLevel(leafEntries, ends, 0);
        for (std::uint8_t level = 1; !children.empty(); ++level) {
            ends = Groups(children, file_.Form(), rowPointerBytes + childBytes);
            // A page with only a tail has no key to be told by: its neighbour gives it one.
            if (ends.size() > 1 && ends.back() - ends[ends.size() - 2] == 1) --ends[ends.size() - 2];
            children = WriteLevel(children, ends, level);
        }
    }

private:
    /// Writes the pages of one level; gives the entries for the level above, none when this was the root.
    std::vector<std::string> WriteLevel(const std::vector<std::string>& entries, const std::vector<std::size_t>& ends,
                                        std::uint8_t level) {
        std::vector<std::uint32_t> pages;
        for (std::size_t i = 0; i < ends.size(); ++i) pages.push_back(ends.size() == 1 ? tree_.root : NewPage());
        std::vector<std::string> above;
        std::size_t begin = 0;
        for (std::size_t i = 0; i < ends.size(); ++i) {
            IndexNode node;
            node.isLeaf = level == 0;
            node.level = level;
            node.table = table_;
            node.previous = i == 0 ? 0 : pages[i - 1];
            node.next = i + 1 == pages.size() ? 0 : pages[i + 1];
            node.entries.assign(entries.begin() + static_cast<std::ptrdiff_t>(begin),
                                entries.begin() + static_cast<std::ptrdiff_t>(ends[i]));
            if (ends.size() > 1) above.push_back(AboveEntry(node, pages[i]));
            if (!node.isLeaf) {
                node.tail = ChildOf(node.entries.back());
                node.entries.pop_back();
            }
            WriteIndexNode(file_, pages[i], node);
            begin = ends[i];
        }
        return above;
    }

    static std::string AboveEntry(const IndexNode& node, std::uint32_t page) {
        const std::string& last = node.entries.back();
        return InnerEntry(node.isLeaf ? std::string_view(last) : LeafPartOf(last), page);
    }

    std::uint32_t NewPage() {
        const std::uint32_t page = allocator_.Allocate();
        AddToMap(file_, allocator_, tree_.map, page);
        return page;
    }

    PageFile& file_;
    PageAllocator& allocator_;
    std::uint32_t table_;
    const Tree& tree_;
};

std::uint32_t CountDistinct(const std::vector<std::string>& entries) {
    std::uint32_t count = 0;
    std::string_view before;
    for (const std::string& entry : entries) {
        const std::string_view key = std::string_view(entry).substr(0, entry.size() - rowPointerBytes);
        if (count == 0 || key != before) ++count;
        before = key;
    }
    return count;
}

}  // namespace

void RebuildTree(PageFile& file, PageAllocator& allocator, std::uint32_t table, Tree& tree,
                 const std::vector<std::string>& entries) {
    TreeBuilder builder(file, allocator, table, tree);
    builder.FreeOldPages();
    builder.Build(entries);
    tree.entries = static_cast<std::uint32_t>(entries.size());
    tree.distinctKeys = CountDistinct(entries);
}

}  // namespace quillform::jet
