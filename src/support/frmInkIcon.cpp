#include "support/frmInkIcon.h"

#include <QFile>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace quillform {

namespace {

constexpr int sizes[] = {24, 36, 48, 72, 96};  // ordinary to fourfold scale
constexpr int halfBright = 128;

QPixmap Drawn(QSvgRenderer& renderer, int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    return pixmap;
}

}  // namespace

QIcon InkIcon(const QString& file, const QPalette& palette) {
    const QColor ink = palette.color(QPalette::ButtonText);
    if (ink.lightness() < halfBright) return QIcon(file);
    QFile svg(file);
    if (!svg.open(QIODevice::ReadOnly)) return {};
    QByteArray drawing = svg.readAll();
    drawing.replace("#33414f", ink.name().toLatin1()).replace("#1464c8", "#6db3ff");
    QSvgRenderer renderer(drawing);
    QIcon icon;
    for (const int size : sizes) icon.addPixmap(Drawn(renderer, size));
    return icon;
}

}  // namespace quillform
