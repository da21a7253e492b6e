#pragma once

#include <QWidget>

#include "dialogs/SheetPlan.h"

namespace quillform::dialogs {

/// A picture of a sheet with its labels, numbered as records fill them; those that don't fit on the sheet are red.
class frmSheetPicture final : public QWidget {
public:
    explicit frmSheetPicture(QWidget* parent = nullptr);

    void Show(SheetPlan plan);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    SheetPlan plan_;
};

}  // namespace quillform::dialogs
