#include "data/jet/Journal.h"

#include <optional>
#include <string_view>
#include <vector>

namespace quillform::jet {

namespace {

constexpr std::string_view magic = "QFJRNL01";
constexpr std::size_t headBytes = 32, offsetBytes = 8, checksumBytes = 8;

std::uint64_t Checksum(Bytes bytes) {
    std::uint64_t sum = 0xCBF29CE484222325u;
    for (const std::uint8_t byte : bytes) sum = (sum ^ byte) * 0x100000001B3u;
    return sum;
}

struct Head {
    std::uint64_t databaseSize = 0;
    std::size_t pageSize = 0;
    std::size_t pages = 0;
    std::size_t EntryBytes() const { return offsetBytes + pageSize + checksumBytes; }
};

std::vector<std::uint8_t> HeadBytes(const Head& head) {
    std::vector<std::uint8_t> bytes(headBytes);
    std::memcpy(bytes.data(), magic.data(), magic.size());
    PutU64(&bytes[8], head.databaseSize);
    PutU32(&bytes[16], static_cast<std::uint32_t>(head.pageSize));
    PutU32(&bytes[20], static_cast<std::uint32_t>(head.pages));
    PutU64(&bytes[24], Checksum({bytes.data(), 24}));
    return bytes;
}

std::optional<Head> ReadHead(const FileHandle& journal) {
    if (journal.Size() < headBytes) return std::nullopt;
    std::vector<std::uint8_t> bytes(headBytes);
    journal.ReadAt(0, bytes);
    Head head{GetU64(&bytes[8]), GetU32(&bytes[16]), GetU32(&bytes[20])};
    if (bytes != HeadBytes(head) || head.pageSize > 0x10000) return std::nullopt;
    if (journal.Size() < headBytes + head.pages * static_cast<std::uint64_t>(head.EntryBytes())) return std::nullopt;
    return head;
}

/// Calls `use` with the offset and bytes of each page; false at the first one that isn't as it was written.
template <typename Use>
bool ForEachPage(const FileHandle& journal, const Head& head, Use use) {
    std::vector<std::uint8_t> entry(head.EntryBytes());
    for (std::size_t i = 0; i < head.pages; ++i) {
        journal.ReadAt(headBytes + i * static_cast<std::uint64_t>(entry.size()), entry);
        const Bytes covered(entry.data(), entry.size() - checksumBytes);
        if (Checksum(covered) != GetU64(entry.data() + covered.size())) return false;
        use(GetU64(entry.data()), covered.subspan(offsetBytes));
    }
    return true;
}

void WriteEntries(FileHandle& journal, const FileHandle& file, std::span<const std::uint64_t> pages, const Head& head) {
    constexpr std::size_t batchBytes = 1u << 20;
    std::vector<std::uint8_t> batch;
    std::uint64_t at = headBytes;
    const auto flush = [&] {
        journal.WriteAt(at, batch);
        at += batch.size();
        batch.clear();
    };
    for (const std::uint64_t offset : pages) {
        const std::size_t start = batch.size();
        batch.resize(start + head.EntryBytes());
        PutU64(&batch[start], offset);
        file.ReadAt(offset, {&batch[start + offsetBytes], head.pageSize});
        const Bytes covered(&batch[start], offsetBytes + head.pageSize);
        PutU64(&batch[start + covered.size()], Checksum(covered));
        if (batch.size() >= batchBytes) flush();
    }
    flush();
}

}  // namespace

std::filesystem::path JournalPath(const std::filesystem::path& database) { return database.string() + "-journal"; }

void WriteJournal(const std::filesystem::path& database, const FileHandle& file, std::span<const std::uint64_t> pages,
                  std::size_t pageSize) {
    const std::filesystem::path path = JournalPath(database);
    FileHandle journal(path, FileHandle::Mode::CreateNew);
    if (!journal.IsOpen())
        throw RunTimeError(ErrorNumber::ReadOnly, "\"" + database.string() +
                                                      "\" can't be changed: no file can be made in its folder (\"" +
                                                      path.filename().string() + "\").");
    try {
        const Head head{file.Size(), pageSize, pages.size()};
        journal.WriteAt(0, HeadBytes(head));
        WriteEntries(journal, file, pages, head);
        journal.Sync();
        SyncFolder(path.parent_path());
    } catch (...) {
        std::error_code ignored;  // an incomplete journal does no harm
        std::filesystem::remove(path, ignored);
        throw;
    }
}

void PlayBack(const std::filesystem::path& database, FileHandle& file) {
    {
        const FileHandle journal(JournalPath(database), FileHandle::Mode::Read);
        if (!journal.IsOpen()) return;
        const std::optional<Head> head = ReadHead(journal);
        // First look whether the whole journal is sound, then act on it.
        if (head && ForEachPage(journal, *head, [](std::uint64_t, Bytes) {})) {
            ForEachPage(journal, *head, [&file](std::uint64_t offset, Bytes page) { file.WriteAt(offset, page); });
            file.Resize(head->databaseSize);
            file.Sync();
        }
    }
    RemoveJournal(database);
}

void RemoveJournal(const std::filesystem::path& database) {
    std::error_code error;
    std::filesystem::remove(JournalPath(database), error);
    if (error)
        throw RunTimeError(ErrorNumber::DiskError,
                           "\"" + JournalPath(database).string() + "\" can't be removed: " + error.message() + ".");
    SyncFolder(database.parent_path());
}

}  // namespace quillform::jet
