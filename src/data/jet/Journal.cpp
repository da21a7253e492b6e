#include "data/jet/Journal.h"

#include <algorithm>
#include <bit>
#include <optional>
#include <string_view>
#include <vector>

namespace quillform::jet {

namespace {

constexpr std::string_view magic = "QFJRNL02";
constexpr std::size_t headBytes = 40, offsetBytes = 8, sumBytes = 4, checksumBytes = 8;
constexpr std::size_t sectorBytes = 512;  // what a disk writes as a whole
constexpr std::size_t largestPage = 0x10000;

std::uint64_t Checksum(Bytes bytes) {
    std::uint64_t sum = 0xCBF29CE484222325u;
    const auto mix = [&sum](std::uint64_t piece) { sum = (std::rotl(sum, 27) ^ piece) * 0x100000001B3u; };
    std::size_t at = 0;
    for (; at + 8 <= bytes.size(); at += 8) mix(GetU64(&bytes[at]));
    for (; at < bytes.size(); ++at) mix(bytes[at]);
    return sum ^ sum >> 32;
}

struct Head {
    std::uint64_t sizeBefore = 0;
    std::uint64_t sizeAfter = 0;
    std::size_t pageSize = 0;
    std::size_t pages = 0;

    std::size_t SumsBytes() const { return pageSize / sectorBytes * sumBytes; }
    std::size_t EntryBytes() const { return offsetBytes + SumsBytes() + pageSize + checksumBytes; }
    std::uint64_t EntryAt(std::size_t page) const { return headBytes + page * std::uint64_t{EntryBytes()}; }
    std::uint64_t JournalSize() const { return EntryAt(pages) + headBytes; }
};

std::vector<std::uint8_t> BytesOf(const Head& head) {
    std::vector<std::uint8_t> bytes(headBytes);
    std::memcpy(bytes.data(), magic.data(), magic.size());
    PutU64(&bytes[8], head.sizeBefore);
    PutU64(&bytes[16], head.sizeAfter);
    PutU32(&bytes[24], static_cast<std::uint32_t>(head.pageSize));
    PutU32(&bytes[28], static_cast<std::uint32_t>(head.pages));
    PutU64(&bytes[32], Checksum({bytes.data(), 32}));
    return bytes;
}

std::optional<Head> ReadHead(const FileHandle& journal, std::uint64_t at) {
    std::vector<std::uint8_t> bytes(headBytes);
    journal.ReadAt(at, bytes);
    const Head head{GetU64(&bytes[8]), GetU64(&bytes[16]), GetU32(&bytes[24]), GetU32(&bytes[28])};
    const bool isWhole = bytes == BytesOf(head) && head.pageSize <= largestPage && head.pageSize % sectorBytes == 0;
    return isWhole ? std::optional(head) : std::nullopt;
}

/// Either head will do: one of them may have been lost with the disk's own piece of it.
std::optional<Head> ReadHead(const FileHandle& journal) {
    const std::uint64_t size = journal.Size();
    if (size < headBytes) return std::nullopt;
    const std::optional<Head> head = ReadHead(journal, 0);
    return head ? head : ReadHead(journal, size - headBytes);
}

struct Entry {
    std::uint64_t offset;
    Bytes newSums;
    Bytes oldPage;
};

/// Calls `use` with each page that is as it was written; false if there is one that isn't.
template <typename Use>
bool ForEachEntry(const FileHandle& journal, const Head& head, Use use) {
    bool isWhole = journal.Size() == head.JournalSize();
    std::vector<std::uint8_t> bytes(head.EntryBytes());
    for (std::size_t i = 0; i < head.pages && head.EntryAt(i + 1) <= journal.Size(); ++i) {
        journal.ReadAt(head.EntryAt(i), bytes);
        const Bytes covered(bytes.data(), bytes.size() - checksumBytes);
        if (Checksum(covered) != GetU64(bytes.data() + covered.size()))
            isWhole = false;
        else
            use(Entry{GetU64(bytes.data()), covered.subspan(offsetBytes, head.SumsBytes()),
                      covered.subspan(offsetBytes + head.SumsBytes())});
    }
    return isWhole;
}

/// How a database stands to its journal.
struct Findings {
    bool isWhole = false;    ///< the journal can be played back
    bool isBegun = false;    ///< something of the new content is in the database
    bool isForeign = false;  ///< the database holds what is neither the old nor the new content
};

void CompareSectors(const Entry& entry, Bytes present, Findings& findings) {
    for (std::size_t at = 0; at < present.size(); at += sectorBytes) {
        const Bytes sector = present.subspan(at, sectorBytes);
        if (std::ranges::equal(sector, entry.oldPage.subspan(at, sectorBytes))) continue;
        const std::uint32_t newSum = GetU32(&entry.newSums[at / sectorBytes * sumBytes]);
        (static_cast<std::uint32_t>(Checksum(sector)) == newSum ? findings.isBegun : findings.isForeign) = true;
    }
}

Findings Examine(const FileHandle& journal, const Head& head, const FileHandle& file) {
    Findings findings;
    const std::uint64_t size = file.Size();
    findings.isBegun = size != head.sizeBefore;
    findings.isForeign = size < head.sizeBefore || size > head.sizeAfter;
    std::vector<std::uint8_t> present(head.pageSize);
    findings.isWhole = ForEachEntry(journal, head, [&](const Entry& entry) {
        if (entry.offset > size || size - entry.offset < head.pageSize) {
            findings.isForeign = true;
            return;
        }
        file.ReadAt(entry.offset, present);
        CompareSectors(entry, present, findings);
    });
    return findings;
}

[[noreturn]] void FailForeign(const std::filesystem::path& database) {
    throw RunTimeError(ErrorNumber::DiskError,
                       "\"" + JournalPath(database).string() + "\" would take back a change to another state of \"" +
                           database.filename().string() +
                           "\" than this one; remove it if the database was put there from elsewhere.");
}

[[noreturn]] void FailDamaged(const std::filesystem::path& database) {
    throw RunTimeError(ErrorNumber::DiskError,
                       "\"" + database.string() + "\" was left in the middle of a change, and \"" +
                           JournalPath(database).filename().string() +
                           "\", which could take it back, is damaged; a backup of the database is needed.");
}

void AppendEntry(std::vector<std::uint8_t>& batch, const FileHandle& file, const PageImage& image) {
    const std::size_t start = batch.size();
    const Head sizes{0, 0, image.bytes.size(), 0};
    batch.resize(start + sizes.EntryBytes());
    std::uint8_t* entry = &batch[start];
    PutU64(entry, image.offset);
    for (std::size_t at = 0; at < image.bytes.size(); at += sectorBytes)
        PutU32(entry + offsetBytes + at / sectorBytes * sumBytes,
               static_cast<std::uint32_t>(Checksum(image.bytes.subspan(at, sectorBytes))));
    file.ReadAt(image.offset, {entry + offsetBytes + sizes.SumsBytes(), image.bytes.size()});
    const Bytes covered(entry, sizes.EntryBytes() - checksumBytes);
    PutU64(entry + covered.size(), Checksum(covered));
}

void WriteAll(FileHandle& journal, const FileHandle& file, std::span<const PageImage> images, const Head& head) {
    constexpr std::size_t batchBytes = 1u << 20;
    std::vector<std::uint8_t> batch = BytesOf(head);
    std::uint64_t at = 0;
    const auto flush = [&] {
        journal.WriteAt(at, batch);
        at += batch.size();
        batch.clear();
    };
    for (const PageImage& image : images) {
        if (image.offset >= head.sizeBefore) continue;
        AppendEntry(batch, file, image);
        if (batch.size() >= batchBytes) flush();
    }
    const std::vector<std::uint8_t> end = BytesOf(head);
    batch.insert(batch.end(), end.begin(), end.end());
    flush();
}

}  // namespace

std::filesystem::path JournalPath(const std::filesystem::path& database) { return database.string() + "-journal"; }

void WriteJournal(const std::filesystem::path& database, const FileHandle& file, std::span<const PageImage> images,
                  std::uint64_t newSize) {
    const std::filesystem::path path = JournalPath(database);
    FileHandle journal(path, FileHandle::Mode::CreateNew);
    if (!journal.IsOpen())
        throw RunTimeError(ErrorNumber::ReadOnly, "\"" + database.string() +
                                                      "\" can't be changed: no file can be made in its folder (\"" +
                                                      path.filename().string() + "\").");
    try {
        Head head{file.Size(), newSize, images.front().bytes.size(), 0};
        head.pages = static_cast<std::size_t>(
            std::ranges::count_if(images, [&](const PageImage& image) { return image.offset < head.sizeBefore; }));
        WriteAll(journal, file, images, head);
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
        if (const std::optional<Head> head = ReadHead(journal)) {
            const Findings findings = Examine(journal, *head, file);
            if (findings.isForeign) FailForeign(database);
            if (!findings.isWhole && findings.isBegun) FailDamaged(database);
            if (findings.isWhole) {
                ForEachEntry(journal, *head, [&](const Entry& entry) { file.WriteAt(entry.offset, entry.oldPage); });
                file.Resize(head->sizeBefore);
                file.Sync();
            }
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
