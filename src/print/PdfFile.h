#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/OutputFile.h"

struct libdeflate_compressor;

namespace quillform::print {

/// Compresses one stream after the other into a buffer that is used again.
class Deflater {
public:
    explicit Deflater(int level);
    /// The data in zlib's format; valid until the next call.
    std::string_view Compress(std::string_view data);

private:
    struct Free {
        void operator()(libdeflate_compressor* compressor) const noexcept;
    };
    std::unique_ptr<libdeflate_compressor, Free> compressor_;
    std::vector<char> buffer_;
};

/// Objects that are read together are kept together: who opens a document at its last page reads the page tree, and
/// shouldn't have to unpack the structure of all pages for it.
enum class ObjectGroup { Document, Structure };

/// The objects of one PDF 1.7 file, written front to back. Small objects are gathered in object streams, and the
/// cross-reference is written in sections as it fills, each pointing at the one before; so memory stays the same
/// however many objects there are. The file appears at Finish. Errors as OutputFile.
class PdfFile {
public:
    explicit PdfFile(const std::filesystem::path& target);

    /// Object numbers for objects that are to be written, each once and in any order; the first of `count` consecutive
    /// ones.
    int Reserve(int count = 1);
    /// Gives the text to which the body of an object is to be appended, before any other call.
    std::string& BeginObject(int number, ObjectGroup group = ObjectGroup::Document);
    /// `entries` are the dictionary's own entries, without those for length and filter.
    void WriteStream(int number, std::string_view entries, std::string_view data);
    /// Ends the file. Every reserved object must have been written.
    void Finish(int catalog, int information);

private:
    struct Entry {
        int number;
        std::uint8_t type;    // 1 at an offset, 2 in an object stream
        std::uint64_t where;  // offset, or number of the object stream
        std::uint16_t index;  // in the object stream
    };

    /// An object stream that is being filled.
    struct Gathering {
        std::string bodies;
        std::vector<std::pair<int, std::size_t>> objects;  // number, start in bodies
    };

    void Flush(Gathering& gathering);
    void AddEntry(const Entry& entry);
    void WriteCrossReference(std::string_view trailerEntries);
    void WriteRaw(int number, std::string_view entries, std::string_view compressed);
    void Digest(std::string_view bytes);
    std::string Identifier() const;

    OutputFile out_;
    Deflater deflater_;
    int next_ = 1;
    std::array<Gathering, 2> gatherings_;  // by group
    std::vector<Entry> entries_;           // not yet in a cross-reference section
    std::uint64_t previousSection_ = 0;    // offset; 0 for none
    std::array<std::uint64_t, 2> digest_;
};

}  // namespace quillform::print
