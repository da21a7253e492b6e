#pragma once

#include <QWidget>

#include "support/FormSize.h"

namespace quillform {

/// Puts a form where it belongs on its screen: as it is, in the middle, unless it wishes otherwise. Every form calls it
/// when it is loaded, after its size is settled. The form's base size is kept in its property "Tag".
void SizeForm(QWidget& form, const FormWish& wish = {});

}  // namespace quillform
