#pragma once

#include <QWidget>
#include <array>

#include "designer/ItemFormatting.h"

class QToolButton;

namespace quillform::designer {

/// The row of swatches and toolbars along the form's top. Its signals come from the user alone, not from what is shown.
class FormatBar : public QWidget {
    Q_OBJECT

public:
    explicit FormatBar(QWidget* parent = nullptr);

    /// What a swatch sets: the background while that button of `Toolbar1` is down, else the text.
    ColorTarget Target() const;
    /// Shows how an item looks, without running the buttons' commands.
    void ShowFormat(const clssFields& item);
    void ShowOrientation(bool isLandscape);

Q_SIGNALS:
    void ColorPic_Click(int index);
    void Toolbar2_ButtonClick(quillform::designer::Alignment alignment);
    void Toolbar3_ButtonClick(quillform::designer::FontStyle style, bool isDown);
    void Toolbar4_ButtonClick(bool isLandscape);

protected:
    void changeEvent(QEvent* event) override;

private:
    void MakeSwatches();
    void MakeToolbars();
    void ShowInk();

    std::array<QToolButton*, 2> Toolbar1_{};  // background, foreground
    std::array<QToolButton*, 3> Toolbar2_{};  // left, centre, right
    std::array<QToolButton*, 3> Toolbar3_{};  // bold, italic, underline
    std::array<QToolButton*, 2> Toolbar4_{};  // landscape, portrait
};

}  // namespace quillform::designer
