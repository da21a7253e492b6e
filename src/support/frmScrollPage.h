#pragma once

#include <QScrollArea>

namespace quillform {

/// What a form holds, or one tab of it, for screens that are too small for it: the rest is scrolled to then. Where
/// there is room it looks and measures as if the page stood there itself. Takes the page.
class frmScrollPage final : public QScrollArea {
public:
    explicit frmScrollPage(QWidget* page);

    QSize sizeHint() const override;
};

}  // namespace quillform
