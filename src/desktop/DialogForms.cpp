#include "desktop/DialogForms.h"

#include <QWidget>

#include "dialogs/frmLabelMaintenance.h"
#include "dialogs/frmReportOptions.h"
#include "dialogs/frmReportQuery.h"
#include "engine/ReportRun.h"

namespace quillform {

namespace {

/// The styles are kept in the report database.
void ShowStyles(const designer::DesignerServices& services, QWidget& owner) {
    const std::optional<std::string> database = FindReportDatabase(services.layout, services.user);
    dialogs::ShowLabelStyles(database.value_or(services.layout.settings.strDatabase[1]), services.user, services.engine,
                             &owner);
}

void ShowQuery(const designer::DesignerServices& services, QWidget& owner) {
    bool isAtEnd = false;
    {
        dialogs::frmReportQuery form(services.layout, services.user, services.engine, services.clock, &owner);
        form.endProgram = [&isAtEnd] { isAtEnd = true; };
        form.exec();
    }
    if (isAtEnd) owner.close();  // the last form of the program
}

}  // namespace

void OfferDialogForms(const designer::DesignerServices& services, designer::DesignerForms& forms) {
    forms.reportOptions = [services](QWidget& owner, designer::DesignSurface&) {
        const auto labelStyles = [&services](QWidget& options) { ShowStyles(services, options); };
        dialogs::frmReportOptions(services.layout, services.user, services.engine, labelStyles, &owner).exec();
    };
    forms.recordQuery = [services](QWidget& owner, designer::DesignSurface&) { ShowQuery(services, owner); };
}

}  // namespace quillform
