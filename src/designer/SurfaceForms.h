#pragma once

#include "designer/DesignerForms.h"

namespace quillform::designer {

/// Offers the forms that this folder has: data fields, texts, an item's options, the preview. What `services` names
/// outlives them.
void OfferSurfaceForms(const DesignerServices& services, DesignerForms& forms);

}  // namespace quillform::designer
