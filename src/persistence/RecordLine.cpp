#include "persistence/RecordLine.h"

namespace quillform {

std::optional<std::string_view> RecordLine::Until(char end, std::size_t start) {
    if (isBroken_ || start > line_.size()) {
        isBroken_ = true;
        return std::nullopt;
    }
    const std::size_t at = line_.find(end, start);
    if (at == std::string_view::npos) {
        isBroken_ = true;
        return std::nullopt;
    }
    next_ = at + 1;
    return line_.substr(start, at - start);
}

std::optional<std::string_view> RecordLine::Unquoted() {
    isAfterQuote_ = false;
    return Until(',', next_);
}

std::optional<std::string_view> RecordLine::Quoted() {
    // Behind a comma the opening quote is stepped over, behind a closing quote the comma as well.
    const std::size_t start = next_ + (isAfterQuote_ ? 2 : 1);
    isAfterQuote_ = true;
    return Until('"', start);
}

RecordLineWriter& RecordLineWriter::Unquoted(std::string_view value) {
    line_ += value;
    line_ += ',';
    isAfterQuote_ = false;
    return *this;
}

RecordLineWriter& RecordLineWriter::Quoted(std::string_view value) {
    if (isAfterQuote_) line_ += ',';
    line_ += '"';
    for (const char c : value) {
        const bool isQuote = c == '"';
        const bool isLineEnd = c == '\r' || c == '\n';
        hasReplaced_ = hasReplaced_ || isQuote || isLineEnd;
        line_ += isQuote ? '\'' : isLineEnd ? ' ' : c;
    }
    line_ += '"';
    isAfterQuote_ = true;
    return *this;
}

std::vector<std::string> LossesInWords(const std::string& fileName, std::string_view kindOfFile,
                                       const SaveLosses& losses) {
    const std::string head = "\"" + fileName + "\": ";
    std::vector<std::string> sentences;
    if (losses.hasReplaced)
        sentences.push_back(head + std::string(kindOfFile) +
                            " can't hold double quotes or line ends inside a text; they were saved as apostrophes and "
                            "blanks.");
    if (losses.lostCharacters > 0)
        sentences.push_back(head + std::to_string(losses.lostCharacters) + " characters that " +
                            std::string(kindOfFile) + " can't hold were saved as \"?\".");
    return sentences;
}

}  // namespace quillform
