#include "cli/PrinterSwitches.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "cli/RowWriter.h"
#include "platform/Numbers.h"
#include "platform/Text.h"
#include "print/Printers.h"

namespace quillform::cli {

namespace {

constexpr std::string_view printerType = "printer";
constexpr int mostCopies = 999;

int Copies(const Arguments& arguments) {
    const auto text = arguments.Value("copies");
    if (!text) return 1;
    const double number = Val(*text);
    if (!(number >= 1 && number <= mostCopies) || *text != std::to_string(static_cast<int>(number)))
        throw UsageError("--copies takes a number from 1 to " + std::to_string(mostCopies) + ", not \"" + *text + "\"");
    return static_cast<int>(number);
}

std::string JsonOf(const print::Printer& printer) {
    std::string json = "{\"name\": ";
    AppendJsonText(printer.name, json);
    json += std::string(", \"default\": ") + (printer.isDefault ? "true" : "false");
    json += ", \"state\": ";
    AppendJsonText(print::StateInWords(printer), json);
    json += std::string(", \"takes jobs\": ") + (printer.acceptsJobs ? "true" : "false");
    json += ", \"description\": ";
    AppendJsonText(printer.description, json);
    json += ", \"location\": ";
    AppendJsonText(printer.location, json);
    return json + "}";
}

/// Name, mark of the default printer, state; then what and where it is.
using Columns = std::array<std::string, 4>;

Columns ColumnsOf(const print::Printer& printer) {
    // The service calls a printer that nobody has described by its name.
    std::string place = printer.description == printer.name ? "" : printer.description;
    if (!place.empty() && !printer.location.empty()) place += ", ";
    place += printer.location;
    return {printer.name, printer.isDefault ? "(default)" : "", print::StateInWords(printer), place};
}

std::string Table(const std::vector<print::Printer>& printers) {
    std::vector<Columns> rows;
    std::array<std::size_t, std::tuple_size_v<Columns>> widths{};
    for (const print::Printer& printer : printers) {
        rows.push_back(ColumnsOf(printer));
        for (std::size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], CountCharacters(rows.back()[i]));
    }
    std::string text;
    for (const Columns& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i)
            if (widths[i] > 0) line += row[i] + std::string(widths[i] - CountCharacters(row[i]) + 2, ' ');
        text += std::string(RTrim(line)) + "\n";
    }
    return text;
}

}  // namespace

std::optional<PrinterChoice> ChoosePrinter(const Arguments& arguments) {
    const auto type = arguments.Value("type");
    const bool isNamed = arguments.Has("printer") || arguments.Has("copies");
    if (type ? !EqualCaseBlind(*type, printerType) : !isNamed) {
        if (isNamed) throw UsageError("--printer and --copies go with the output type printer");
        return std::nullopt;
    }
    if (arguments.Has("output")) throw UsageError("a report goes to a printer or to a file, not to both");
    return PrinterChoice{arguments.Value("printer").value_or(""), Copies(arguments)};
}

ExitCode ListPrinters(bool asJson) {
    const std::vector<print::Printer> printers = print::ListPrinters();
    std::string text;
    if (asJson) {
        for (const print::Printer& printer : printers) text += (text.empty() ? "[\n" : ",\n") + JsonOf(printer);
        text += text.empty() ? "[]\n" : "\n]\n";
    } else {
        text = Table(printers);
        if (printers.empty()) std::fputs("quillform: The system's print service has no printers set up.\n", stderr);
    }
    std::fwrite(text.data(), 1, text.size(), stdout);
    return ExitCode::Done;
}

}  // namespace quillform::cli
