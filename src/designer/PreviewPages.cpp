#include "designer/PreviewPages.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <cmath>

#include "richtext/PlainText.h"
#include "support/TwipScale.h"

namespace quillform::designer {

namespace {

constexpr double pageGap = 240;       // twips above, below and between pages
constexpr double largestScale = 1.5;  // of the paper's own size
constexpr qint64 sliceLength = 15;    // ms of laying out between two looks at the keyboard
constexpr int scrollStep = 40;        // pixels

QColor ColorOf(Rgb rgb) { return {rgb.red, rgb.green, rgb.blue}; }

}  // namespace

PreviewPages::PreviewPages(QWidget* parent) : QAbstractScrollArea(parent), idle_(new QTimer(this)) {
    setAccessibleName(QStringLiteral("Report"));
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);  // so that the width doesn't change with the number of pages
    verticalScrollBar()->setSingleStep(scrollStep);
    horizontalScrollBar()->setSingleStep(scrollStep);
    connect(idle_, &QTimer::timeout, this, &PreviewPages::LayOutMore);
}

void PreviewPages::Show(richtext::Document document) {
    pages_.clear();
    document_ = std::move(document);
    flow_ = std::make_unique<richtext::PageFlow>(document_, fonts_);
    verticalScrollBar()->setValue(0);
    LayOutMore();
    idle_->start(0);
}

std::string PreviewPages::Text() const { return richtext::PlainText(document_); }

void PreviewPages::LayOutMore() {
    QElapsedTimer timer;
    timer.start();
    bool isDone = !flow_;
    while (!isDone && timer.elapsed() < sliceLength) {
        PlacedPage next;
        isDone = !flow_->Next(next.sheet);
        if (isDone) break;
        if (!pages_.empty()) next.top = pages_.back().top + pages_.back().sheet.geometry.height + pageGap;
        pages_.push_back(std::move(next));
    }
    if (flow_) pageFonts_ = flow_->Fonts();
    if (isDone) {
        flow_.reset();
        idle_->stop();
    }
    PlacePages();
}

double PreviewPages::WidestPage() const {
    int widest = 1;
    for (const PlacedPage& page : pages_) widest = std::max(widest, page.sheet.geometry.width);
    return widest;
}

double PreviewPages::TotalHeight() const {
    return pages_.empty() ? 0 : pages_.back().top + pages_.back().sheet.geometry.height + 2 * pageGap;
}

/// Fits the pages to the width of the view, and the scroll bar to the pages.
void PreviewPages::PlacePages() {
    const double room = viewport()->width() / (WidestPage() + 2 * pageGap);
    const double before = pixelsPerTwip_;
    pixelsPerTwip_ = std::min(room, TwipScale::ToLogical(largestScale));
    QScrollBar& bar = *verticalScrollBar();
    const int value = static_cast<int>(std::lround(bar.value() * pixelsPerTwip_ / before));
    bar.setPageStep(viewport()->height());
    bar.setRange(0, std::max(0, static_cast<int>(std::ceil(TotalHeight() * pixelsPerTwip_)) - viewport()->height()));
    bar.setValue(value);
    horizontalScrollBar()->setRange(0, 0);
    viewport()->update();
    Q_EMIT PagesChanged();
}

int PreviewPages::CurrentPage() const {
    const double middle = (verticalScrollBar()->value() + viewport()->height() / 2.0) / pixelsPerTwip_ - pageGap;
    const auto behind = std::upper_bound(pages_.begin(), pages_.end(), middle,
                                         [](double place, const PlacedPage& page) { return place < page.top; });
    return std::clamp(static_cast<int>(behind - pages_.begin()), std::min(1, PageCount()), PageCount());
}

void PreviewPages::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), QColor(128, 128, 128));
    const double from = verticalScrollBar()->value() / pixelsPerTwip_ - pageGap;
    const double to = from + viewport()->height() / pixelsPerTwip_;
    auto page = std::partition_point(pages_.begin(), pages_.end(), [from](const PlacedPage& placed) {
        return placed.top + placed.sheet.geometry.height < from;
    });
    for (; page != pages_.end() && page->top < to; ++page) {
        const double left = (viewport()->width() - page->sheet.geometry.width * pixelsPerTwip_) / 2;
        painter.save();
        painter.translate(std::floor(left), std::floor((page->top - from) * pixelsPerTwip_));
        PaintPage(painter, *page);
        painter.restore();
    }
}

void PreviewPages::PaintPage(QPainter& painter, const PlacedPage& page) {
    const double scale = pixelsPerTwip_;
    const richtext::Geometry& sheet = page.sheet.geometry;
    const QRectF paper(0, 0, std::round(sheet.width * scale), std::round(sheet.height * scale));
    painter.fillRect(paper.translated(2, 2), QColor(90, 90, 90));
    painter.fillRect(paper, Qt::white);
    painter.setClipRect(paper);
    for (const auto& box : page.sheet.boxes)
        painter.fillRect(QRectF(box.left * scale, box.top * scale, box.width * scale, box.height * scale),
                         ColorOf(box.colour));
    for (const auto& text : page.sheet.texts) {
        painter.setPen(ColorOf(text.colour));
        fonts_.Draw(painter, pageFonts_[text.font].id, page.sheet.CharactersOf(text),
                    QPointF(text.x * scale, text.y * scale), scale);
    }
}

void PreviewPages::resizeEvent(QResizeEvent*) { PlacePages(); }

void PreviewPages::scrollContentsBy(int, int) {
    viewport()->update();
    Q_EMIT PagesChanged();
}

void PreviewPages::keyPressEvent(QKeyEvent* event) {
    QScrollBar& bar = *verticalScrollBar();
    if (event->key() == Qt::Key_Home)
        bar.setValue(bar.minimum());
    else if (event->key() == Qt::Key_End)
        bar.setValue(bar.maximum());
    else
        QAbstractScrollArea::keyPressEvent(event);
}

}  // namespace quillform::designer
