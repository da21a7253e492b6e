#include "desktop/DialogForms.h"

#include <QWidget>

#include "dialogs/frmReportQuery.h"

namespace quillform {

void OfferDialogForms(const designer::DesignerServices& services, designer::DesignerForms& forms) {
    forms.recordQuery = [services](QWidget& owner, designer::DesignSurface&) {
        bool isAtEnd = false;
        {
            dialogs::frmReportQuery form(services.layout, services.user, services.engine, services.clock, &owner);
            form.endProgram = [&isAtEnd] { isAtEnd = true; };
            form.exec();
        }
        if (isAtEnd) owner.close();  // the last form of the program
    };
}

}  // namespace quillform
