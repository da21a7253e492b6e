#include "data/jet/PageFile.h"

#include <algorithm>
#include <cstring>

#include "data/jet/Rc4.h"

namespace quillform::jet {

namespace {

constexpr std::uint32_t readAhead = 16;             // pages per read: 32 or 64 KiB
constexpr std::size_t cacheBytes = 64u << 20;       // clean pages kept
constexpr std::size_t oldVersionProbe = 0x40B + 1;  // what the header check of old formats looks at

Header HeaderOf(const FileAccess& file, const std::string& name) {
    std::vector<std::uint8_t> start(static_cast<std::size_t>(std::min<std::uint64_t>(file.Size(), oldVersionProbe)));
    file.ReadAt(0, start);
    return ReadHeader(start, name);
}

}  // namespace

PageFile::PageFile(std::unique_ptr<FileAccess> file, std::string name)
    : file_(std::move(file)),
      name_(std::move(name)),
      header_(HeaderOf(*file_, name_)),
      layout_(&LayoutOf(header_.format)) {
    const std::uint64_t count = file_->Size() / layout_->pageSize;
    constexpr std::uint64_t systemPages = relationsTable + 1;
    if (count < systemPages)
        throw RunTimeError(ErrorNumber::UnrecognizedFormat,
                           "\"" + name_ + "\" is an Access database that was cut off: its system tables are missing.");
    storedPages_ = static_cast<std::uint32_t>(std::min<std::uint64_t>(count, layout_->maxPages));
    pages_.resize(storedPages_);
}

PageRef PageFile::Read(std::uint32_t page) const {
    if (page >= pages_.size())
        Damaged("page " + std::to_string(page) + " is needed, but the file has only " + std::to_string(pages_.size()) +
                " pages");
    if (!pages_[page].bytes) Load(page);
    pages_[page].wasUsed = true;
    return pages_[page].bytes;
}

void PageFile::Decode(std::uint32_t page, std::uint8_t* bytes) const {
    if (header_.pageKey != 0 && page != 0) ApplyRc4(header_.pageKey ^ page, {bytes, layout_->pageSize});
}

/// Reads the block of pages around the wanted one, since the pages of a table lie together.
void PageFile::Load(std::uint32_t page) const {
    if (loaded_ * layout_->pageSize > cacheBytes) EvictSome();
    const std::size_t size = layout_->pageSize;
    const std::uint32_t first = page / readAhead * readAhead;
    const std::uint32_t last = std::min(first + readAhead, storedPages_);
    std::vector<std::uint8_t> block((last - first) * size);
    file_->ReadAt(static_cast<std::uint64_t>(first) * size, block);
    for (std::uint32_t i = first; i < last; ++i) {
        if (pages_[i].bytes) continue;
        Buffer bytes = std::make_shared_for_overwrite<std::uint8_t[]>(size);
        std::memcpy(bytes.get(), block.data() + (i - first) * size, size);
        Decode(i, bytes.get());
        pages_[i].bytes = std::move(bytes);
        ++loaded_;
    }
}

/// Gives back clean pages that nobody asked for since the hand last came by, a quarter of the cache at a time.
void PageFile::EvictSome() const {
    const std::size_t target = cacheBytes / layout_->pageSize * 3 / 4;
    for (std::size_t step = 0; step < 2 * pages_.size() && loaded_ > target; ++step) {
        evictHand_ = (evictHand_ + 1) % pages_.size();
        Slot& slot = pages_[evictHand_];
        if (!slot.bytes || slot.isDirty) continue;
        if (std::exchange(slot.wasUsed, false)) continue;
        slot.bytes.reset();
        --loaded_;
    }
}

std::uint8_t* PageFile::Modify(std::uint32_t page) {
    Read(page);
    Slot& slot = pages_[page];
    if (slot.bytes.use_count() > 1) {
        Buffer copy = std::make_shared_for_overwrite<std::uint8_t[]>(layout_->pageSize);
        std::memcpy(copy.get(), slot.bytes.get(), layout_->pageSize);
        slot.bytes = std::move(copy);
    }
    if (!slot.isDirty) {
        slot.isDirty = true;
        dirty_.push_back(page);
    }
    return slot.bytes.get();
}

std::uint32_t PageFile::Append() {
    if (pages_.size() >= layout_->maxPages)
        throw RunTimeError(ErrorNumber::DiskFull,
                           "The database \"" + name_ + "\" has reached the largest size of its format.");
    const auto page = static_cast<std::uint32_t>(pages_.size());
    pages_.push_back({std::make_shared<std::uint8_t[]>(layout_->pageSize), true, true});
    ++loaded_;
    dirty_.push_back(page);
    return page;
}

void PageFile::Begin() {
    if (depth_ == 0) {
        file_->StartWriting();
    } else {
        Level level{{}, pages_.size()};
        for (const std::uint32_t page : dirty_) level.dirty.emplace_back(page, pages_[page].bytes);
        inner_.push_back(std::move(level));
    }
    ++depth_;
}

void PageFile::Commit() {
    if (depth_ > 1) {
        --depth_;
        inner_.pop_back();
        return;
    }
    WriteChanges();
    for (const std::uint32_t page : dirty_) pages_[page].isDirty = false;
    dirty_.clear();
    storedPages_ = PageCount();
    // Whoever only adds never reads, and would keep every page that was written.
    if (loaded_ * layout_->pageSize > cacheBytes) EvictSome();
    depth_ = 0;
    file_->StopWriting();
}

void PageFile::WriteChanges() {
    std::sort(dirty_.begin(), dirty_.end());
    std::vector<PageImage> images;
    images.reserve(dirty_.size());
    const std::size_t size = layout_->pageSize;
    std::vector<std::uint8_t> encoded(header_.pageKey != 0 ? dirty_.size() * size : 0);
    for (std::size_t i = 0; i < dirty_.size(); ++i) {
        const std::uint8_t* bytes = pages_[dirty_[i]].bytes.get();
        if (!encoded.empty()) {
            std::memcpy(encoded.data() + i * size, bytes, size);
            bytes = encoded.data() + i * size;
            Decode(dirty_[i], encoded.data() + i * size);
        }
        images.push_back({static_cast<std::uint64_t>(dirty_[i]) * size, {bytes, size}});
    }
    if (!images.empty()) file_->Replace(images, static_cast<std::uint64_t>(PageCount()) * size);
}

void PageFile::ForgetChanges(std::size_t pageCount) {
    for (const std::uint32_t page : dirty_) {
        pages_[page] = {};
        --loaded_;
    }
    dirty_.clear();
    pages_.resize(pageCount);
    evictHand_ = 0;
}

void PageFile::Rollback() {
    if (depth_ > 1) {
        const Level level = std::move(inner_.back());
        inner_.pop_back();
        ForgetChanges(level.pageCount);
        for (const auto& [page, bytes] : level.dirty) {
            if (!pages_[page].bytes) ++loaded_;
            pages_[page] = {bytes, true, true};
            dirty_.push_back(page);
        }
        --depth_;
        return;
    }
    ForgetChanges(storedPages_);
    if (depth_ > 0) file_->StopWriting();
    depth_ = 0;
}

}  // namespace quillform::jet
