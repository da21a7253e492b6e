#include <QBoxLayout>
#include <QButtonGroup>
#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QTabWidget>

#include "dialogs/PaperSizes.h"
#include "dialogs/frmReportOptions.h"
#include "support/TwipScale.h"
#include "support/frmControls.h"
#include "support/frmKeyFilters.h"
#include "support/frmScrollPage.h"
#include "support/frmSizeForm.h"
#include "support/frmText.h"

namespace quillform::dialogs {

namespace {

constexpr double numberWidth = 900;  // twips
constexpr double measureWidth = 1200;
constexpr double pathWidth = 6000;

QString Indexed(const char* array, int index) { return QStringLiteral("%1_%2").arg(QLatin1String(array)).arg(index); }

/// An option button of the group, whose name is that of the control array.
QRadioButton* NewOption(QButtonGroup& group, int index, std::string_view caption) {
    auto* const button = new QRadioButton(ToQt(caption));
    button->setObjectName(group.objectName() + QStringLiteral("_%1").arg(index));
    group.addButton(button, index);
    return button;
}

QLineEdit* NewNumberBox(const QString& name) {
    auto* const box = new QLineEdit;
    box->setObjectName(name);
    box->setMaximumWidth(TwipScale::ToPixels(numberWidth));
    return box;
}

QLabel* NewNote(const char* text) {
    auto* const note = new QLabel(QString::fromLatin1(text));
    note->setWordWrap(true);
    note->setTextFormat(Qt::PlainText);
    return note;
}

}  // namespace

void frmReportOptions::MakeParts() {
    const auto newGroup = [this](const char* name) {
        auto* const group = new QButtonGroup(this);
        group->setObjectName(QString::fromLatin1(name));
        return group;
    };
    RptOpt_ = newGroup("RptOpt");
    optJoin_ = newGroup("optJoin");
    optPaperSize_ = newGroup("optPaperSize");
    chkDisplayOption_ = new QCheckBox(
        QStringLiteral("When displaying to screen use 'Courier New' font.  If you select this option you will loose "
                       "your font"));
    chkDisplayOption_->setObjectName(QStringLiteral("chkDisplayOption"));
    lstLabels_ = new QListWidget;
    lstLabels_->setObjectName(QStringLiteral("lstLabels"));
    lstLabels_->setAccessibleName(QStringLiteral("Label styles"));
    lstLabels_->setUniformItemSizes(true);
    hint_ = NewNote("");
    hint_->setObjectName(QStringLiteral("hint"));
    hint_->setMinimumHeight(2 * hint_->fontMetrics().lineSpacing());  // so that nothing moves when it appears
    cmdLabels_ = NewButton("cmdLabels", "Labels");
    cmdLabels_->setToolTip(QStringLiteral("Adds, changes and deletes label styles"));
    cmdBrowse_ = NewButton("cmdBrowse", "Browse");
    cmdBrowse_->setToolTip(QStringLiteral("Looks for the report's database, #1. on the tab \"Database\""));
    SaveCmd_ = NewButton("SaveCmd", "Save");
    SaveCmd_->setDefault(true);
    XitCmd_ = NewButton("XitCmd", "Exit");
}

QWidget* frmReportOptions::OutputTypeTab() {
    auto* const page = new QWidget;
    auto* const rows = new QVBoxLayout(page);
    for (std::size_t i = 0; i < outputCaptions.size(); ++i)
        rows->addWidget(NewOption(*RptOpt_, static_cast<int>(i), outputCaptions[i]));
    rows->addSpacing(TwipScale::ToPixels(numberWidth / 6));
    rows->addWidget(chkDisplayOption_);
    rows->addStretch(1);
    return page;
}

QWidget* frmReportOptions::GroupFrame(std::size_t group) {
    const GroupCaptions& captions = groupCaptions[group];
    const int index = static_cast<int>(group);
    const QString frameCaption = ToQt(captions.frame);
    auto* const frame = new QGroupBox(frameCaption);
    auto* const rows = new QFormLayout(frame);
    Chk_[group] = new QCheckBox(ToQt(captions.pageBreak));
    Chk_[group]->setObjectName(Indexed("Chk", index));
    Chk_[group]->setAccessibleName(frameCaption + ToQt(captions.pageBreak));
    rows->addRow(Chk_[group]);
    NumSpc_[group] = NewNumberBox(Indexed("NumSpc", index));
    FilterNumberKeys(*NumSpc_[group]);
    NumSpc_[group]->installEventFilter(this);  // sees keys before the filter, which drops Enter
    CharChange_[group] = NewNumberBox(Indexed("CharChange", index));
    for (const auto& [box, caption] :
         {std::pair(NumSpc_[group], captions.spaces), std::pair(CharChange_[group], captions.charChange)}) {
        box->setAccessibleName(frameCaption + u' ' + ToQt(caption).trimmed());
        rows->addRow(ToQt(caption), box);
    }
    return frame;
}

QWidget* frmReportOptions::GroupingTab() {
    auto* const page = new QWidget;
    auto* const rows = new QVBoxLayout(page);
    for (std::size_t group = 0; group < groupCaptions.size(); ++group) rows->addWidget(GroupFrame(group));
    auto* const joins = new QGroupBox(QStringLiteral("Include records if there is data.."));
    auto* const options = new QVBoxLayout(joins);
    for (std::size_t i = 0; i < joinCaptions.size(); ++i)
        options->addWidget(NewOption(*optJoin_, static_cast<int>(i), joinCaptions[i]));
    rows->addWidget(joins);
    rows->addStretch(1);
    return page;
}

QWidget* frmReportOptions::DatabaseTab() {
    auto* const page = new QWidget;
    auto* const rows = new QFormLayout(page);
    for (std::size_t i = 0; i < databaseBoxes; ++i) {
        const int number = static_cast<int>(i) + 1;
        auto* const label = new QLabel(QStringLiteral("#%1.").arg(number));
        label->setObjectName(QStringLiteral("Label%1").arg(number));
        Database_[i] = new QLineEdit;
        Database_[i]->setObjectName(Indexed("Database", number - 1));
        Database_[i]->setAccessibleName(QStringLiteral("Database #%1.").arg(number));
        Database_[i]->setMinimumWidth(TwipScale::ToPixels(pathWidth));
        label->setBuddy(Database_[i]);
        rows->addRow(label, Database_[i]);
    }
    rows->addRow(NewNote("#1. is the database that the report reads."));
    return page;
}

QWidget* frmReportOptions::PaperSizeTab() {
    auto* const page = new QWidget;
    auto* const columns = new QHBoxLayout(page);
    constexpr std::size_t half = (paperSizes.size() + 1) / 2;
    QBoxLayout* column = nullptr;
    for (std::size_t i = 0; i < paperSizes.size(); ++i) {
        if (i % half == 0) columns->addLayout(column = new QVBoxLayout, 1);
        column->addWidget(NewOption(*optPaperSize_, paperSizes[i].number, paperSizes[i].optionText));
        if ((i + 1) % half == 0) column->addStretch(1);
    }
    return page;
}

QWidget* frmReportOptions::LabelTypeTab() {
    auto* const page = new QWidget;
    auto* const columns = new QHBoxLayout(page);
    columns->addWidget(lstLabels_, 1);
    auto* const boxes = new QFormLayout;
    columns->addLayout(boxes);
    Custom_ = AddMeasureBoxes(*boxes);
    for (QLineEdit* const box : Custom_) box->setFixedWidth(TwipScale::ToPixels(measureWidth));
    return page;
}

QWidget* frmReportOptions::MakePicture1() {
    auto* const panel = new QWidget;
    panel->setObjectName(QStringLiteral("Picture1"));
    auto* const row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(cmdLabels_);
    row->addWidget(cmdBrowse_);
    row->addWidget(hint_, 1);
    row->addWidget(SaveCmd_);
    row->addWidget(XitCmd_);
    return panel;
}

void frmReportOptions::LayOut() {
    SSTab1_ = new QTabWidget;
    SSTab1_->setObjectName(QStringLiteral("SSTab1"));
    const auto addTab = [this](QWidget* page, const QString& caption) {
        SSTab1_->addTab(new frmScrollPage(page), caption);
    };
    addTab(OutputTypeTab(), QStringLiteral("Output Type"));
    addTab(GroupingTab(), ToQt(groupingTab));
    addTab(DatabaseTab(), QStringLiteral("Database"));
    addTab(PaperSizeTab(), QStringLiteral("Paper Size"));
    addTab(LabelTypeTab(), ToQt(labelTab));
    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(SSTab1_, 1);
    rows->addWidget(MakePicture1());
    setWindowTitle(QStringLiteral("Custom Report Options"));
}

}  // namespace quillform::dialogs
