#include "richtext/PrintPages.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "model/DesignGrid.h"
#include "platform/Text.h"

namespace quillform::richtext {

namespace {

constexpr int kMostPaperNumbers = 256;
constexpr double kSheetSlack = 40;  // papers are given in whole millimetres or parts of an inch
constexpr double kTwipsPerInch = 1440;
constexpr int kTabCharacters = 8;

int NearestColour(Rgb colour) {
    const auto distance = [&](int number) {
        const Rgb known = QBColor(number);
        const auto square = [](int a, int b) { return (a - b) * (a - b); };
        return square(known.red, colour.red) + square(known.green, colour.green) + square(known.blue, colour.blue);
    };
    int nearest = 0;
    for (int number = 1; number < 16; ++number)
        if (distance(number) < distance(nearest)) nearest = number;
    return nearest;
}

struct Paper {
    int number = 1;
    bool isLandscape = false;
    double width = 12240;
    double height = 15840;
    friend bool operator==(const Paper&, const Paper&) = default;
};

// The smallest paper, upright or on its side, that the sheet lies on.
Paper PaperOf(const Geometry& sheet) {
    std::optional<Paper> best;
    const auto consider = [&](const Paper& paper) {
        const bool holds = paper.width + kSheetSlack >= sheet.width && paper.height + kSheetSlack >= sheet.height;
        if (holds && (!best || paper.width * paper.height < best->width * best->height)) best = paper;
    };
    for (int number = 1; number <= kMostPaperNumbers; ++number) {
        PaperInches size;
        if (!FindPaper(number, size)) continue;
        const double width = size.width * kTwipsPerInch;
        const double height = size.height * kTwipsPerInch;
        consider({number, false, width, height});
        consider({number, true, height, width});
    }
    return best.value_or(Paper{1, sheet.width > sheet.height, 12240, 15840});
}

/// Lines of a text, one below the other.
class TextColumn {
public:
    explicit TextColumn(PrintTarget& target)
        : target_(target), height_(target.TextHeight()), tab_(kTabCharacters * target.TextWidth("0")) {}

    void Write(std::string_view line) {
        for (std::size_t at = 0; at < line.size();) {
            const std::size_t from = at;
            if (line[at] == '\t') {
                ++at;
                Flush();
                x_ = (std::floor(x_ / tab_ + 1e-6) + 1) * tab_;
                if (x_ >= target_.ScaleWidth()) Break();
                continue;
            }
            at = EndOfWord(line, at);
            WriteWord(line.substr(from, at - from));
        }
        Break();
    }
    void BreakPage() {
        target_.NewPage();
        x_ = y_ = 0;
    }

private:
    // A word with the blanks behind it.
    static std::size_t EndOfWord(std::string_view line, std::size_t at) {
        at = std::min(line.find_first_of(" \t", at), line.size());
        return std::min(line.find_first_not_of(' ', at), line.size());
    }
    void WriteWord(std::string_view word) {
        const double width = target_.TextWidth(RTrim(word));
        if (x_ > 0 && x_ + width > target_.ScaleWidth()) Break();
        if (width <= target_.ScaleWidth()) return Put(word);
        for (std::size_t at = 0; at < word.size();) {
            const std::size_t from = at;
            NextCodePoint(word, at);
            const std::string_view letter = word.substr(from, at - from);
            if (x_ > 0 && x_ + target_.TextWidth(letter) > target_.ScaleWidth()) Break();
            Put(letter);
        }
    }
    void Put(std::string_view text) {
        if (pending_.empty()) start_ = x_;
        pending_ += text;
        x_ += target_.TextWidth(text);
    }
    void Flush() {
        if (pending_.empty()) return;
        if (y_ > 0 && y_ + height_ > target_.ScaleHeight()) {
            target_.NewPage();
            y_ = 0;
        }
        target_.SetCurrentX(start_);
        target_.SetCurrentY(y_);
        target_.Print(pending_);
        pending_.clear();
    }
    void Break() {
        Flush();
        x_ = 0;
        y_ += height_;
    }

    PrintTarget& target_;
    double height_;
    double tab_;
    double x_ = 0;
    double y_ = 0;
    double start_ = 0;     // of what is pending
    std::string pending_;  // text without tabs that goes out in one piece
};

}  // namespace

void DrawPage(const SheetPage& page, const std::vector<PlacedFont>& fonts, PrintTarget& target) {
    target.SetOrigin(PageOrigin::Sheet);
    for (const SheetPage::Box& box : page.boxes) {
        target.FillBox(box.left, box.top, box.left + box.width, box.top + box.height, NearestColour(box.colour));
    }
    std::uint32_t line = 0;
    for (const SheetPage::Text& text : page.texts) {
        if (text.line != line) target.BeginRow();
        line = text.line;
        target.SetFont(target.Font(fonts[text.font].spec));
        target.SetForeColor(NearestColour(text.colour));
        target.SetCurrentX(text.x);
        target.SetCurrentY(text.y);
        target.Print(page.CharactersOf(text));
    }
}

void PrintPages(const Document& document, PrintTarget& target) {
    PageFlow flow(document, target);
    SheetPage page;
    std::optional<Geometry> sheet;
    while (flow.Next(page)) {
        const bool isFirst = !sheet.has_value();
        if (!isFirst) target.NewPage();
        if (isFirst || *sheet != page.geometry) {
            const Paper paper = PaperOf(page.geometry);
            target.SetPaperSize(paper.number);
            target.SetOrientation(paper.isLandscape);
            sheet = page.geometry;
        }
        DrawPage(page, flow.Fonts(), target);
    }
    target.EndDoc();
}

void PrintText(std::string_view text, PrintTarget& target) {
    TextColumn column(target);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\n\f"), text.size());
        const bool endsPage = end < text.size() && text[end] == '\f';
        if (end > 0 || !endsPage) column.Write(text.substr(0, end));
        if (endsPage) column.BreakPage();
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    target.EndDoc();
}

}  // namespace quillform::richtext
