#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "designer/DesignSurface.h"
#include "model/DataAccess.h"
#include "model/UserInterface.h"
#include "output/OutputRooms.h"
#include "platform/Clock.h"
#include "print/Printers.h"

class QWidget;

namespace quillform::designer {

/// The program's printer, which keeps what is set from one designer to the next.
struct PrinterSetup {
    std::optional<PrinterChoice> printer;  ///< where printer reports go; empty: into a PDF file
    bool isLandscape = false;              ///< as the orientation buttons were last pressed
};

/// What the designer works with. All outlive it.
struct DesignerServices {
    Layout& layout;
    UserInterface& user;
    DBEngine& engine;
    const Clock& clock;
    PrinterSetup& printer;
    std::function<std::vector<print::Printer>()> listPrinters = print::ListPrinters;
};

/// The forms that the designer opens and doesn't know. Each is shown over `owner` and comes back when it is closed. A
/// form that isn't there disables its command.
struct DesignerForms {
    using Form = std::function<void(QWidget& owner, DesignSurface& surface)>;

    Form reportOptions;  ///< frmReportOptions
    Form recordQuery;    ///< frmReportQuery
    Form dataFields;     ///< frmDataFields
    Form textFields;     ///< frmTextFields
    Form fieldOptions;   ///< frmFieldOptions, for the item at `intOptionItem`

    /// Shows the file of a screen report; without it the user is told where the file is.
    std::function<void(QWidget& owner, const std::filesystem::path& file)> preview;
    /// CheckDatabaseforReportData: tells of a report database that is gone, and leads through the configuration of one
    /// that has no catalog.
    std::function<void()> checkDatabase;
    /// Shows the warnings that the user interface has collected, if it collects them.
    std::function<void()> showWarnings;
};

}  // namespace quillform::designer
