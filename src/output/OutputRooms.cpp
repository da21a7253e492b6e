#include "output/OutputRooms.h"

#include "output/AccessOutput.h"
#include "output/MergeOutput.h"
#include "output/PrinterOutput.h"
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
        case OutputType::RichText:
            break;
    }
    throw RunTimeError(ErrorNumber::NotSupported, std::string("The output type \"") + static_cast<char>(type) +
                                                      "\" can't be made by this version.");
}

std::vector<OutputType> SupportedOutputs() {
    return {OutputType::Printer,          OutputType::Text,          OutputType::CommaSeparated, OutputType::WordMerge,
            OutputType::WordPerfectMerge, OutputType::AccessDatabase};
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

}  // namespace quillform
