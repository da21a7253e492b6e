#pragma once

#include <QPushButton>

namespace quillform {

/// A button under its given name. Enter presses it while it has the focus, whatever button is its form's default;
/// without the focus only where its form makes it the default.
QPushButton* NewButton(const char* name, const char* caption);

}  // namespace quillform
