#pragma once

#include <QAbstractScrollArea>
#include <memory>
#include <string>
#include <vector>

#include "designer/ScreenFonts.h"
#include "richtext/PageFlow.h"

class QTimer;

namespace quillform::designer {

/// Shows a rich text document as its pages, one below the other, as wide as there is room. Pages are laid out while the
/// window is idle, so that the first one is seen at once, however long the document is.
class PreviewPages final : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit PreviewPages(QWidget* parent = nullptr);

    void Show(richtext::Document document);
    /// The document without its looks.
    std::string Text() const;

    /// So far; IsLaidOut tells whether that is all.
    int PageCount() const { return static_cast<int>(pages_.size()); }
    bool IsLaidOut() const { return !flow_; }
    /// Number of the page in the middle of the view, from 1; 0 without pages.
    int CurrentPage() const;

Q_SIGNALS:
    /// Another page is in view, or there are more.
    void PagesChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    struct PlacedPage {
        richtext::SheetPage sheet;
        double top = 0;  // twips from the upper edge of the first page, with the space between pages
    };

    void LayOutMore();
    void PlacePages();
    void PaintPage(QPainter& painter, const PlacedPage& page);
    double WidestPage() const;
    double TotalHeight() const;

    ScreenFonts fonts_;
    richtext::Document document_;
    std::unique_ptr<richtext::PageFlow> flow_;  // while pages are missing
    std::vector<richtext::PlacedFont> pageFonts_;
    std::vector<PlacedPage> pages_;
    double pixelsPerTwip_ = 1;
    QTimer* idle_;  // owned by the widget
};

}  // namespace quillform::designer
