#include "designer/FormatBar.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QEvent>
#include <QKeySequence>
#include <QPainter>
#include <QToolButton>
#include <string_view>
#include <vector>

#include "platform/Colours.h"
#include "support/TwipScale.h"
#include "support/frmInkIcon.h"

// Outside of any namespace, as Qt asks.
static void LoadPictures() { Q_INIT_RESOURCE(designer); }

namespace quillform::designer {

namespace {

constexpr double swatchTwips = 240;
constexpr double upperRow = 60;
constexpr double lowerRow = 360;
constexpr double firstSwatch = 120;
constexpr double barHeight = 660;
constexpr double barWidth = 9660;
constexpr int buttonPixels = 36;
constexpr int iconPixels = 24;
constexpr int buttonGap = 2;

constexpr const char* colorNames[16] = {"Black", "Dark blue", "Dark green", "Teal", "Dark red", "Purple",
                                        "Olive", "Silver",    "Grey",       "Blue", "Green",    "Cyan",
                                        "Red",   "Magenta",   "Yellow",     "White"};

/// Place of the swatch of a colour: 0 to 3 and 8 to 11 above, 4 to 7 and 12 to 15 below.
QRect SwatchPlace(int color) {
    const int column = color % 4 + (color >= 8 ? 4 : 0);
    const bool isLower = color / 4 % 2 == 1;
    const int size = TwipScale::ToPixels(swatchTwips);
    return {TwipScale::ToPixels(firstSwatch + column * swatchTwips), TwipScale::ToPixels(isLower ? lowerRow : upperRow),
            size, size};
}

/// A square of one colour.
class Swatch : public QAbstractButton {
public:
    Swatch(int color, QWidget* parent) : QAbstractButton(parent) {
        const Rgb rgb = QBColor(color);
        color_ = QColor(rgb.red, rgb.green, rgb.blue);
        setObjectName(QStringLiteral("ColorPic%1").arg(color));
        setAccessibleName(QString::fromLatin1(colorNames[color]));
        setToolTip(accessibleName());
        setFocusPolicy(Qt::TabFocus);  // a click leaves the keyboard with the surface
        setGeometry(SwatchPlace(color));
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), palette().window());
        const int inset = isDown() ? 2 : 1;
        const QRect square = rect().adjusted(inset, inset, -inset, -inset);
        painter.fillRect(square, isEnabled() ? color_ : palette().color(QPalette::Mid));
        const bool isMarked = hasFocus() || underMouse();
        painter.setPen(isMarked ? QPen(palette().highlight(), 2) : QPen(QColor(110, 110, 110), 1));
        painter.drawRect(QRectF(square).adjusted(0.5, 0.5, -0.5, -0.5));
    }
    void enterEvent(QEnterEvent*) override { update(); }
    void leaveEvent(QEvent*) override { update(); }

private:
    QColor color_;
};

struct ButtonText {
    const char* toolTip;
    const char* icon;
};

/// A toolbar at its place: checkable buttons side by side. In a group one button down releases the others.
template <std::size_t Count>
std::array<QToolButton*, Count> MakeToolbar(const char* name, double leftTwips, const ButtonText (&texts)[Count],
                                            bool isGroup, QWidget* parent) {
    auto* const toolbar = new QWidget(parent);
    toolbar->setObjectName(QString::fromLatin1(name));
    const int top = (TwipScale::ToPixels(barHeight) - buttonPixels) / 2;
    toolbar->setGeometry(TwipScale::ToPixels(leftTwips), top,
                         static_cast<int>(Count) * (buttonPixels + buttonGap) - buttonGap, buttonPixels);
    auto* const group = isGroup ? new QButtonGroup(toolbar) : nullptr;
    std::array<QToolButton*, Count> buttons{};
    for (std::size_t i = 0; i < Count; ++i) {
        auto* const button = new QToolButton(toolbar);
        button->setObjectName(QStringLiteral("%1_%2").arg(toolbar->objectName()).arg(i + 1));
        button->setCheckable(true);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setIcon(QIcon(QStringLiteral(":/designer/%1.svg").arg(QString::fromLatin1(texts[i].icon))));
        button->setIconSize({iconPixels, iconPixels});
        button->setToolTip(QString::fromLatin1(texts[i].toolTip));
        button->setAccessibleName(button->toolTip());
        button->setGeometry(static_cast<int>(i) * (buttonPixels + buttonGap), 0, buttonPixels, buttonPixels);
        if (group) group->addButton(button);
        buttons[i] = button;
    }
    return buttons;
}

}  // namespace

FormatBar::FormatBar(QWidget* parent) : QWidget(parent) {
    LoadPictures();
    setFixedHeight(TwipScale::ToPixels(barHeight) + 4);
    setMinimumWidth(TwipScale::ToPixels(barWidth));
    MakeSwatches();
    MakeToolbars();
}

void FormatBar::MakeSwatches() {
    std::vector<int> inReadingOrder;
    for (const int row : {0, 4})
        for (const int half : {0, 8})
            for (int i = 0; i < 4; ++i) inReadingOrder.push_back(row + half + i);
    for (const int color : inReadingOrder) {
        auto* const swatch = new Swatch(color, this);
        connect(swatch, &QAbstractButton::clicked, this, [this, color] { Q_EMIT ColorPic_Click(color); });
    }
}

void FormatBar::MakeToolbars() {
    Toolbar1_ = MakeToolbar("Toolbar1", 2160, {{"Background", "background"}, {"Foreground", "foreground"}}, true, this);
    const std::array<QToolButton*, 1> bold = MakeToolbar("Toolbar3_0", 3720, {{"Bold", "bold"}}, false, this);
    const std::array<QToolButton*, 1> italic = MakeToolbar("Toolbar3_1", 4320, {{"Italic", "italic"}}, false, this);
    const std::array<QToolButton*, 1> underline =
        MakeToolbar("Toolbar3_2", 4920, {{"Underline", "underline"}}, false, this);
    Toolbar3_ = {bold[0], italic[0], underline[0]};
    Toolbar2_ = MakeToolbar("Toolbar2", 5880,
                            {{"Left Justify", "left"}, {"Center", "center"}, {"Right Justify", "right"}}, true, this);
    Toolbar4_ = MakeToolbar("Toolbar4", 8040, {{"Landscape", "landscape"}, {"Portrait", "portrait"}}, true, this);

    // Bold, italic and underlined go by the keys that every office program has for them.
    constexpr QKeySequence::StandardKey keys[] = {QKeySequence::Bold, QKeySequence::Italic, QKeySequence::Underline};
    for (std::size_t i = 0; i < 3; ++i) {
        Toolbar3_[i]->setShortcut(QKeySequence(keys[i]));
        Toolbar3_[i]->setStatusTip(QStringLiteral("%1 (%2)").arg(
            Toolbar3_[i]->toolTip(), Toolbar3_[i]->shortcut().toString(QKeySequence::NativeText)));
    }
    ShowInk();

    constexpr Alignment alignments[] = {Alignment::Left, Alignment::Center, Alignment::Right};
    constexpr FontStyle styles[] = {FontStyle::Bold, FontStyle::Italic, FontStyle::Underline};
    for (std::size_t i = 0; i < 3; ++i) {
        connect(Toolbar2_[i], &QToolButton::clicked, this,
                [this, alignment = alignments[i]] { Q_EMIT Toolbar2_ButtonClick(alignment); });
        connect(Toolbar3_[i], &QToolButton::clicked, this,
                [this, style = styles[i]](bool isDown) { Q_EMIT Toolbar3_ButtonClick(style, isDown); });
    }
    for (std::size_t i = 0; i < 2; ++i)
        connect(Toolbar4_[i], &QToolButton::clicked, this, [this, i] { Q_EMIT Toolbar4_ButtonClick(i == 0); });
}

/// The icons that are lines alone have to stand out from the desktop's colours, light or dark.
void FormatBar::ShowInk() {
    constexpr const char* alignments[] = {"left", "center", "right"};
    constexpr const char* styles[] = {"bold", "italic", "underline"};
    const auto show = [this](QToolButton& button, const char* icon) {
        button.setIcon(InkIcon(QStringLiteral(":/designer/%1.svg").arg(QString::fromLatin1(icon)), palette()));
    };
    for (std::size_t i = 0; i < 3; ++i) {
        show(*Toolbar2_[i], alignments[i]);
        show(*Toolbar3_[i], styles[i]);
    }
}

void FormatBar::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && Toolbar4_[0] != nullptr) ShowInk();
}

ColorTarget FormatBar::Target() const {
    return Toolbar1_[0]->isChecked() ? ColorTarget::Background : ColorTarget::Foreground;
}

void FormatBar::ShowFormat(const clssFields& item) {
    const Alignment alignment = AlignmentOf(item.FontAllignment);
    Toolbar2_[alignment == Alignment::Left ? 0 : alignment == Alignment::Center ? 1 : 2]->setChecked(true);
    Toolbar3_[0]->setChecked(item.FontBold);
    Toolbar3_[1]->setChecked(item.FontItalic);
    Toolbar3_[2]->setChecked(item.FontUnderline);
}

void FormatBar::ShowOrientation(bool isLandscape) { Toolbar4_[isLandscape ? 0 : 1]->setChecked(true); }

}  // namespace quillform::designer
