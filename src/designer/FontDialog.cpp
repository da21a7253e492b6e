#include "designer/FontDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleValidator>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>

#include "platform/Numbers.h"
#include "platform/Text.h"
#include "support/TwipScale.h"
#include "support/frmText.h"

namespace quillform::designer {

namespace {

constexpr double smallest = 1;  // points
constexpr double largest = 2160;
constexpr int sizes[] = {6, 7, 8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24};
constexpr std::string_view sampleText = "Aa Bb Cc Xx Yy Zz 0123";

}  // namespace

/// The sample text in the chosen font, drawn as the surface draws it.
class FontDialog::Sample : public QFrame {
public:
    explicit Sample(ScreenFonts& fonts) : fonts_(fonts) {
        setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
        setMinimumHeight(64);
        setAccessibleName(QStringLiteral("Sample"));
    }
    void Show(const FontSpec& font) {
        font_ = fonts_.Font(font);
        update();
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        QFrame::paintEvent(event);
        QPainter painter(this);
        painter.setClipRect(contentsRect());
        painter.fillRect(contentsRect(), Qt::white);
        painter.setPen(Qt::black);
        const double scale = 1 / TwipScale::twipsPerPixel;
        const double across = width() - fonts_.TextWidth(font_, sampleText) * scale;
        const double down = height() - fonts_.TextHeight(font_) * scale;
        fonts_.Draw(painter, font_, sampleText, {std::max(4.0, across / 2), down / 2}, scale);
    }

private:
    ScreenFonts& fonts_;
    FontId font_{};
};

FontDialog::FontDialog(ScreenFonts& fonts, const FontSpec& font, QWidget* parent)
    : QDialog(parent), given_(font), fonts_(fonts) {
    setObjectName(QStringLiteral("CM1"));
    setWindowTitle(QStringLiteral("Font"));
    family_ = new QListWidget;
    family_->setObjectName(QStringLiteral("FontName"));
    size_ = new QComboBox;
    size_->setObjectName(QStringLiteral("FontSize"));
    size_->setEditable(true);
    for (const int points : sizes) size_->addItem(QString::number(points));
    size_->setEditText(ToQt(TrimmedStr(font.size)));
    bold_ = new QCheckBox(QStringLiteral("&Bold"));
    bold_->setChecked(font.bold);
    italic_ = new QCheckBox(QStringLiteral("&Italic"));
    italic_->setChecked(font.italic);
    sample_ = new Sample(fonts);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);

    auto* const form = new QFormLayout(this);
    form->addRow(QStringLiteral("&Font:"), family_);
    form->addRow(QStringLiteral("&Size:"), size_);
    form->addRow(QString(), bold_);
    form->addRow(QString(), italic_);
    form->addRow(sample_);
    form->addRow(buttons);
    FillFamilies();
    connect(family_, &QListWidget::currentRowChanged, this, [this] { ShowSample(); });
    connect(family_, &QListWidget::itemActivated, this, &QDialog::accept);
    connect(size_, &QComboBox::currentTextChanged, this, [this, buttons] {
        const double points = Val(FromQt(size_->currentText()).substr(0, 8));
        buttons->button(QDialogButtonBox::Ok)->setEnabled(points >= smallest && points <= largest);
        ShowSample();
    });
    for (QCheckBox* style : {bold_, italic_}) connect(style, &QCheckBox::toggled, this, [this] { ShowSample(); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    ShowSample();
}

/// The item's own font stands in the list even where this machine has neither it nor a twin.
void FontDialog::FillFamilies() {
    bool isKnown = false;
    for (const std::string& name : fonts_.Families()) {
        family_->addItem(ToQt(name));
        if (!EqualCaseBlind(name, given_.name)) continue;
        isKnown = true;
        family_->setCurrentRow(family_->count() - 1);
    }
    if (isKnown || given_.name.empty()) return;
    family_->insertItem(0, ToQt(given_.name));
    family_->setCurrentRow(0);
}

/// Only a list that is laid out can be scrolled to its row.
void FontDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    family_->scrollToItem(family_->currentItem(), QAbstractItemView::PositionAtCenter);
}

FontSpec FontDialog::Chosen() const {
    FontSpec font = given_;
    if (family_->currentItem()) font.name = FromQt(family_->currentItem()->text());
    const double points = Val(FromQt(size_->currentText()).substr(0, 8));
    if (points >= smallest && points <= largest) font.size = points;
    font.bold = bold_->isChecked();
    font.italic = italic_->isChecked();
    return font;
}

void FontDialog::ShowSample() { sample_->Show(Chosen()); }

std::optional<FontSpec> FontDialog::Choose(ScreenFonts& fonts, const FontSpec& font, QWidget* parent) {
    FontDialog dialog(fonts, font, parent);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.Chosen();
}

}  // namespace quillform::designer
