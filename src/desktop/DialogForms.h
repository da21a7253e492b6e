#pragma once

#include "designer/DesignerForms.h"

namespace quillform {

/// Offers the designer the forms of the folder `dialogs`, which knows no designer: report options and the label styles
/// that they open, the query builder. What `services` names outlives them.
void OfferDialogForms(const designer::DesignerServices& services, designer::DesignerForms& forms);

}  // namespace quillform
