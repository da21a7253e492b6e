#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillform {

/// Walks the fields of one line of a layout or query file. An unquoted field ends before the next comma. A quoted
/// field's opening quote is stepped over and not looked for, and it ends before the next double quote, so what stands
/// between fields doesn't matter. Once an end isn't found, this field and all behind it are missing.
class RecordLine {
public:
    /// `start` is the byte where the first field begins.
    RecordLine(std::string_view line, std::size_t start) : line_(line), next_(start) {}

    std::optional<std::string_view> Unquoted();
    std::optional<std::string_view> Quoted();

private:
    std::optional<std::string_view> Until(char end, std::size_t start);

    std::string_view line_;
    std::size_t next_;           // where an unquoted field would begin: behind the last delimiter
    bool isAfterQuote_ = false;  // the last delimiter was a closing quote
    bool isBroken_ = false;
};

/// What a text file in code page 1252 couldn't keep of what was saved.
struct SaveLosses {
    bool hasReplaced = false;        ///< double quotes and line ends inside fields
    std::size_t lostCharacters = 0;  ///< saved as "?"
};
/// For people, one sentence for each kind of loss; `kindOfFile` is "a layout file".
std::vector<std::string> LossesInWords(const std::string& fileName, std::string_view kindOfFile,
                                       const SaveLosses& losses);

/// Builds such a line.
class RecordLineWriter {
public:
    explicit RecordLineWriter(std::string_view head) : line_(head) {}

    RecordLineWriter& Unquoted(std::string_view value);
    /// The format has no way to write a double quote or a line end inside a value: a quote becomes an apostrophe, a
    /// line end a blank, rather than cut the value short for the next reader.
    RecordLineWriter& Quoted(std::string_view value);
    const std::string& Line() const { return line_; }
    bool HasReplaced() const { return hasReplaced_; }

private:
    std::string line_;
    bool isAfterQuote_ = false;
    bool hasReplaced_ = false;
};

}  // namespace quillform
