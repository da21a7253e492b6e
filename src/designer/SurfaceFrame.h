#pragma once

#include <QWidget>

#include "designer/SurfaceView.h"

class QScrollBar;

namespace quillform::designer {

/// The viewport with its two scroll bars. A larger frame shows the same part of the page in larger cells, a whole
/// number of pixels wide; 8 of them as designed, 5 at the least.
class SurfaceFrame : public QWidget {
public:
    SurfaceFrame(DesignSurface& surface, ScreenFonts& fonts, QWidget* parent = nullptr);

    SurfaceView& View() { return *view_; }
    /// Shows the surface as it is now.
    void Follow();
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// Of the whole frame around cells that are so many pixels wide.
    static QSize SizeFor(int cell);
    void PlaceParts();

    DesignSurface& surface_;
    SurfaceView* view_;
    QScrollBar* HScroll1_;
    QScrollBar* VScroll1_;
};

}  // namespace quillform::designer
