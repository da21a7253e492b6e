#include "designer/PrintText.h"

#include <optional>

#include "print/PdfTarget.h"
#include "print/Printers.h"
#include "richtext/PrintPages.h"

namespace quillform::designer {

namespace {

constexpr int letterPaper = 1;
const char* const title = "Report";

void WritePdf(std::string_view text, const std::filesystem::path& file, const Clock& clock) {
    const auto target = print::MakePdfTarget(file, {.title = title, .created = clock.Now()});
    richtext::PrintText(text, *target);
}

}  // namespace

void PrintText(std::string_view text, const DesignerServices& services) {
    if (const auto& chosen = services.printer.printer) {
        const print::Printer printer = print::FindPrinter(chosen->name);
        const print::SpoolFile spool;
        WritePdf(text, spool.Path(), services.clock);
        print::SendJob(printer, spool.Path(),
                       {.title = title, .paper = print::PaperSizeOf(letterPaper), .copies = chosen->copies},
                       [] { return false; });
        return;
    }
    const std::optional<std::string> file = services.user.SaveDialog({.title = "Save PDF File as...",
                                                                      .filter = "PDF (*.PDF)|*.pdf",
                                                                      .fileName = "*.PDF",
                                                                      .defaultExtension = "PDF",
                                                                      .initialFolder = {}});
    if (file) WritePdf(text, *file, services.clock);
}

}  // namespace quillform::designer
