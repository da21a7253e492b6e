#include "designer/SurfaceForms.h"

#include "designer/PrintText.h"
#include "designer/frmDataFields.h"
#include "designer/frmFieldOptions.h"
#include "designer/frmPrintWindow.h"
#include "designer/frmTextFields.h"

namespace quillform::designer {

void OfferSurfaceForms(const DesignerServices& services, DesignerForms& forms) {
    forms.dataFields = [services](QWidget& owner, DesignSurface& surface) {
        frmDataFields(surface, services, &owner).exec();
    };
    forms.textFields = [services](QWidget& owner, DesignSurface& surface) {
        frmTextFields(surface, services.user, &owner).exec();
    };
    forms.fieldOptions = [](QWidget& owner, DesignSurface& surface) {
        frmFieldOptions(surface.Report(), &owner).exec();
    };
    forms.preview = [services](QWidget& owner, const std::filesystem::path& file) {
        const auto print = [&services](const std::string& text) { PrintText(text, services); };
        frmPrintWindow(file, print, services.user, &owner).exec();
    };
}

}  // namespace quillform::designer
