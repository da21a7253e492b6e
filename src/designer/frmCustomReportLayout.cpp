// What the main form consists of, and how it lies.

#include <QBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPainter>
#include <QStatusBar>

#include "designer/FormatBar.h"
#include "designer/RunPanel.h"
#include "designer/SurfaceFrame.h"
#include "designer/frmCustomReport.h"

namespace quillform::designer {

namespace {

struct MenuEntry {
    const char* caption;  // null for a separator
    const char* shortcut;
    const char* statusTip;
};

constexpr MenuEntry fileMenu[] = {
    {"&Open Layout", "Ctrl+O", "Opens a report layout"},
    {"&Save Layout", "Ctrl+S", "Saves the report layout"},
    {"Save &As...", "", "Saves the report layout under another name"},
    {"&New layout", "Ctrl+N", "Begins an empty report layout"},
    {"&Delete Layout", "Ctrl+D", "Deletes the report layout and its file"},
    {},
    {"Process &Report", "Ctrl+R", "Runs the report"},
    {"&Printer Setup", "Ctrl+P", "Chooses the printer"},
    {},
    {"E&xit", "Ctrl+X", "Leaves the designer"},
};
constexpr MenuEntry editMenu[] = {
    {"&Report Options", "", "Sets what the report does and where it goes"},
    {"Record &Query", "", "Chooses the records of the report"},
    {"&Font", "", "Changes the font of the selected item"},
};
constexpr MenuEntry insertMenu[] = {
    {"&Data Fields", "", "Inserts and removes fields of the database, page number, date and time"},
    {"&Text Fields", "", "Inserts, changes and removes texts"},
};

/// A text that ends in dots where it has no room, and never widens the form.
class CutLabel : public QLabel {
public:
    CutLabel() {
        setTextFormat(Qt::PlainText);
        setMinimumWidth(1);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        const QRect room = contentsRect().adjusted(indent(), 0, 0, 0);
        const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, room.width());
        QPainter(this).drawText(room, Qt::AlignVCenter | Qt::TextSingleLine, shown);
    }
};

}  // namespace

QAction* frmCustomReport::MakeEntry(QMenu& menu, const char* array, int index, const char* caption,
                                    const char* shortcut, const char* statusTip) {
    if (!caption) return menu.addSeparator();
    QAction* const entry = menu.addAction(QString::fromLatin1(caption));
    entry->setObjectName(QStringLiteral("%1_%2").arg(QString::fromLatin1(array)).arg(index));
    entry->setShortcut(QKeySequence(QString::fromLatin1(shortcut)));
    entry->setStatusTip(QString::fromLatin1(statusTip));
    return entry;
}

void frmCustomReport::MakeMenus() {
    const auto fill = [this](const char* caption, const char* array, const auto& texts, auto& entries, auto click) {
        QMenu& menu = *menuBar()->addMenu(QString::fromLatin1(caption));
        for (int i = 0; i < static_cast<int>(entries.size()); ++i) {
            const MenuEntry& text = texts[i];
            QAction* const entry = MakeEntry(menu, array, i, text.caption, text.shortcut, text.statusTip);
            connect(entry, &QAction::triggered, this, [this, click, i] { (this->*click)(i); });
            entries[static_cast<std::size_t>(i)] = entry;
        }
    };
    fill("&File", "File", fileMenu, File_, &frmCustomReport::File_Click);
    fill("&Edit", "Edt", editMenu, Edt_, &frmCustomReport::Edt_Click);
    fill("&Insert", "Ins", insertMenu, Ins_, &frmCustomReport::Ins_Click);
}

void frmCustomReport::DisableMissing() {
    const std::pair<QAction*, const DesignerForms::Form*> needed[] = {
        {Edt_[0], &forms_.reportOptions},
        {Edt_[1], &forms_.recordQuery},
        {Ins_[0], &forms_.dataFields},
        {Ins_[1], &forms_.textFields},
    };
    for (const auto& [entry, form] : needed) entry->setEnabled(static_cast<bool>(*form));
}

void frmCustomReport::MakeParts() {
    auto* const middle = new QWidget;
    auto* const rows = new QVBoxLayout(middle);
    rows->setContentsMargins(0, 0, 0, 4);
    rows->setSpacing(0);
    bar_ = new FormatBar;
    frame_ = new SurfaceFrame(surface_, fonts_);
    rows->addWidget(bar_);
    rows->addWidget(frame_, 1);
    setCentralWidget(middle);
    Picture1_ = new RunPanel(*this);
    MakeStatusLine();

    connect(bar_, &FormatBar::ColorPic_Click, this, &frmCustomReport::ColorPic_Click);
    connect(bar_, &FormatBar::Toolbar2_ButtonClick, this, &frmCustomReport::Toolbar2_ButtonClick);
    connect(bar_, &FormatBar::Toolbar3_ButtonClick, this, &frmCustomReport::Toolbar3_ButtonClick);
    connect(bar_, &FormatBar::Toolbar4_ButtonClick, this, &frmCustomReport::Toolbar4_ButtonClick);
    connect(Picture1_, &RunPanel::CanRptCmd_Click, this, &frmCustomReport::CanRptCmd_Click);
    connect(&frame_->View(), &SurfaceView::Selected, this, &frmCustomReport::ShowSelection);
    connect(&frame_->View(), &SurfaceView::OptionsWanted, this, [this] { ShowForm(forms_.fieldOptions); });
    connect(&frame_->View(), &SurfaceView::Pointed, this, &frmCustomReport::ShowPointed);
}

void frmCustomReport::MakeStatusLine() {
    itemText_ = new CutLabel;
    itemText_->setObjectName(QStringLiteral("StatusItem"));
    itemText_->setIndent(4);
    changesText_ = new QLabel;
    changesText_->setObjectName(QStringLiteral("StatusChanges"));
    placeText_ = new QLabel;
    placeText_->setObjectName(QStringLiteral("StatusPlace"));
    statusBar()->addWidget(itemText_, 1);
    statusBar()->addPermanentWidget(changesText_);
    statusBar()->addPermanentWidget(placeText_);
}

}  // namespace quillform::designer
