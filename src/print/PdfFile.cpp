#include "print/PdfFile.h"

#include <libdeflate.h>

#include <algorithm>
#include <new>

#include "print/PdfSyntax.h"

namespace quillform::print {

namespace {

// Of 12. Level 3 took a third more time for a file 7 % smaller, level 6 twice the time for 20 %.
constexpr int kLevel = 1;
constexpr std::size_t kObjectStreamBytes = 64 * 1024;
constexpr std::size_t kObjectStreamObjects = 2000;
constexpr std::size_t kSectionEntries = 32 * 1024;
// Type, offset or object stream, index: five bytes for the offset let a file grow beyond 4 GiB.
constexpr int kEntryBytes = 1 + 5 + 2;

void AppendBigEndian(std::uint64_t value, int bytes, std::string& out) {
    for (int shift = (bytes - 1) * 8; shift >= 0; shift -= 8) out += static_cast<char>((value >> shift) & 0xFFU);
}

// Each byte less the one above it, so that rows that count up become rows of zeros and ones.
std::string PredictedUp(std::string_view rows, std::size_t rowBytes) {
    std::string result;
    result.reserve(rows.size() + rows.size() / rowBytes);
    for (std::size_t at = 0; at < rows.size(); ++at) {
        if (at % rowBytes == 0) result += '\2';
        const char above = at < rowBytes ? '\0' : rows[at - rowBytes];
        result += static_cast<char>(rows[at] - above);
    }
    return result;
}

}  // namespace

void Deflater::Free::operator()(libdeflate_compressor* compressor) const noexcept {
    libdeflate_free_compressor(compressor);
}

Deflater::Deflater(int level) : compressor_(libdeflate_alloc_compressor(level)) {
    if (!compressor_) throw std::bad_alloc();
}

std::string_view Deflater::Compress(std::string_view data) {
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor_.get(), data.size());
    if (buffer_.size() < bound) buffer_.resize(bound);
    const std::size_t size =
        libdeflate_zlib_compress(compressor_.get(), data.data(), data.size(), buffer_.data(), buffer_.size());
    return {buffer_.data(), size};
}

PdfFile::PdfFile(const std::filesystem::path& target)
    : out_(target), deflater_(kLevel), digest_{0xCBF29CE484222325U, 0x9AE16A3B2F90404FU} {
    // Four bytes above 127 tell transfer programs that this is no text.
    out_.Write("%PDF-1.7\n%\xE2\xE3\xCF\xD3\n");
    entries_.reserve(kSectionEntries + kObjectStreamObjects);
}

int PdfFile::Reserve(int count) {
    const int first = next_;
    next_ += count;
    return first;
}

std::string& PdfFile::BeginObject(int number, ObjectGroup group) {
    Gathering& gathering = gatherings_[static_cast<std::size_t>(group)];
    if (gathering.bodies.size() >= kObjectStreamBytes || gathering.objects.size() >= kObjectStreamObjects)
        Flush(gathering);
    if (!gathering.bodies.empty()) gathering.bodies += '\n';
    gathering.objects.emplace_back(number, gathering.bodies.size());
    return gathering.bodies;
}

void PdfFile::WriteStream(int number, std::string_view entries, std::string_view data) {
    Digest(data);
    AddEntry({number, 1, out_.Position(), 0});
    std::string filtered(entries);
    filtered += "/Filter/FlateDecode";
    WriteRaw(number, filtered, deflater_.Compress(data));
}

void PdfFile::WriteRaw(int number, std::string_view entries, std::string_view compressed) {
    std::string head;
    AppendInteger(number, head);
    head += " 0 obj\n<<";
    head += entries;
    head += "/Length ";
    AppendInteger(static_cast<std::int64_t>(compressed.size()), head);
    head += ">>stream\n";
    out_.Write(head);
    out_.Write(compressed);
    out_.Write("\nendstream\nendobj\n");
}

void PdfFile::Flush(Gathering& gathering) {
    if (gathering.objects.empty()) return;
    const int stream = Reserve();
    std::string data;
    data.reserve(gathering.bodies.size() + gathering.objects.size() * 16);
    std::uint16_t index = 0;
    for (const auto& [number, start] : gathering.objects) {
        AddEntry({number, 2, static_cast<std::uint64_t>(stream), index++});
        AppendInteger(number, data);
        data += ' ';
        AppendInteger(static_cast<std::int64_t>(start), data);
        data += ' ';
    }
    std::string entries = "/Type/ObjStm/N ";
    AppendInteger(index, entries);
    entries += "/First ";
    AppendInteger(static_cast<std::int64_t>(data.size()), entries);
    data += gathering.bodies;
    gathering.bodies.clear();
    gathering.objects.clear();
    WriteStream(stream, entries, data);
    if (entries_.size() >= kSectionEntries) WriteCrossReference({});
}

void PdfFile::AddEntry(const Entry& entry) { entries_.push_back(entry); }

void PdfFile::WriteCrossReference(std::string_view trailerEntries) {
    const int number = Reserve();
    const std::uint64_t offset = out_.Position();
    if (previousSection_ == 0) entries_.push_back({0, 0, 0, 0xFFFF});  // head of the list of free objects
    entries_.push_back({number, 1, offset, 0});
    std::sort(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) { return a.number < b.number; });

    std::string rows;
    rows.reserve(entries_.size() * kEntryBytes);
    std::string dictionary = "/Type/XRef/W[1 5 2]/Index[";
    for (std::size_t first = 0; first < entries_.size();) {
        std::size_t end = first;
        for (; end < entries_.size() && entries_[end].number == entries_[first].number + static_cast<int>(end - first);
             ++end) {
            AppendBigEndian(entries_[end].type, 1, rows);
            AppendBigEndian(entries_[end].where, 5, rows);
            AppendBigEndian(entries_[end].index, 2, rows);
        }
        AppendInteger(entries_[first].number, dictionary);
        dictionary += ' ';
        AppendInteger(static_cast<std::int64_t>(end - first), dictionary);
        dictionary += ' ';
        first = end;
    }
    dictionary.back() = ']';
    entries_.clear();

    dictionary += "/Size ";
    AppendInteger(next_, dictionary);
    if (previousSection_ != 0) {
        dictionary += "/Prev ";
        AppendInteger(static_cast<std::int64_t>(previousSection_), dictionary);
    }
    dictionary += trailerEntries;
    dictionary += "/Filter/FlateDecode/DecodeParms<</Predictor 12/Columns ";
    AppendInteger(kEntryBytes, dictionary);
    dictionary += ">>";
    WriteRaw(number, dictionary, deflater_.Compress(PredictedUp(rows, kEntryBytes)));
    previousSection_ = offset;
}

void PdfFile::Finish(int catalog, int information) {
    for (Gathering& gathering : gatherings_) Flush(gathering);
    std::string trailer = "/Root ";
    AppendReference(catalog, trailer);
    trailer += "/Info ";
    AppendReference(information, trailer);
    const std::string identifier = Identifier();
    trailer += "/ID[<" + identifier + "><" + identifier + ">]";
    WriteCrossReference(trailer);
    std::string end = "startxref\n";
    AppendInteger(static_cast<std::int64_t>(previousSection_), end);
    end += "\n%%EOF\n";
    out_.Write(end);
    out_.Commit();
}

// The identifier follows from the content alone, so that the same report gives the same file. The checksum of each
// stream is enough of it and costs nothing beside the compression.
void PdfFile::Digest(std::string_view bytes) {
    const std::uint64_t word =
        (static_cast<std::uint64_t>(libdeflate_crc32(0, bytes.data(), bytes.size())) << 32U) ^ bytes.size();
    digest_[0] = (digest_[0] ^ word) * 0x100000001B3U;
    digest_[1] = (digest_[1] ^ (word >> 32U) ^ (word << 32U)) * 0x9DDFEA08EB382D69U;
    digest_[1] ^= digest_[1] >> 29U;
}

std::string PdfFile::Identifier() const {
    std::string hex;
    for (const std::uint64_t half : digest_) {
        for (int shift = 48; shift >= 0; shift -= 16) AppendHex16(static_cast<unsigned>(half >> shift) & 0xFFFFU, hex);
    }
    return hex;
}

}  // namespace quillform::print
