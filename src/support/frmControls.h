#pragma once

#include <QButtonGroup>
#include <QPushButton>

namespace quillform {

/// A button under its given name. Enter presses it while it has the focus, whatever button is its form's default;
/// without the focus only where its form makes it the default.
QPushButton* NewButton(const char* name, const char* caption);

/// Has Tab lead to the checked option of a group and pass over the others, which the arrow keys choose. To be called
/// whenever the program checked or enabled an option; after a click Qt does it.
void TabToChecked(const QButtonGroup& group);

}  // namespace quillform
