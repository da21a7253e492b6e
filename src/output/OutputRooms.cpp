#include "output/OutputRooms.h"

#include "output/AccessOutput.h"
#include "output/MergeOutput.h"
#include "output/PrinterOutput.h"
#include "output/RtfOutput.h"
#include "output/TextOutput.h"

namespace quillform {

std::unique_ptr<Output> MakeOutput(OutputType type, const OutputTarget& target) {
    switch (type) {
        case OutputType::Printer:
            return std::make_unique<PrinterOutput>(target);
        case OutputType::Text:
            return std::make_unique<TextOutput>(target);
        case OutputType::CommaSeparated:
            return std::make_unique<CommaSeparatedOutput>(target);
        case OutputType::WordMerge:
            return std::make_unique<WordMergeOutput>(target);
        case OutputType::WordPerfectMerge:
            return std::make_unique<WordPerfectOutput>(target);
        case OutputType::AccessDatabase:
            return std::make_unique<AccessOutput>(target);
        case OutputType::Screen:
            return std::make_unique<RtfOutput>(target, RtfOutput::Use::Screen);
        case OutputType::RichText:
            return std::make_unique<RtfOutput>(target, RtfOutput::Use::Document);
    }
    throw RunTimeError(ErrorNumber::NotSupported,
                       std::string("There is no output type \"") + static_cast<char>(type) + "\".");
}

std::string_view ExtensionOf(OutputType type) {
    switch (type) {
        case OutputType::Printer:
            return ".pdf";
        case OutputType::Screen:
        case OutputType::RichText:
            return ".rtf";
        case OutputType::Text:
            return ".txt";
        case OutputType::CommaSeparated:
            return ".mrg";
        case OutputType::AccessDatabase:
            return ".mdb";
        case OutputType::WordMerge:
        case OutputType::WordPerfectMerge:
            return ".doc";
    }
    return {};
}

std::string ScreenFileOf(const Layout& layout) {
    return layout.strAppPath + "DISPLY" + std::to_string(layout.intPreviewNumber) + ".RTF";
}

}  // namespace quillform
