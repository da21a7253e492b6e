// Stands in for the print service where the program is built without it.
#include "platform/RunTimeError.h"
#include "print/Printers.h"

namespace quillform::print {

namespace {

[[noreturn]] void Refuse() {
    throw RunTimeError(ErrorNumber::PrinterInformation,
                       "This program was built without the system's print service (CUPS); write a PDF file and print "
                       "that.");
}

}  // namespace

std::vector<Printer> ListPrinters() { Refuse(); }
Printer FindPrinter(std::string_view) { Refuse(); }
int SendJob(const Printer&, const std::filesystem::path&, const JobSettings&, const std::function<bool()>&) {
    Refuse();
}

}  // namespace quillform::print
