#include "dialogs/frmSheetPicture.h"

#include <QPainter>
#include <algorithm>
#include <utility>

#include "support/TwipScale.h"
#include "support/frmText.h"

namespace quillform::dialogs {

namespace {

// Paper is white and its print dark under any colours of the desktop.
constexpr QRgb paperEdge = 0xff808080;
constexpr QRgb shadow = 0x40000000;
constexpr QRgb labelEdge = 0xff3060a0;
constexpr QRgb labelFill = 0xffeaf1fb;
constexpr QRgb labelNumber = 0xff6080b0;
constexpr QRgb wrongEdge = 0xffc00020;
constexpr QRgb wrongFill = 0xffffe4e4;

constexpr double shadowWidth = 45;            // twips
constexpr double roundness = 0.06;            // inches
constexpr double leastHint[] = {3600, 4600};  // twips
/// How much of labels that hang over the sheet's edge is shown, of its width and height.
constexpr double overhang = 0.15;
constexpr double hairline = 0.001;  // of the paper

/// Inches of the sheet on pixels of the picture.
struct Scale {
    double perInch;
    QPointF corner;

    QRectF Of(double left, double top, double width, double height) const {
        return {corner.x() + left * perInch, corner.y() + top * perInch, width * perInch, height * perInch};
    }
};

/// How much room a direction needs, of the paper's own; labels that hang over its edge get some.
double Stretched(double paper, double labelsEnd) {
    return paper * (labelsEnd > paper * (1 + hairline) ? 1 + overhang : 1);
}

Scale Fitting(const SheetPlan& plan, QSizeF room) {
    double right = 0;
    double bottom = 0;
    for (const SheetPlan::Label& label : plan.labels) {
        right = std::max(right, label.left + plan.labelWidth);
        bottom = std::max(bottom, label.top + plan.labelHeight);
    }
    const double width = Stretched(plan.paperWidth, right);
    const double height = Stretched(plan.paperHeight, bottom);
    const double edge = TwipScale::ToLogical(shadowWidth);
    const double perInch = std::max(std::min((room.width() - edge) / width, (room.height() - edge) / height), 0.0);
    return {perInch, {std::max((room.width() - edge - width * perInch) / 2, 0.0), 0}};
}

/// The labels' numbers get smaller with the labels, as long as they can be read.
bool FitNumbers(QPainter& painter, QSizeF label, std::size_t last) {
    QFont font = painter.font();
    const double ordinary = QFontMetricsF(font).height();
    constexpr double leastHeight = 9;
    const double height = std::min(ordinary, label.height());
    if (height < leastHeight) return false;
    font.setPointSizeF(font.pointSizeF() * height / ordinary);
    painter.setFont(font);
    return painter.fontMetrics().horizontalAdvance(QString::number(last)) <= label.width();
}

}  // namespace

frmSheetPicture::frmSheetPicture(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("sheetPicture"));
    setAccessibleName(QStringLiteral("The sheet"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void frmSheetPicture::Show(SheetPlan plan) {
    plan_ = std::move(plan);
    setAccessibleDescription(ToQt(plan_.sentence));
    update();
}

QSize frmSheetPicture::sizeHint() const {
    return {TwipScale::ToPixels(leastHint[0]), TwipScale::ToPixels(leastHint[1])};
}

void frmSheetPicture::paintEvent(QPaintEvent*) {
    if (plan_.paperWidth <= 0 || plan_.paperHeight <= 0) return;
    const Scale scale = Fitting(plan_, size());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF sheet = scale.Of(0, 0, plan_.paperWidth, plan_.paperHeight);
    const double fall = TwipScale::ToLogical(shadowWidth);
    painter.fillRect(sheet.translated(fall, fall), QColor::fromRgba(shadow));
    painter.setPen(QColor(paperEdge));
    painter.setBrush(Qt::white);
    painter.drawRect(sheet.adjusted(0.5, 0.5, 0, 0));

    const QSizeF size(plan_.labelWidth * scale.perInch, plan_.labelHeight * scale.perInch);
    const bool hasNumbers = FitNumbers(painter, size, plan_.labels.size());
    int number = 0;
    for (const SheetPlan::Label& label : plan_.labels) {
        const QRectF place = scale.Of(label.left, label.top, plan_.labelWidth, plan_.labelHeight);
        painter.setPen(QColor(label.isOnSheet ? labelEdge : wrongEdge));
        painter.setBrush(QColor(label.isOnSheet ? labelFill : wrongFill));
        painter.drawRoundedRect(place, roundness * scale.perInch, roundness * scale.perInch);
        painter.setPen(QColor(label.isOnSheet ? labelNumber : wrongEdge));
        if (hasNumbers) painter.drawText(place, Qt::AlignCenter, QString::number(++number));
    }
}

}  // namespace quillform::dialogs
