#pragma once

#include <QDialog>
#include <functional>
#include <optional>
#include <vector>

#include "output/OutputRooms.h"
#include "print/Printers.h"

class QListWidget;

namespace quillform::designer {

using ListPrinters = std::function<std::vector<print::Printer>()>;

/// The printer setup: where "Print Report to Printer" goes, to one of the print service's printers or into a PDF file.
class PrinterDialog : public QDialog {
public:
    /// `chosen`: the printer at present, empty for a PDF file. Where `list` fails, the dialog says why and offers the
    /// file alone.
    PrinterDialog(const ListPrinters& list, const std::optional<PrinterChoice>& chosen, QWidget* parent);

    std::optional<PrinterChoice> Chosen() const;

private:
    void Fill(const std::vector<print::Printer>& printers, const std::optional<PrinterChoice>& chosen);

    QListWidget* printers_;
};

}  // namespace quillform::designer
