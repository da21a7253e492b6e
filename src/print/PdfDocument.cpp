#include "print/PdfDocument.h"

#include <cstdio>

#include "platform/Dates.h"
#include "print/PdfFonts.h"
#include "print/PdfSyntax.h"

namespace quillform::print {

namespace {

constexpr double kPointsPerTwip = 0.05;
constexpr std::size_t kPagesPerBranch = 64;
constexpr std::string_view kProducer = "Quillform";

void AppendSheet(const Sheet& sheet, std::string& out) {
    out += "/MediaBox[0 0 ";
    AppendDecimal(sheet.width * kPointsPerTwip, out);
    out += ' ';
    AppendDecimal(sheet.height * kPointsPerTwip, out);
    out += ']';
}

double OriginY(const Sheet& sheet) { return (sheet.height - sheet.edge) * kPointsPerTwip; }

// Local time without a zone, since a serial has none. `pattern` takes six numbers from year to second.
std::string DateText(double serial, const char* pattern) {
    const DateParts parts = PartsOf(serial);
    char text[64];
    std::snprintf(text, sizeof text, pattern, parts.year, parts.month, parts.day, parts.hour, parts.minute,
                  parts.second);
    return text;
}

}  // namespace

PdfDocument::PdfDocument(const std::filesystem::path& target, FontBook& fonts)
    : fonts_(fonts), file_(target), structure_(file_), outline_(file_), composer_(fonts, structure_) {
    pagesRoot_ = file_.Reserve();
    resources_ = file_.Reserve();
}

void PdfDocument::BeginPage() {
    if (page_ == 0) page_ = file_.Reserve();
}

void PdfDocument::AddOutlineEntry(int level, std::string_view title, double y, const Sheet& sheet) {
    BeginPage();
    outline_.Add(level, title, page_, OriginY(sheet) - UsableTwips(y) * kPointsPerTwip);
}

void PdfDocument::AddPage(const Page& page, const Sheet& sheet) {
    BeginPage();
    if (pageCount_ == 0) usualSheet_ = sheet;
    if (branch_ == 0) branch_ = file_.Reserve();

    structure_.BeginPage(page_);
    const std::string_view content =
        composer_.Compose(page, pageCount_ + 1, sheet.edge * kPointsPerTwip, OriginY(sheet));
    structure_.EndPage();
    const int stream = file_.Reserve();
    file_.WriteStream(stream, {}, content);

    std::string& out = file_.BeginObject(page_);
    out += "<</Type/Page/Parent ";
    AppendReference(branch_, out);
    out += "/Contents ";
    AppendReference(stream, out);
    if (!(sheet == usualSheet_)) AppendSheet(sheet, out);
    out += "/StructParents ";
    AppendInteger(pageCount_, out);
    out += "/Tabs/S>>";

    branchPages_.push_back(page_);
    page_ = 0;
    ++pageCount_;
    if (branchPages_.size() == kPagesPerBranch) WriteBranch();
}

void PdfDocument::WriteBranch() {
    if (branchPages_.empty()) return;
    std::string& out = file_.BeginObject(branch_);
    out += "<</Type/Pages/Parent ";
    AppendReference(pagesRoot_, out);
    out += "/Count ";
    AppendInteger(static_cast<std::int64_t>(branchPages_.size()), out);
    out += "/Kids[";
    for (const int page : branchPages_) {
        AppendReference(page, out);
        out += ' ';
    }
    out.back() = ']';
    out += ">>";
    branches_.emplace_back(branch_, static_cast<int>(branchPages_.size()));
    branchPages_.clear();
    branch_ = 0;
}

int PdfDocument::WritePages() {
    WriteBranch();
    std::string& out = file_.BeginObject(pagesRoot_);
    out += "<</Type/Pages";
    AppendSheet(usualSheet_, out);
    out += "/Resources ";
    AppendReference(resources_, out);
    out += "/Count ";
    AppendInteger(pageCount_, out);
    out += "/Kids[";
    for (const auto& [branch, pages] : branches_) {
        AppendReference(branch, out);
        out += ' ';
    }
    out.back() = ']';
    out += ">>";
    return pagesRoot_;
}

int PdfDocument::WriteResources() {
    std::string fonts;
    for (std::size_t i = 0; i < fonts_.Faces().size(); ++i) {
        const FontFace& face = *fonts_.Faces()[i];
        if (face.UsedCharacters().empty()) continue;
        fonts += "/F" + std::to_string(i) + ' ';
        AppendReference(EmbedFont(file_, face), fonts);
    }
    file_.BeginObject(resources_) += "<</Font<<" + fonts + ">>>>";
    return resources_;
}

int PdfDocument::WriteInformation(std::string_view title, const PdfSettings& settings) {
    const int object = file_.Reserve();
    std::string& out = file_.BeginObject(object);
    out += "<</Title";
    AppendTextString(title, out);
    out += "/Creator";
    AppendTextString(kProducer, out);
    out += "/Producer";
    AppendTextString(kProducer, out);
    if (settings.created != 0) {
        const std::string date = DateText(settings.created, "D:%04d%02d%02d%02d%02d%02d");
        out += "/CreationDate(" + date + ")/ModDate(" + date + ")";
    }
    out += ">>";
    return object;
}

int PdfDocument::WriteMetadata(std::string_view title, const PdfSettings& settings) {
    std::string xml =
        "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
        "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
        "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\" "
        "xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\" xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\">\n"
        "<dc:format>application/pdf</dc:format>\n<dc:title><rdf:Alt><rdf:li xml:lang=\"x-default\">";
    AppendXmlText(title, xml);
    xml += "</rdf:li></rdf:Alt></dc:title>\n<pdf:Producer>";
    xml += kProducer;
    xml += "</pdf:Producer>\n<xmp:CreatorTool>";
    xml += kProducer;
    xml += "</xmp:CreatorTool>\n";
    if (settings.created != 0) {
        const std::string date = DateText(settings.created, "%04d-%02d-%02dT%02d:%02d:%02d");
        xml += "<xmp:CreateDate>" + date + "</xmp:CreateDate>\n<xmp:ModifyDate>" + date + "</xmp:ModifyDate>\n";
    }
    xml += "</rdf:Description></rdf:RDF></x:xmpmeta>\n<?xpacket end=\"r\"?>";
    const int object = file_.Reserve();
    file_.WriteStream(object, "/Type/Metadata/Subtype/XML", xml);
    return object;
}

int PdfDocument::WriteCatalog(int pages, int metadata, const PdfSettings& settings) {
    const int structureRoot = structure_.Finish();
    const int outlineRoot = outline_.Finish();
    const int object = file_.Reserve();
    std::string& out = file_.BeginObject(object);
    out += "<</Type/Catalog/Pages ";
    AppendReference(pages, out);
    out += "/Metadata ";
    AppendReference(metadata, out);
    out += "/StructTreeRoot ";
    AppendReference(structureRoot, out);
    if (outlineRoot != 0) {
        out += "/Outlines ";
        AppendReference(outlineRoot, out);
        out += "/PageMode/UseOutlines";
    }
    if (!settings.language.empty()) {
        out += "/Lang";
        AppendTextString(settings.language, out);
    }
    out += "/MarkInfo<</Marked true>>/ViewerPreferences<</DisplayDocTitle true>>/PageLabels<</Nums[0<</S/D>>]>>>>";
    return object;
}

void PdfDocument::Finish(std::string_view title, const PdfSettings& settings) {
    const int pages = WritePages();
    WriteResources();
    const int metadata = WriteMetadata(title, settings);
    const int information = WriteInformation(title, settings);
    file_.Finish(WriteCatalog(pages, metadata, settings), information);
}

}  // namespace quillform::print
