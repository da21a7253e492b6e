#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "data/jet/Bytes.h"
#include "data/jet/FileAccess.h"
#include "data/jet/Header.h"
#include "data/jet/Layout.h"

namespace quillform::jet {

/// The bytes of one page, Layout::pageSize of them. They stay as they are while the reference is held: a change to the
/// page goes to a copy then.
using PageRef = std::shared_ptr<const std::uint8_t[]>;

/// The only class that reads and writes pages: decodes them, keeps those in use in memory, and brings the changes of a
/// transaction to the file as a whole or not at all.
class PageFile {
public:
    explicit PageFile(std::unique_ptr<FileAccess> file, std::string name);

    const Header& FileHeader() const { return header_; }
    const Layout& Form() const { return *layout_; }
    std::uint32_t PageCount() const { return static_cast<std::uint32_t>(pages_.size()); }
    bool IsReadOnly() const { return file_->IsReadOnly(); }
    void CheckThere() const { file_->CheckThere(); }
    void CheckWritable() const { file_->CheckWritable(); }

    /// Damaged if the file has no such page.
    PageRef Read(std::uint32_t page) const;

    // Changes. They need an open transaction.
    /// The page's bytes, to be changed until the next call of any function here.
    std::uint8_t* Modify(std::uint32_t page);
    /// A new page of zeros at the end of the file.
    std::uint32_t Append();

    bool InTransaction() const { return depth_ > 0; }
    int Depth() const { return depth_; }
    /// Locked, or what CheckWritable finds.
    void Begin();
    void Commit();
    /// Ends the innermost level and forgets the changes since its Begin.
    void Rollback();

private:
    using Buffer = std::shared_ptr<std::uint8_t[]>;

    /// What an inner level goes back to. Holding the buffers makes later changes go to copies.
    struct Level {
        std::vector<std::pair<std::uint32_t, Buffer>> dirty;
        std::size_t pageCount;
    };

    struct Slot {
        Buffer bytes{};
        bool isDirty = false;
        bool wasUsed = false;
    };

    void Load(std::uint32_t page) const;
    void Decode(std::uint32_t page, std::uint8_t* bytes) const;
    void EvictSome() const;
    void WriteChanges();
    void ForgetChanges(std::size_t pageCount);

    std::unique_ptr<FileAccess> file_;
    std::string name_;
    Header header_;
    const Layout* layout_;
    mutable std::vector<Slot> pages_;  // one per page of the file; filled as they are read
    mutable std::size_t loaded_ = 0;
    mutable std::size_t evictHand_ = 0;
    std::vector<std::uint32_t> dirty_;
    std::vector<Level> inner_{};
    std::uint32_t storedPages_ = 0;  // length of the file itself
    int depth_ = 0;
};

}  // namespace quillform::jet
