#pragma once

#include <QLineEdit>
#include <array>
#include <string_view>

#include "dialogs/LabelMeasures.h"

class QFormLayout;

namespace quillform::dialogs {

using MeasureBoxes = std::array<QLineEdit*, labelMeasures.size()>;

/// Adds the boxes "Custom_0" to "Custom_7" with their captions; the layout's widget owns them.
MeasureBoxes AddMeasureBoxes(QFormLayout& layout);
/// Shows a text whole. Typing stops at the box's limit, but a longer text that is stored isn't cut, because saving
/// would then change a measure that nobody touched.
void ShowWhole(QLineEdit& box, std::string_view text, int limit);

}  // namespace quillform::dialogs
