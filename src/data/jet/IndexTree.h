#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "data/jet/IndexNode.h"
#include "data/jet/PageAllocator.h"
#include "data/jet/TableDefinition.h"

namespace quillform::jet {

/// Entries that a transaction takes from and adds to a tree, in order; each a key and a row pointer.
struct TreeChanges {
    std::set<std::string> added{};
    std::set<std::string> removed{};

    bool IsEmpty() const { return added.empty() && removed.empty(); }
    std::size_t Count() const { return added.size() + removed.size(); }
    void Add(std::string entry);
    void Remove(std::string entry);
};

/// Whether an entry is one of this key.
inline bool HasKey(std::string_view entry, std::string_view key) {
    return entry.size() == key.size() + rowPointerBytes && entry.starts_with(key);
}

/// Entries with exactly this key, as the tree in the file has them. Damaged if the tree isn't one.
std::vector<std::string> FindKey(const PageFile& file, std::uint32_t root, std::string_view key);

/// All entries of a tree in order.
std::vector<std::string> ReadAllEntries(const PageFile& file, std::uint32_t root);

/// Longest entry that every page can split around.
std::size_t LongestEntry(const Layout& form);

/// Changes to the B-tree of one index.
class IndexTree {
public:
    IndexTree(PageFile& file, PageAllocator& allocator, std::uint32_t table, Tree& tree)
        : file_(file), allocator_(allocator), table_(table), tree_(tree) {}

    /// Brings the changes into the tree: one by one where they are few, else by building it anew. Counts the entries.
    void Apply(const TreeChanges& changes);

private:
    struct Step {
        std::uint32_t page;
        IndexNode node;
        std::size_t child;  ///< entry that was followed; the number of entries for the tail
    };
    using Path = std::vector<Step>;

    Path Descend(std::string_view entry) const;
    bool ApplySingly(const TreeChanges& changes);
    bool Insert(const std::string& entry);
    bool Remove(const std::string& entry);
    bool RemoveLeaf(Path path);
    void LowerKeyAbove(Path path, std::string_view last);
    void LinkLeaves(std::uint32_t left, std::uint32_t right);
    bool Split(Path path);
    void SplitRoot(IndexNode left, IndexNode right, std::string_view separator);
    bool AddToParent(Path path, std::string_view separator, std::uint32_t left, std::uint32_t right);
    std::uint32_t NewPage();

    PageFile& file_;
    PageAllocator& allocator_;
    std::uint32_t table_;
    Tree& tree_;
};

/// Builds the tree anew with these entries, which are in order. The root keeps its page.
void RebuildTree(PageFile& file, PageAllocator& allocator, std::uint32_t table, Tree& tree,
                 const std::vector<std::string>& entries);

}  // namespace quillform::jet
