#pragma once

#include <QIcon>
#include <QPalette>
#include <QString>

namespace quillform {

/// The icon of an SVG file whose lines are drawn in the ink #33414f, with #1464c8 to stand out. On a dark desktop, told
/// by `palette`, the ink becomes the colour of the buttons' texts; such icons are made anew when the palette changes.
QIcon InkIcon(const QString& file, const QPalette& palette);

}  // namespace quillform
