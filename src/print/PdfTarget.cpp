#include "print/PdfTarget.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

#include "model/DesignGrid.h"
#include "platform/Text.h"
#include "print/FontBook.h"
#include "print/Page.h"
#include "print/PdfDocument.h"

namespace quillform::print {

namespace {

class PdfFileTarget final : public PdfTarget {
public:
    PdfFileTarget(const std::filesystem::path& file, const PdfSettings& settings)
        : settings_(settings), fontNames_(book_.Files().PresentFamilies()), document_(std::in_place, file, book_) {
        title_ = settings.title.empty() ? file.filename().string() : settings.title;
        font_ = book_.Find(FontSpec{});
    }

    // Measuring
    FontId Font(const FontSpec& spec) override { return book_.Find(spec); }
    double TextWidth(FontId font, std::string_view text) const override { return book_.TextWidth(font, text); }
    double TextHeight(FontId font) const override { return book_.At(font).height; }
    double TextAscent(FontId font) const override { return book_.At(font).ascent; }

    // The document
    void SetTitle(std::string_view title) override {
        if (!title.empty()) title_ = title;
    }
    void SetOrientation(bool landscape) override { isLandscape_ = landscape; }
    void SetPaperSize(int paperNumber) override { paper_ = PaperSizeOf(paperNumber); }
    void SetOrigin(PageOrigin origin) override { edge_ = origin == PageOrigin::Sheet ? 0 : kUnprintableEdge; }
    const std::vector<std::string>& Fonts() const override { return fontNames_; }
    std::vector<std::string> FontSubstitutions() const override;
    int PageCount() const override;
    std::size_t MissingCharacters() const override { return book_.MissingCharacters(); }

    // Drawing
    void SetFont(FontId font) override { font_ = font; }
    FontId CurrentFont() const override { return font_; }
    void SetForeColor(int colour) override { colour_ = static_cast<std::uint8_t>(std::clamp(colour, 0, 15)); }
    double CurrentX() const override { return x_; }
    double CurrentY() const override { return y_; }
    void SetCurrentX(double x) override { x_ = x; }
    void SetCurrentY(double y) override { y_ = y; }
    void Print(std::string_view text) override;
    void Print() override { MoveToNextLine(); }
    void FillBox(double x1, double y1, double x2, double y2, int colour) override {
        page_.AddBox(x1, y1, x2, y2, colour);
    }
    double ScaleHeight() const override { return Sheet().height - 2 * edge_; }
    double ScaleWidth() const override { return Sheet().width - 2 * edge_; }
    void NewPage() override;
    void EndDoc() override;

    // For readers
    void SetRole(PageRole role) override { role_ = role; }
    void BeginRow() override { ++row_; }
    void AddOutlineEntry(int level, std::string_view title) override;

private:
    print::Sheet Sheet() const;
    void MoveToNextLine() {
        x_ = 0;
        y_ += TextHeight(font_);
    }

    PdfSettings settings_;
    std::string title_;
    FontBook book_;
    std::vector<std::string> fontNames_;
    std::optional<PdfDocument> document_;  // empty once the file is complete
    int finishedPages_ = 0;

    PaperSize paper_;
    bool isLandscape_ = false;
    double edge_ = kUnprintableEdge;
    Page page_;
    FontId font_{};
    double x_ = 0;
    double y_ = 0;
    std::uint8_t colour_ = 0;
    PageRole role_ = PageRole::Detail;
    std::uint32_t row_ = 0;
};

print::Sheet PdfFileTarget::Sheet() const {
    if (isLandscape_) return {paper_.heightTwips, paper_.widthTwips, edge_};
    return {paper_.widthTwips, paper_.heightTwips, edge_};
}

std::vector<std::string> PdfFileTarget::FontSubstitutions() const { return book_.Substitutions(); }

int PdfFileTarget::PageCount() const {
    if (!document_) return finishedPages_;
    return document_->PageCount() + (page_.IsBlank() ? 0 : 1);
}

// Blanks behind a text leave no mark, and reports pad their items with many; only a line under them would show.
void PdfFileTarget::Print(std::string_view text) {
    const bool isUnderlined = book_.At(font_).spec.underline;
    Page::Text placed;
    placed.x = static_cast<float>(UsableTwips(x_));
    placed.y = static_cast<float>(UsableTwips(y_));
    placed.font = font_;
    placed.row = row_;
    placed.colour = colour_;
    placed.role = role_;
    page_.AddText(placed, isUnderlined ? text : RTrim(text));
    MoveToNextLine();
}

void PdfFileTarget::AddOutlineEntry(int level, std::string_view title) {
    if (document_) document_->AddOutlineEntry(level, title, y_, Sheet());
}

void PdfFileTarget::NewPage() {
    if (document_) document_->AddPage(page_, Sheet());
    page_.Clear();
    x_ = y_ = 0;
}

// A page that was begun and holds nothing isn't printed, as a printer wouldn't eject it; but a document has one page.
void PdfFileTarget::EndDoc() {
    if (!document_) return;
    if (!page_.IsBlank() || document_->HasBegunPage() || document_->PageCount() == 0) NewPage();
    document_->Finish(title_, settings_);
    finishedPages_ = document_->PageCount();
    document_.reset();
}

}  // namespace

PaperSize PaperSizeOf(int number) {
    constexpr double twipsPerInch = 1440;
    PaperInches inches;  // Letter, and left so by an unknown number
    FindPaper(number, inches);
    return {inches.width * twipsPerInch, inches.height * twipsPerInch};
}

std::unique_ptr<PdfTarget> MakePdfTarget(const std::filesystem::path& file, const PdfSettings& settings) {
    return std::make_unique<PdfFileTarget>(file, settings);
}

}  // namespace quillform::print
