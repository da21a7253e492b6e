#pragma once

#include <QStringList>
#include <optional>
#include <string>
#include <string_view>

#include "model/UserInterface.h"

class QWidget;

namespace quillform {

/// The filters of a file dialog as Qt writes them, "Text (*.RTF)", from the described pairs of text and pattern with
/// "|" between: "Text (*.RTF)|*.RTF|Any (*.*)|*.*". Where a pattern is missing, the one in the brackets of the text
/// serves; a part that is nothing but a pattern is its own text. Patterns find files of either case.
QStringList NameFilters(std::string_view filter);

// The chosen path, or nothing when the user cancelled.
std::optional<std::string> ShowSaveDialog(const FileDialog& dialog, QWidget* owner);
std::optional<std::string> ShowOpenDialog(const FileDialog& dialog, QWidget* owner);

}  // namespace quillform
