#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>

namespace quillform::data {

class SpillStore;
struct Arena;

/// A piece of memory that doesn't change once it is filled. Owned; given back when destroyed. Moves, doesn't copy.
class Chunk {
public:
    Chunk() = default;
    Chunk(Chunk&& other) noexcept { *this = std::move(other); }
    Chunk& operator=(Chunk&& other) noexcept;
    ~Chunk() { Release(); }

    const std::byte* Data() const { return data_; }
    std::size_t Size() const { return size_; }

private:
    friend class SpillStore;
    void Release() noexcept;

    std::shared_ptr<SpillStore> store_;
    std::shared_ptr<Arena> arena_;  // null: memory of its own, or of the file
    std::byte* data_ = nullptr;
    std::size_t size_ = 0;
    std::int64_t fileOffset_ = -1;  // -1: on the heap
};

/// Where decoded rows live: on the heap up to a budget, beyond it in a private temporary file that has no name any more
/// and is mapped into memory, so that the system can move its pages out. Results larger than the memory stay readable.
/// Not to be shared between threads.
class SpillStore : public std::enable_shared_from_this<SpillStore> {
public:
    static constexpr std::size_t defaultBudget = std::size_t{256} << 20;

    static std::shared_ptr<SpillStore> Make(std::size_t budget = defaultBudget);
    ~SpillStore();
    SpillStore(const SpillStore&) = delete;
    SpillStore& operator=(const SpillStore&) = delete;

    /// Keeps a copy of `bytes`, aligned for any number. RunTimeError DiskFull, DeviceIo.
    Chunk Keep(std::span<const std::byte> bytes);

    std::size_t HeapBytes() const { return heapBytes_; }
    std::size_t FileBytes() const { return fileBytes_; }

private:
    explicit SpillStore(std::size_t budget) : budget_(budget) {}
    friend class Chunk;
    std::byte* KeepOnHeap(std::size_t size, std::shared_ptr<Arena>& arena);
    std::byte* KeepInFile(std::span<const std::byte> bytes, std::int64_t& offset);
    void OpenFile();

    std::size_t budget_;
    std::size_t heapBytes_ = 0;
    std::size_t fileBytes_ = 0;
    std::int64_t fileEnd_ = 0;
    int descriptor_ = -1;
    std::shared_ptr<Arena> current_;
};

}  // namespace quillform::data
