#include "dialogs/frmMeasureBoxes.h"

#include <QFormLayout>
#include <algorithm>

#include "support/frmText.h"

namespace quillform::dialogs {

MeasureBoxes AddMeasureBoxes(QFormLayout& layout) {
    MeasureBoxes boxes{};
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        boxes[i] = new QLineEdit;
        boxes[i]->setObjectName(QStringLiteral("Custom_%1").arg(i));
        boxes[i]->setMaxLength(longestMeasure);
        const QString caption = ToQt(labelMeasures[i].caption);
        boxes[i]->setAccessibleName(caption);
        layout.addRow(caption, boxes[i]);
    }
    return boxes;
}

void ShowWhole(QLineEdit& box, std::string_view text, int limit) {
    const QString shown = ToQt(text);
    box.setMaxLength(std::max(limit, static_cast<int>(shown.size())));
    box.setText(shown);
    box.setCursorPosition(0);
}

}  // namespace quillform::dialogs
