#include "dialogs/frmReportOptions.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTabWidget>
#include <algorithm>
#include <utility>

#include "dialogs/TellFailure.h"
#include "support/frmControls.h"
#include "support/frmKeyFilters.h"
#include "support/frmSizeForm.h"
#include "support/frmText.h"

namespace quillform::dialogs {

namespace {

constexpr int databaseTab = 2;
constexpr int labelTypeTab = 4;
constexpr int noneRow = 0;  // "(None)", above the label styles

std::optional<int> SelectedIn(const QButtonGroup& group) {
    const int id = group.checkedId();
    return id < 0 ? std::nullopt : std::optional(id);
}

/// False if there is no such button; then the selection stays.
bool Select(const QButtonGroup& group, const std::optional<int>& index) {
    QAbstractButton* const button = index ? group.button(*index) : nullptr;
    if (button != nullptr) button->setChecked(true);
    TabToChecked(group);
    return button != nullptr;
}

template <std::size_t count>
void ReadBoxes(const std::array<QLineEdit*, count>& boxes, std::array<std::string, count>& texts) {
    for (std::size_t i = 0; i < count; ++i) texts[i] = FromQt(boxes[i]->text());
}

template <std::size_t count>
void ShowBoxes(const std::array<QLineEdit*, count>& boxes, const std::array<std::string, count>& texts) {
    for (std::size_t i = 0; i < count; ++i) boxes[i]->setText(ToQt(texts[i]));
}

}  // namespace

frmReportOptions::frmReportOptions(Layout& layout, UserInterface& user, DBEngine& engine,
                                   std::function<void(QWidget& owner)> labelStyles, QWidget* parent)
    : QDialog(parent), layout_(layout), user_(user), labelStyles_(std::move(labelStyles)), labels_(layout, engine) {
    setObjectName(QStringLiteral("frmReportOptions"));
    MakeParts();
    LayOut();
    Form_Load();
    Connect();
}

void frmReportOptions::Connect() {
    for (std::size_t i = 0; i < Database_.size(); ++i)
        connect(Database_[i], &QLineEdit::textChanged, this, [this, i] { Database_Change(i); });
    for (QLineEdit* const box : Custom_) connect(box, &QLineEdit::textChanged, this, &frmReportOptions::ShowHint);
    connect(lstLabels_, &QListWidget::itemSelectionChanged, this, &frmReportOptions::ClickLabelsSoon);
    connect(lstLabels_, &QListWidget::itemPressed, this, &frmReportOptions::ClickLabelsSoon);
    connect(cmdBrowse_, &QPushButton::clicked, this, &frmReportOptions::cmdBrowse_Click);
    connect(cmdLabels_, &QPushButton::clicked, this, &frmReportOptions::cmdLabels_Click);
    connect(SaveCmd_, &QPushButton::clicked, this, &frmReportOptions::SaveCmd_Click);
    connect(XitCmd_, &QPushButton::clicked, this, &frmReportOptions::XitCmd_Click);
    // The tabs take these keys themselves only while the focus is within them.
    connect(new QShortcut(QKeySequence::NextChild, this), &QShortcut::activated, this, [this] { TurnTabs(1); });
    connect(new QShortcut(QKeySequence::PreviousChild, this), &QShortcut::activated, this, [this] { TurnTabs(-1); });
}

void frmReportOptions::TurnTabs(int steps) {
    const int count = SSTab1_->count();
    SSTab1_->setCurrentIndex((SSTab1_->currentIndex() + steps + count) % count);
}

void frmReportOptions::Form_Load() {
    resize(sizeHint());
    SizeForm(*this);
    connect(RptOpt_, &QButtonGroup::idToggled, this, [this](int Index, bool isSelected) {
        if (isSelected) RptOpt_Click(Index);
    });
    cmdLabels_->setEnabled(static_cast<bool>(labelStyles_));
    chkDisplayOption_->setEnabled(false);
    ShowControls(ShowSettings(layout_.settings));
    if (layout_.settings.boolLabels) OfferAllOutputs(false);
    ShowHint();
}

bool frmReportOptions::event(QEvent* event) {
    const bool isHandled = QDialog::event(event);
    if (event->type() == QEvent::WindowActivate) Form_Activate();
    return isHandled;
}

OptionControls frmReportOptions::Controls() const {
    OptionControls controls;
    controls.RptOpt = SelectedIn(*RptOpt_);
    controls.chkDisplayOption = chkDisplayOption_->isChecked();
    for (std::size_t i = 0; i < Chk_.size(); ++i) controls.Chk[i] = Chk_[i]->isChecked();
    ReadBoxes(NumSpc_, controls.NumSpc);
    ReadBoxes(CharChange_, controls.CharChange);
    controls.optJoin = SelectedIn(*optJoin_);
    ReadBoxes(Database_, controls.Database);
    controls.optPaperSize = SelectedIn(*optPaperSize_);
    ReadBoxes(Custom_, controls.Custom);
    return controls;
}

void frmReportOptions::ShowControls(const OptionControls& controls) {
    Select(*RptOpt_, controls.RptOpt);
    chkDisplayOption_->setChecked(controls.chkDisplayOption);  // behind the choice, which clears it
    for (std::size_t i = 0; i < Chk_.size(); ++i) Chk_[i]->setChecked(controls.Chk[i]);
    ShowBoxes(NumSpc_, controls.NumSpc);
    ShowBoxes(CharChange_, controls.CharChange);
    Select(*optJoin_, controls.optJoin);
    ShowBoxes(Database_, controls.Database);
    Select(*optPaperSize_, controls.optPaperSize);
    ShowMeasures(controls.Custom);
}

void frmReportOptions::ShowMeasures(const MeasureTexts& texts) {
    for (std::size_t i = 0; i < texts.size(); ++i) ShowWhole(*Custom_[i], texts[i], longestMeasure);
}

/// Labels leave out the outputs that can't hold them. One that is selected stays so.
void frmReportOptions::OfferAllOutputs(bool offered) {
    for (int i = labelOptionCount; i < static_cast<int>(outputCaptions.size()); ++i)
        RptOpt_->button(i)->setEnabled(offered);
    TabToChecked(*RptOpt_);
}

void frmReportOptions::RptOpt_Click(int Index) {
    chkDisplayOption_->setEnabled(Index == screenOption);
    if (Index != screenOption) chkDisplayOption_->setChecked(false);
}

void frmReportOptions::Database_Change(std::size_t) { FillLabelList(); }

/// The selected row, -1 without one. A list that has the keyboard has a current row even so.
int frmReportOptions::SelectedLabel() const {
    const QList<QListWidgetItem*> selected = lstLabels_->selectedItems();
    return selected.isEmpty() ? -1 : lstLabels_->row(selected.front());
}

/// Selects a row, or none for -1, as nobody's click.
void frmReportOptions::SelectLabel(int row) {
    const QSignalBlocker noClick(lstLabels_);
    lstLabels_->setCurrentRow(row);
}

void frmReportOptions::FillLabelList() {
    const int selected = SelectedLabel();
    const std::string description =
        selected > noneRow ? labels_.Descriptions()[static_cast<std::size_t>(selected - 1)] : std::string();
    if (!labels_.Read(FromQt(Database_[0]->text()))) return;
    const std::vector<std::string>& descriptions = labels_.Descriptions();
    QStringList rows(QStringLiteral("(None)"));
    rows.reserve(static_cast<qsizetype>(descriptions.size()) + 1);
    for (const std::string& text : descriptions) rows << ToQt(text);
    const QSignalBlocker noClick(lstLabels_);
    lstLabels_->clear();
    lstLabels_->addItems(rows);
    if (selected == noneRow) return SelectLabel(noneRow);
    const auto found = std::find(descriptions.begin(), descriptions.end(), description);
    if (selected > noneRow && found != descriptions.end())
        SelectLabel(1 + static_cast<int>(found - descriptions.begin()));
}

/// The list is let finish its own handling of a key or a press, which makes two signals of one click; and what is told
/// about a click may fill the list anew.
void frmReportOptions::ClickLabelsSoon() {
    if (std::exchange(isLabelClickDue_, true)) return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            isLabelClickDue_ = false;
            lstLabels_Click();
        },
        Qt::QueuedConnection);
}

void frmReportOptions::lstLabels_Click() {
    const int row = SelectedLabel();
    if (row < 0) return;
    if (row == noneRow) {
        ShowMeasures({});
        return OfferAllOutputs(true);
    }
    const std::string description = labels_.Descriptions()[static_cast<std::size_t>(row - 1)];
    std::optional<LabelStyle> style;
    if (!DoneOrTold(user_, [&] { style = labels_.Find(FromQt(Database_[0]->text()), description); }))
        return SelectLabel(-1);  // the boxes don't show it
    if (!style) return lstLabels_->setCurrentRow(noneRow);
    ShowMeasures(style->measures);
    OfferAllOutputs(false);
    if (!Select(*optPaperSize_, style->paper) && style->paper.value_or(0) != 0)
        user_.Message("The label style \"" + description + "\" is for the paper number " +
                      std::to_string(*style->paper) +
                      ", which isn't among the paper sizes.  The paper size stays as it was.");
}

void frmReportOptions::cmdBrowse_Click() {
    const auto chosen = user_.OpenDialog({.title = "Open",
                                          .filter = "*.MDB|Access Database",
                                          .fileName = "*.MDB",
                                          .defaultExtension = "MDB",
                                          .initialFolder = layout_.strAppPath});
    if (!chosen) return;
    // What was chosen is to be seen: the path, or the label styles there.
    if (SSTab1_->currentIndex() != labelTypeTab) SSTab1_->setCurrentIndex(databaseTab);
    labels_.Forget();
    Database_[0]->setText(ToQt(*chosen));
    FillLabelList();
}

void frmReportOptions::cmdLabels_Click() {
    const std::string& database = layout_.settings.strDatabase[1];
    if (FromQt(Database_[0]->text()) != database)
        user_.Message("Until Save, the label styles that you change are those of \"" + database + "\".");
    DoneOrTold(user_, [this] { labelStyles_(*this); });
    labels_.Forget();
    Form_Activate();  // here too: not every window system tells that the form is back
}

bool frmReportOptions::NumSpc_KeyDown(const QKeyEvent& key) {
    const auto step = FocusStepOf(key);
    return step && (*step == FocusStep::Next ? focusNextChild() : focusPreviousChild());
}

bool frmReportOptions::eventFilter(QObject* watched, QEvent* event) {
    const bool isNumSpc = std::find(NumSpc_.begin(), NumSpc_.end(), watched) != NumSpc_.end();
    if (isNumSpc && event->type() == QEvent::KeyPress && NumSpc_KeyDown(*static_cast<QKeyEvent*>(event))) return true;
    return QDialog::eventFilter(watched, event);
}

void frmReportOptions::ShowHint() { hint_->setText(ToQt(LabelHint(Controls(), layout_.settings))); }

/// Leads to a box on whatever tab it is.
void frmReportOptions::GoTo(const std::string& box) {
    auto* const found = findChild<QLineEdit*>(ToQt(box));
    for (int i = 0; i < SSTab1_->count(); ++i)
        if (SSTab1_->widget(i)->isAncestorOf(found)) SSTab1_->setCurrentIndex(i);
    found->setFocus();
    found->selectAll();
}

void frmReportOptions::SaveCmd_Click() {
    if (const auto refusal = StoreSettings(Controls(), layout_.settings)) {
        user_.Message(refusal->message);
        return GoTo(refusal->box);
    }
    accept();
}

}  // namespace quillform::dialogs
