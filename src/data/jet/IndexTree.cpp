#include "data/jet/IndexTree.h"

#include <algorithm>
#include <optional>

#include "data/jet/UsageMap.h"

namespace quillform::jet {

namespace {

constexpr std::size_t mostLevels = 16;

[[noreturn]] void FailDeep(std::uint32_t root) {
    Damaged("the index at page " + std::to_string(root) + " has too many levels");
}

/// Compares an entry, given in its two parts, with bytes that begin it or not.
int CompareParts(std::string_view shared, std::string_view own, std::string_view target) {
    const int first = shared.compare(target.substr(0, shared.size()));
    if (first != 0 || target.size() < shared.size()) return first;
    return own.compare(target.substr(shared.size()));
}

/// The child of an inner page to follow for bytes that are to be found.
std::uint32_t ChildFor(const PageFile& file, const PageRef& page, std::uint32_t number, std::string_view target) {
    std::uint32_t child = GetU32(page.get() + file.Form().nodeTail);
    ForEachEntry(page, number, file.Form(), [&](std::string_view shared, std::string_view own) {
        if (CompareParts(shared, own.substr(0, own.size() - std::min(own.size(), childBytes)), target) < 0) return true;
        std::string entry(shared);
        child = ChildOf(entry.append(own));
        return false;
    });
    return child;
}

std::uint32_t LeafFor(const PageFile& file, std::uint32_t root, std::string_view target) {
    std::uint32_t number = root;
    for (std::size_t level = 0; level < mostLevels; ++level) {
        const PageRef page = file.Read(number);
        if (page[0] == leafNode) return number;
        if (page[0] != innerNode) Damaged("page " + std::to_string(number) + " should be part of an index and isn't");
        number = ChildFor(file, page, number, target);
    }
    FailDeep(root);
}

/// The two pages that a page which is too full is cut into, and the last entry of the leaves under the first of them.
struct Halves {
    IndexNode left, right;
    std::string separator;
};

Halves CutAt(const IndexNode& node, std::size_t cut) {
    Halves halves{node, node, {}};
    const auto middle = static_cast<std::ptrdiff_t>(cut);
    const auto rightStart = node.entries.begin() + middle + (node.isLeaf ? 0 : 1);
    halves.left.entries.assign(node.entries.begin(), node.entries.begin() + middle);
    halves.right.entries.assign(rightStart, node.entries.end());
    halves.separator = node.isLeaf ? halves.left.entries.back() : std::string(LeafPartOf(node.entries[cut]));
    if (!node.isLeaf) halves.left.tail = ChildOf(node.entries[cut]);
    return halves;
}

std::size_t Middle(const IndexNode& node) {
    std::size_t total = 0, left = 0, count = 0;
    for (const std::string& entry : node.entries) total += entry.size();
    while (left < total / 2) left += node.entries[count++].size();
    return count;
}

/// Finds a cut where both pages fit. The middle doesn't always do: one entry at either end may have cost all others the
/// prefix that they shared, and is then cut off alone.
std::optional<Halves> Cut(const IndexNode& node, bool appended, const Layout& form) {
    const std::size_t keep = node.isLeaf ? 1 : 2;
    if (node.entries.size() <= keep) return std::nullopt;
    const std::size_t last = node.entries.size() - keep;
    for (const std::size_t wanted : {appended ? last : Middle(node), std::size_t{1}, last}) {
        Halves halves = CutAt(node, std::clamp<std::size_t>(wanted, 1, last));
        if (FitsOnPage(halves.left, form) && FitsOnPage(halves.right, form)) return halves;
    }
    return std::nullopt;
}

}  // namespace

void TreeChanges::Add(std::string entry) {
    if (removed.erase(entry) > 0) return;
    added.insert(added.end(), std::move(entry));
}

void TreeChanges::Remove(std::string entry) {
    if (added.erase(entry) > 0) return;
    removed.insert(std::move(entry));
}

std::size_t LongestEntry(const Layout& form) { return (form.pageSize - form.nodeEntries) / 2 - childBytes; }

std::vector<std::string> FindKey(const PageFile& file, std::uint32_t root, std::string_view key) {
    std::vector<std::string> found;
    std::uint32_t number = LeafFor(file, root, key);
    bool goesOn = true;
    for (std::uint32_t seen = 0; goesOn && number != 0; ++seen) {
        const PageRef page = file.Read(number);
        if (page[0] != leafNode || seen > file.PageCount()) Damaged("the leaves of an index don't end");
        ForEachEntry(page, number, file.Form(), [&](std::string_view shared, std::string_view own) {
            const int order = CompareParts(shared, own, key);
            if (order < 0) return true;
            std::string entry(shared);
            entry.append(own);
            goesOn = entry.starts_with(key);
            if (HasKey(entry, key)) found.push_back(std::move(entry));
            return goesOn;
        });
        number = GetU32(page.get() + file.Form().nodeNext);
    }
    return found;
}

std::vector<std::string> ReadAllEntries(const PageFile& file, std::uint32_t root) {
    std::vector<std::string> entries;
    std::uint32_t number = LeafFor(file, root, {});
    for (std::uint32_t seen = 0; number != 0; ++seen) {
        if (seen > file.PageCount()) Damaged("the leaves of an index don't end");
        IndexNode node = ReadIndexNode(file, number);
        if (!node.isLeaf) Damaged("page " + std::to_string(number) + " should be a leaf of an index and isn't");
        // Leaves that lead in a circle would give their entries again and again.
        if (!entries.empty() && !node.entries.empty() && node.entries.front() <= entries.back())
            Damaged("the leaves of an index aren't in order");
        std::move(node.entries.begin(), node.entries.end(), std::back_inserter(entries));
        number = node.next;
    }
    return entries;
}

IndexTree::Path IndexTree::Descend(std::string_view entry) const {
    Path path;
    std::uint32_t page = tree_.root;
    while (page != 0 && path.size() < mostLevels) {
        path.push_back({page, ReadIndexNode(file_, page), 0});
        const IndexNode& node = path.back().node;
        const auto below = [&node](const std::string& candidate, std::string_view target) {
            return (node.isLeaf ? std::string_view(candidate) : LeafPartOf(candidate)) < target;
        };
        const auto found = std::lower_bound(node.entries.begin(), node.entries.end(), entry, below);
        path.back().child = static_cast<std::size_t>(found - node.entries.begin());
        if (node.isLeaf) return path;
        page = found == node.entries.end() ? node.tail : ChildOf(*found);
    }
    FailDeep(tree_.root);
}

void IndexTree::Apply(const TreeChanges& changes) {
    if (changes.IsEmpty()) return;
    // Building anew writes every page of the tree; a single change reads and writes one per level.
    const std::size_t pages = ReadUsageMap(file_, tree_.map).size();
    if (changes.Count() <= 32 + 6 * pages && pages > 1 && ApplySingly(changes)) return;
    std::vector<std::string> merged;
    std::set<std::uint32_t> gone;  // rows whose entries aren't what their values say
    const std::vector<std::string> old = ReadAllEntries(file_, tree_.root);
    std::vector<std::string> kept;
    std::set_difference(old.begin(), old.end(), changes.removed.begin(), changes.removed.end(),
                        std::back_inserter(kept));
    if (old.size() - kept.size() < changes.removed.size()) {
        for (const std::string& entry : changes.removed) gone.insert(RowPointerOf(entry).value);
        std::erase_if(kept, [&gone](const std::string& entry) { return gone.count(RowPointerOf(entry).value) > 0; });
    }
    std::set_union(kept.begin(), kept.end(), changes.added.begin(), changes.added.end(), std::back_inserter(merged));
    RebuildTree(file_, allocator_, table_, tree_, merged);
}

bool IndexTree::ApplySingly(const TreeChanges& changes) {
    for (const std::string& entry : changes.removed)
        if (!Remove(entry)) return false;
    for (const std::string& entry : changes.added)
        if (!Insert(entry)) return false;
    // What the file has counted may be wrong; the sum must not become nonsense for that.
    const auto added = static_cast<std::int64_t>(changes.added.size());
    const auto removed = static_cast<std::int64_t>(changes.removed.size());
    tree_.entries = static_cast<std::uint32_t>(std::max<std::int64_t>(tree_.entries + added - removed, 0));
    tree_.distinctKeys = static_cast<std::uint32_t>(std::min<std::int64_t>(tree_.distinctKeys + added, tree_.entries));
    return true;
}

/// False if the tree can only be built anew; all entries so far can still be read from it then.
bool IndexTree::Insert(const std::string& entry) {
    Path path = Descend(entry);
    Step& leaf = path.back();
    if (leaf.child < leaf.node.entries.size() && leaf.node.entries[leaf.child] == entry) return true;
    leaf.node.entries.insert(leaf.node.entries.begin() + static_cast<std::ptrdiff_t>(leaf.child), entry);
    if (!FitsOnPage(leaf.node, file_.Form())) return Split(std::move(path));
    WriteIndexNode(file_, leaf.page, leaf.node);
    return true;
}

/// False, and nothing changed, if the entry isn't there or the tree would get a shape that this doesn't handle.
bool IndexTree::Remove(const std::string& entry) {
    Path path = Descend(entry);
    Step& leaf = path.back();
    std::vector<std::string>& entries = leaf.node.entries;
    if (leaf.child >= entries.size() || entries[leaf.child] != entry) return false;
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(leaf.child));
    if (entries.empty() && path.size() > 1) return RemoveLeaf(std::move(path));
    WriteIndexNode(file_, leaf.page, leaf.node);
    if (path.size() > 1 && leaf.child == entries.size()) {
        const std::string last = entries.back();
        path.pop_back();
        LowerKeyAbove(std::move(path), last);
    }
    return true;
}

/// The last entry under the end of the path is a lower one now: the key that stands for it, on whatever level, follows.
void IndexTree::LowerKeyAbove(Path path, std::string_view last) {
    while (!path.empty() && path.back().child == path.back().node.entries.size()) path.pop_back();
    if (path.empty()) return;
    Step& step = path.back();
    std::string& above = step.node.entries[step.child];
    above = InnerEntry(last, ChildOf(above));
    // A key that is too high still leads to the right page, so it may stay where the lower one finds no room.
    if (FitsOnPage(step.node, file_.Form())) WriteIndexNode(file_, step.page, step.node);
}

/// Takes a leaf whose last entry goes out of the tree. False, and nothing changed, if its parent would have a single
/// child then, a shape that the engine was never seen to make.
bool IndexTree::RemoveLeaf(Path path) {
    const Step leaf = std::move(path.back());
    path.pop_back();
    IndexNode& parent = path.back().node;
    if (parent.entries.size() < 2) return false;
    const bool isTail = path.back().child == parent.entries.size();
    const std::string last(LeafPartOf(parent.entries.back()));
    if (isTail) parent.tail = ChildOf(parent.entries.back());
    parent.entries.erase(parent.entries.begin() + static_cast<std::ptrdiff_t>(path.back().child) - (isTail ? 1 : 0));
    LinkLeaves(leaf.node.previous, leaf.node.next);
    WriteIndexNode(file_, path.back().page, parent);
    RemoveFromMap(file_, tree_.map, leaf.page);
    allocator_.Free(leaf.page);
    path.pop_back();
    if (isTail) LowerKeyAbove(std::move(path), last);
    return true;
}

/// Makes two leaves neighbours; 0 is the end of the chain.
void IndexTree::LinkLeaves(std::uint32_t left, std::uint32_t right) {
    for (const std::uint32_t page : {left, right})
        if (page != 0 && file_.Read(page)[0] != leafNode) Damaged("the leaves of an index don't end");
    if (left != 0) PutU32(file_.Modify(left) + file_.Form().nodeNext, right);
    if (right != 0) PutU32(file_.Modify(right) + file_.Form().nodePrevious, left);
}

std::uint32_t IndexTree::NewPage() {
    const std::uint32_t page = allocator_.Allocate();
    AddToMap(file_, allocator_, tree_.map, page);
    return page;
}

bool IndexTree::Split(Path path) {
    Step& step = path.back();
    const bool appended = step.node.isLeaf && step.node.next == 0 && step.child + 1 == step.node.entries.size();
    std::optional<Halves> halves = Cut(step.node, appended, file_.Form());
    if (!halves) return false;
    if (path.size() == 1) {
        SplitRoot(std::move(halves->left), std::move(halves->right), halves->separator);
        return true;
    }
    const std::uint32_t leftPage = step.page, rightPage = NewPage();
    halves->right.previous = leftPage;
    halves->left.next = rightPage;
    if (halves->right.next != 0) PutU32(file_.Modify(halves->right.next) + file_.Form().nodePrevious, rightPage);
    WriteIndexNode(file_, leftPage, halves->left);
    WriteIndexNode(file_, rightPage, halves->right);
    path.pop_back();
    return AddToParent(std::move(path), halves->separator, leftPage, rightPage);
}

/// The root keeps its page number: its halves move to new pages.
void IndexTree::SplitRoot(IndexNode left, IndexNode right, std::string_view separator) {
    const std::uint32_t leftPage = NewPage(), rightPage = NewPage();
    left.previous = right.next = 0;
    left.next = rightPage;
    right.previous = leftPage;
    WriteIndexNode(file_, leftPage, left);
    WriteIndexNode(file_, rightPage, right);
    IndexNode top;
    top.isLeaf = false;
    top.table = table_;
    top.level = static_cast<std::uint8_t>(left.level + 1);
    top.entries.push_back(InnerEntry(separator, leftPage));
    top.tail = rightPage;
    WriteIndexNode(file_, tree_.root, top);
}

bool IndexTree::AddToParent(Path path, std::string_view separator, std::uint32_t left, std::uint32_t right) {
    Step& parent = path.back();
    std::vector<std::string>& entries = parent.node.entries;
    if (parent.child < entries.size())
        entries[parent.child] = InnerEntry(LeafPartOf(entries[parent.child]), right);
    else
        parent.node.tail = right;
    entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(parent.child), InnerEntry(separator, left));
    if (!FitsOnPage(parent.node, file_.Form())) return Split(std::move(path));
    WriteIndexNode(file_, parent.page, parent.node);
    return true;
}

}  // namespace quillform::jet
