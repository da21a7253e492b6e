#include "richtext/LineBreaker.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/Text.h"

namespace quillform::richtext {

namespace {

constexpr double kSlack = 0.01;       // what sums of widths may be off
constexpr double kLeastLength = 360;  // of a line between indents that leave less
constexpr double kSingleSpacing = 240;

}  // namespace

void LineBreaker::Break(const Paragraph& paragraph, double width, LineList& out) {
    format_ = &document_.paragraphFormats[paragraph.format];
    out_ = &out;
    const double left = std::max(format_->leftIndent, format_->leftIndent + format_->firstIndent);
    right_ = std::max(width - format_->rightIndent, left + kLeastLength);
    const std::size_t firstLine = out.lines.size();

    StartLine(format_->leftIndent + format_->firstIndent);
    for (std::uint32_t i = 0; i < paragraph.runCount; ++i) TakeRun(document_.runs[paragraph.firstRun + i]);
    EndWord();
    RaiseEmptyLine(paragraph.markFormat);
    EndLine();

    Line& first = out.lines[firstLine];
    first.height += format_->spaceBefore;
    first.baseline += format_->spaceBefore;
    out.lines.back().height += format_->spaceAfter;
}

void LineBreaker::TakeRun(const Run& run) {
    const std::string_view text = document_.TextOf(run);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t from = at++;
        switch (text[from]) {
            case '\t':
                TakeTab(run.format);
                break;
            case '\n':
                EndWord();
                RaiseEmptyLine(run.format);
                EndLine();
                StartLine(format_->leftIndent);
                break;
            case ' ':
                at = std::min(text.find_first_not_of(' ', at), text.size());
                TakeBlanks(run, from, at);
                break;
            default:
                at = std::min(text.find_first_of(" \t\n-", at), text.size());
                if (at < text.size() && text[at] == '-') ++at;
                TakeWordPart(run, from, at);
                if (text[at - 1] == '-') EndWord();
        }
    }
}

void LineBreaker::TakeWordPart(const Run& run, std::size_t from, std::size_t to) {
    Piece part;
    part.format = run.format;
    part.start = static_cast<std::uint32_t>(run.start + from);
    part.length = static_cast<std::uint32_t>(to - from);
    part.width = fonts_.Width(run.format, std::string_view(document_.text).substr(part.start, part.length));
    wordWidth_ += part.width;
    word_.push_back(part);
}

void LineBreaker::EndWord() {
    if (word_.empty()) return;
    if (canBreak_ && !Fits(wordWidth_)) {
        EndLine();
        StartLine(format_->leftIndent);
    }
    if (Fits(wordWidth_))
        for (const Piece& part : word_) {
            RaiseLine(part.format);
            Place(part);
        }
    else
        SplitWord();
    trailingBlanks_ = 0;
    canBreak_ = true;
    word_.clear();
    wordWidth_ = 0;
}

// Letter by letter, as many on a line as it takes.
void LineBreaker::SplitWord() {
    for (const Piece& part : word_) {
        const std::string_view text = std::string_view(document_.text).substr(part.start, part.length);
        for (std::size_t at = 0; at < text.size();) {
            Piece letter = part;
            const std::size_t from = at;
            NextCodePoint(text, at);
            letter.start = static_cast<std::uint32_t>(part.start + from);
            letter.length = static_cast<std::uint32_t>(at - from);
            letter.width = fonts_.Width(part.format, text.substr(from, at - from));
            if (canBreak_ && !Fits(letter.width)) {
                EndLine();
                StartLine(format_->leftIndent);
            }
            RaiseLine(part.format);
            Place(letter);
            canBreak_ = true;
        }
    }
}

void LineBreaker::TakeBlanks(const Run& run, std::size_t from, std::size_t to) {
    EndWord();
    Piece blanks;
    blanks.format = run.format;
    blanks.start = static_cast<std::uint32_t>(run.start + from);
    blanks.length = static_cast<std::uint32_t>(to - from);
    blanks.width = fonts_.Width(run.format, " ") * static_cast<double>(to - from);
    Place(blanks);
    blankFormat_ = run.format;
    trailingBlanks_ += blanks.width;
}

void LineBreaker::TakeTab(std::uint32_t format) {
    EndWord();
    EndSegment();
    TabStop stop = NextStop();
    if (canBreak_ && !HasRoomBehind(stop)) {
        EndLine();
        StartLine(format_->leftIndent);
        stop = NextStop();
    }
    RaiseLine(format);
    if (!HasRoomBehind(stop)) return;  // not even on a line of its own
    stop.position = std::min(stop.position, static_cast<int>(std::max(right_, pen_)));
    segmentStop_ = stop;
    if (stop.alignment == TabAlignment::Left) {
        ShadeTab(format, pen_);
        segmentStart_ = pen_ = stop.position;
    }
    trailingBlanks_ = 0;
    canBreak_ = true;
}

bool LineBreaker::HasRoomBehind(TabStop stop) const {
    // Text before a right or centred stop has room on its left.
    return stop.alignment != TabAlignment::Left || stop.position < right_ - kSlack;
}

void LineBreaker::ShadeTab(std::uint32_t format, double from) {
    if (!hasText_ || !document_.ShadeOf(document_.characterFormats[format])) return;
    out_->pieces.push_back({from, segmentStop_.position - from, format, 0, 0});
    segmentPiece_ = out_->pieces.size();
}

TabStop LineBreaker::NextStop() const {
    const double behind = pen_ + kSlack;
    if (format_->tabs) {
        for (const TabStop& stop : *format_->tabs)
            if (stop.position > behind) return stop;
    }
    // A hanging first line has a stop at the indent of the others.
    if (format_->firstIndent < 0 && format_->leftIndent > behind) return {format_->leftIndent, TabAlignment::Left};
    const double distance = document_.defaultTab;
    return {static_cast<int>((std::floor(behind / distance) + 1) * distance), TabAlignment::Left};
}

void LineBreaker::Place(const Piece& piece) {
    hasText_ = true;
    auto& pieces = out_->pieces;
    const bool continues = pieces.size() > segmentPiece_ && pieces.back().format == piece.format &&
                           pieces.back().start + pieces.back().length == piece.start;
    if (continues) {
        pieces.back().length += piece.length;
        pieces.back().width += piece.width;
    } else {
        pieces.push_back(piece);
        pieces.back().x = pen_;
    }
    pen_ += piece.width;
}

void LineBreaker::RaiseLine(std::uint32_t format) {
    if (const auto blanks = std::exchange(blankFormat_, std::nullopt)) RaiseLine(*blanks);
    const PlacedFont& font = fonts_.Of(format);
    ascent_ = std::max(ascent_, font.ascent);
    descent_ = std::max(descent_, font.Descent());
}

void LineBreaker::RaiseEmptyLine(std::uint32_t format) {
    if (ascent_ + descent_ == 0) RaiseLine(format);
}

double LineBreaker::PenBehind(double width) const {
    width += pen_ - segmentStart_;
    switch (segmentStop_.alignment) {
        case TabAlignment::Left:
            break;
        case TabAlignment::Centre:
            return std::max(segmentStart_, segmentStop_.position - width / 2) + width;
        case TabAlignment::Right:
            return std::max(segmentStart_, segmentStop_.position - width) + width;
    }
    return segmentStart_ + width;
}

bool LineBreaker::Fits(double width) const { return PenBehind(width) <= right_ + kSlack; }

// Moves what follows a centred or right tab to its place.
void LineBreaker::EndSegment() {
    const double shift = PenBehind(0) - pen_;
    for (std::size_t i = segmentPiece_; i < out_->pieces.size(); ++i) out_->pieces[i].x += shift;
    pen_ += shift;
    segmentPiece_ = out_->pieces.size();
    segmentStart_ = pen_;
    segmentStop_ = {};
}

void LineBreaker::StartLine(double indent) {
    firstPiece_ = segmentPiece_ = out_->pieces.size();
    pen_ = segmentStart_ = indent;
    segmentStop_ = {};
    trailingBlanks_ = ascent_ = descent_ = 0;
    hasText_ = canBreak_ = false;
    blankFormat_.reset();
}

void LineBreaker::EndLine() {
    EndSegment();
    AlignLine();
    Line line;
    line.firstPiece = firstPiece_;
    line.pieceCount = out_->pieces.size() - firstPiece_;
    SetHeight(line);
    out_->lines.push_back(line);
}

void LineBreaker::AlignLine() {
    if (format_->alignment == Alignment::Left) return;
    const double room = right_ - (pen_ - trailingBlanks_);
    const double shift = format_->alignment == Alignment::Centre ? room / 2 : room;
    if (shift <= 0) return;
    for (std::size_t i = firstPiece_; i < out_->pieces.size(); ++i) out_->pieces[i].x += shift;
}

void LineBreaker::SetHeight(Line& line) const {
    line.ascent = ascent_;
    line.descent = descent_;
    line.height = ascent_ + descent_;
    const double wanted = format_->lineSpacing;
    if (format_->isLineSpacingFactor && wanted > 0)
        line.height *= wanted / kSingleSpacing;
    else if (wanted < 0)
        line.height = -wanted;
    else
        line.height = std::max(line.height, wanted);
    // Space that a line has to spare or lacks is above its letters.
    line.baseline = line.height - descent_;
}

}  // namespace quillform::richtext
