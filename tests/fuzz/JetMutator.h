#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace quillform::fuzz {

/// Changes a Jet database where it matters: most bytes of one are texts and free room, and a flip there says nothing.
/// Takes heads and slot lists of pages, and puts numbers there that mean something: pages, offsets, row pointers.
class JetMutator {
public:
    JetMutator(std::uint8_t* data, std::size_t size, unsigned seed)
        : data_(data), size_(size), pageSize_(size > 0x14 && data[0x14] == 0 ? 2048 : 4096), random_(seed) {}

    void Mutate() {
        for (auto changes = 1 + Any(4); changes > 0; --changes) {
            if (Any(8) == 0)
                CopyPage();
            else
                PutNumber();
        }
    }

private:
    /// From 0 up to, and without, `end`.
    std::uint32_t Any(std::uint32_t end) { return static_cast<std::uint32_t>(random_() % end); }
    std::size_t AnyPage() { return Any(static_cast<std::uint32_t>(size_ / pageSize_)); }

    void CopyPage() {
        const std::size_t from = AnyPage(), to = AnyPage();
        std::memmove(data_ + to * pageSize_, data_ + from * pageSize_, Any(2) ? pageSize_ : 64);
    }

    std::uint32_t Number() {
        const auto page = static_cast<std::uint32_t>(AnyPage());
        const std::uint32_t choices[] = {0,    1,         0xFF,   0xFFFF, 0xFFFFFFFF, page,   page << 8 | Any(4),
                                         0x7F, pageSize_, 0x4000, 0x8000, 0xC000,     0x8001, Any(pageSize_)};
        return choices[Any(std::size(choices))];
    }

    /// Page heads and definitions lie in front, rows and null masks at the end.
    std::size_t AnyPlace() {
        switch (Any(4)) {
            case 0:
                return Any(32);
            case 1:
                return Any(512);
            case 2:
                return pageSize_ - 1 - Any(256);
            default:
                return Any(pageSize_);
        }
    }

    void PutNumber() {
        const std::size_t place = AnyPage() * pageSize_ + AnyPlace();
        const std::size_t width = std::size_t{1} << Any(3);
        if (place + width > size_) return;
        const std::uint32_t number = Any(3) == 0 ? data_[place] ^ 1u << Any(8) : Number();
        for (std::size_t i = 0; i < width; ++i) data_[place + i] = static_cast<std::uint8_t>(number >> 8 * i);
    }

    std::uint8_t* data_;
    std::size_t size_;
    std::uint32_t pageSize_;
    std::minstd_rand random_;
};

}  // namespace quillform::fuzz

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    if (size < 4096 || seed % 8 == 0) return LLVMFuzzerMutate(data, size, maxSize);
    quillform::fuzz::JetMutator(data, size, seed).Mutate();
    return size;
}
