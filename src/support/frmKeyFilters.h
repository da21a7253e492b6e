#pragma once

#include <QKeyEvent>
#include <QLineEdit>
#include <optional>

namespace quillform {

/// Trims the text of a text box and selects all of it; any other control is left alone.
void SelectAllText(QWidget* control);

/// Where a key leads from a box of an entry: Enter and the arrow down to the next control, the arrow up to the one
/// before. Empty for other keys, and with Shift, Ctrl or Alt held, which have their own use in boxes and lists.
enum class FocusStep { Next, Previous };
std::optional<FocusStep> FocusStepOf(const QKeyEvent& key);

// Filters over text boxes; each stays in force as long as its box lives. They see what is typed, by key or by an input
// method. A paste isn't typed, and shortcuts and keys that write nothing pass.

/// The box takes digits only, and selects its text when it gets the focus.
void FilterNumberKeys(QLineEdit& box);
/// Enter does nothing in the box, so that it doesn't press the form's default button.
void FilterEnterKey(QLineEdit& box);

}  // namespace quillform
