#include "data/columns/SpillStore.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "platform/RunTimeError.h"

namespace quillform::data {
namespace {

constexpr std::size_t pageSize = 4096;

std::size_t WholePages(std::size_t size) { return (size + pageSize - 1) / pageSize * pageSize; }

[[noreturn]] void FailToSpill(int error) {
    const auto number = error == ENOSPC ? ErrorNumber::DiskFull : ErrorNumber::DeviceIo;
    throw RunTimeError(number, std::string("The rows of the query don't fit into memory, and they can't be kept in a "
                                           "temporary file: ") +
                                   std::strerror(error) + ".");
}

constexpr std::size_t arenaSize = std::size_t{8} << 20;
constexpr std::size_t arenaAlignment = std::size_t{2} << 20;
/// Up to here each chunk has memory of its own, so that a small database doesn't take an arena.
constexpr std::size_t beforeArenas = std::size_t{4} << 20;

}  // namespace

/// A large piece of memory for many chunks, in the system's large pages where it has them: rows read in an order other
/// than they lie in would otherwise cost a page look-up each. Lives as long as any of its chunks.
struct Arena {
    Arena() : memory(static_cast<std::byte*>(std::aligned_alloc(arenaAlignment, arenaSize))) {
        if (!memory) throw std::bad_alloc();
#ifdef MADV_HUGEPAGE
        (void)madvise(memory, arenaSize, MADV_HUGEPAGE);  // a wish: without it all works as well
#endif
    }
    ~Arena() { std::free(memory); }
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    std::byte* memory;
    std::size_t used = 0;
};

Chunk& Chunk::operator=(Chunk&& other) noexcept {
    if (this != &other) {
        Release();
        store_ = std::move(other.store_);
        arena_ = std::move(other.arena_);
        data_ = std::exchange(other.data_, nullptr);
        size_ = std::exchange(other.size_, 0);
        fileOffset_ = std::exchange(other.fileOffset_, -1);
    }
    return *this;
}

void Chunk::Release() noexcept {
    if (!data_) return;
    if (fileOffset_ < 0) {
        if (!arena_) std::free(data_);
        store_->heapBytes_ -= size_;
    } else {
        const std::size_t mapped = WholePages(size_);
        munmap(data_, mapped);
#ifdef FALLOC_FL_PUNCH_HOLE
        // Gives the disk its space back; where the file system can't, it comes back with the file.
        (void)fallocate(store_->descriptor_, FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, fileOffset_,
                        static_cast<off_t>(mapped));
#endif
        store_->fileBytes_ -= mapped;
    }
    data_ = nullptr;
    arena_.reset();
    store_.reset();
}

std::shared_ptr<SpillStore> SpillStore::Make(std::size_t budget) {
    return std::shared_ptr<SpillStore>(new SpillStore(budget));
}

SpillStore::~SpillStore() {
    if (descriptor_ >= 0) close(descriptor_);
}

Chunk SpillStore::Keep(std::span<const std::byte> bytes) {
    Chunk chunk;
    if (bytes.empty()) return chunk;
    if (heapBytes_ + bytes.size() <= budget_) {
        chunk.data_ = KeepOnHeap(bytes.size(), chunk.arena_);
        std::memcpy(chunk.data_, bytes.data(), bytes.size());
        heapBytes_ += bytes.size();
    } else {
        chunk.data_ = KeepInFile(bytes, chunk.fileOffset_);
    }
    chunk.size_ = bytes.size();
    chunk.store_ = shared_from_this();
    return chunk;
}

std::byte* SpillStore::KeepOnHeap(std::size_t size, std::shared_ptr<Arena>& arena) {
    constexpr std::size_t alignment = 16;
    const std::size_t taken = (size + alignment - 1) / alignment * alignment;
    if (heapBytes_ < beforeArenas || taken > arenaSize / 4) {
        auto* memory = static_cast<std::byte*>(std::malloc(size));
        if (!memory) throw std::bad_alloc();
        return memory;
    }
    if (!current_ || current_->used + taken > arenaSize) current_ = std::make_shared<Arena>();
    arena = current_;
    return arena->memory + std::exchange(current_->used, current_->used + taken);
}

std::byte* SpillStore::KeepInFile(std::span<const std::byte> bytes, std::int64_t& offset) {
    if (descriptor_ < 0) OpenFile();
    const std::size_t mapped = WholePages(bytes.size());
    // Space is taken before it is mapped: a full disk must be an error here, not a signal while writing the map.
    if (const int error = posix_fallocate(descriptor_, fileEnd_, static_cast<off_t>(mapped))) FailToSpill(error);
    void* map = mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor_, fileEnd_);
    if (map == MAP_FAILED) FailToSpill(errno);
    std::memcpy(map, bytes.data(), bytes.size());
    offset = fileEnd_;
    fileEnd_ += static_cast<std::int64_t>(mapped);
    fileBytes_ += mapped;
    return static_cast<std::byte*>(map);
}

void SpillStore::OpenFile() {
    std::error_code ignored;
    std::filesystem::path folder = std::filesystem::temp_directory_path(ignored);
    if (folder.empty()) folder = ".";
    std::string name = (folder / "quillform-XXXXXX").string();
    descriptor_ = mkostemp(name.data(), O_CLOEXEC);
    if (descriptor_ < 0) FailToSpill(errno);
    unlink(name.c_str());
}

}  // namespace quillform::data
