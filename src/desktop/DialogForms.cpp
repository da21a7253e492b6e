#include "desktop/DialogForms.h"

namespace quillform {

void OfferDialogForms(const designer::DesignerServices&, designer::DesignerForms&) {}

}  // namespace quillform
