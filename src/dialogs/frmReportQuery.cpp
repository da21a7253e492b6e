#include "dialogs/frmReportQuery.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QTreeWidget>
#include <algorithm>
#include <memory>

#include "dialogs/TellFailure.h"
#include "dialogs/frmMeasureBoxes.h"
#include "engine/ReportRun.h"
#include "support/frmFieldTree.h"
#include "support/frmKeyFilters.h"
#include "support/frmText.h"

namespace quillform::dialogs {

namespace {

constexpr int keyRole = Qt::UserRole;
constexpr int longestField = 32767;  // no limit

QTreeWidgetItem* NewNode(const std::string& key, const std::string& text) {
    auto* const node = new QTreeWidgetItem({ToQt(text)});
    node->setData(0, keyRole, ToQt(key));
    node->setToolTip(0, node->text(0));  // the column may be too narrow for it
    return node;
}

void Choose(QComboBox& box, const std::string& text) { box.setCurrentIndex(box.findText(ToQt(text))); }

}  // namespace

frmReportQuery::frmReportQuery(Layout& layout, UserInterface& user, DBEngine& engine, const Clock& clock,
                               QWidget* parent)
    : QDialog(parent),
      endProgram([] { QApplication::closeAllWindows(); }),
      layout_(layout),
      user_(user),
      engine_(engine),
      builder_(layout.Queries),
      files_(user, clock, layout.strAppPath) {
    setObjectName(QStringLiteral("frmReportQuery"));
    MakeParts();
    LayOut();
    SetTabs();
    OnNodeClick(*SSTree1_, [this](QTreeWidgetItem& node) { SSTree1_Click(node); });
    connect(AddCmd_, &QPushButton::clicked, this, &frmReportQuery::AddCmd_Click);
    connect(EdtCmd_, &QPushButton::clicked, this, &frmReportQuery::EdtCmd_Click);
    connect(DelCmd_, &QPushButton::clicked, this, &frmReportQuery::DelCmd_Click);
    connect(ClrCmd_, &QPushButton::clicked, this, &frmReportQuery::ClrCmd_Click);
    connect(UpCmd_, &QPushButton::clicked, this, &frmReportQuery::UpCmd_Click);
    connect(DownCmd_, &QPushButton::clicked, this, &frmReportQuery::DownCmd_Click);
    connect(LFileCmd_, &QPushButton::clicked, this, &frmReportQuery::LFileCmd_Click);
    connect(SFileCmd_, &QPushButton::clicked, this, &frmReportQuery::SFileCmd_Click);
    connect(SaveCmd_, &QPushButton::clicked, this, &frmReportQuery::SaveCmd_Click);
    connect(XitCmd_, &QPushButton::clicked, this, &frmReportQuery::XitCmd_Click);
    connect(Formulas_, &QListWidget::itemDoubleClicked, this, &frmReportQuery::EdtCmd_Click);
    connect(Formulas_, &QListWidget::itemSelectionChanged, this, &frmReportQuery::ShowHint);
    connect(Field_, &QLineEdit::textChanged, this, &frmReportQuery::ShowHint);
    connect(Value_, &QLineEdit::textChanged, this, &frmReportQuery::ShowHint);
    for (QWidget* const part : findChildren<QWidget*>()) part->installEventFilter(this);
}

int frmReportQuery::exec() { return Form_Activate() ? QDialog::exec() : Rejected; }

bool frmReportQuery::Form_Activate() {
    std::unique_ptr<Database> database;
    try {
        database = OpenReportDatabase(layout_, engine_);
    } catch (const RunTimeError&) {
        user_.Message(
            "Cannot locate the database.  Select [Edit], [Report Options], and go to the [Database] folder.  Locate "
            "your Brindlemark database.");
        return false;
    }
    // One that opens and has no catalog isn't helped by looking for it.
    if (!DoneOrTold(user_, [&] { FillTree(*database); })) return false;
    FillFormulas();
    return true;
}

void frmReportQuery::FillTree(Database& database) {
    const std::vector<QueryTable> tables = ReadQueryFields(database);
    builder_.KnowFields(tables);
    QList<QTreeWidgetItem*> roots;
    for (const QueryTable& table : tables) {
        QList<QTreeWidgetItem*> rows;
        for (const QueryTable::Row& row : table.rows) rows << NewNode(row.Key(), row.text);
        roots << NewNode(table.name, table.name);
        roots.back()->addChildren(rows);
    }
    SSTree1_->clear();
    SSTree1_->addTopLevelItems(roots);
}

/// Nothing is selected then. The keyboard stands on the line `current`, or the one next to it, where the space bar
/// selects it.
void frmReportQuery::FillFormulas(int current, QueryBuilder::Blanks blanks) {
    const QIcon warning = style()->standardIcon(QStyle::SP_MessageBoxWarning);
    Formulas_->setUpdatesEnabled(false);
    Formulas_->clear();
    for (const std::string& text : builder_.Texts(blanks)) {
        auto* const item = new QListWidgetItem(ToQt(text), Formulas_);
        const QString hint = ToQt(builder_.LineHint(Formulas_->count()));
        if (hint.isEmpty()) continue;
        item->setIcon(warning);
        item->setToolTip(hint);
        item->setData(Qt::AccessibleDescriptionRole, hint);
    }
    Formulas_->setCurrentRow(std::min(current, Formulas_->count()) - 1, QItemSelectionModel::NoUpdate);
    Formulas_->setUpdatesEnabled(true);
    ShowHint();
}

/// Position of the selected line, 0 if none is. A list that has the keyboard has a current row even so.
int frmReportQuery::Selected() const {
    const QList<QListWidgetItem*> selected = Formulas_->selectedItems();
    return selected.isEmpty() ? 0 : Formulas_->row(selected.front()) + 1;
}

QueryEntry frmReportQuery::Entry() const {
    return {FromQt(Field_->text()), FromQt(Operation_->currentText()), FromQt(Value_->text()),
            FromQt(Join_->currentText())};
}

void frmReportQuery::ShowHint() {
    std::string hint = builder_.Hint(Entry());
    if (Selected() > 0) hint += std::string(hint.empty() ? "" : "\n") + "Add>> replaces the selected line.";
    hint_->setText(ToQt(hint));
}

void frmReportQuery::SSTree1_Click(QTreeWidgetItem& node) {
    if (node.childCount() > 0) node.setExpanded(!node.isExpanded());
    DoneOrTold(user_, [&] {
        const auto field = FindQueryField(layout_, engine_, FromQt(node.data(0, keyRole).toString()));
        if (!field) return;
        builder_.PickField(field->code);
        ShowWhole(*Field_, field->text, longestField);
        longestValue_ = field->longestValue;
        ShowWhole(*Value_, FromQt(Value_->text()), longestValue_);
        ShowHint();
    });
}

void frmReportQuery::AddCmd_Click() {
    const QueryEntry entry = Entry();
    if (const std::string_view refusal = RefusalOf(entry); !refusal.empty()) return user_.Message(refusal);
    const int selected = Selected();
    builder_.Store(entry, selected);
    FillFormulas(selected > 0 ? selected : builder_.Lines().Count());
}

void frmReportQuery::EdtCmd_Click() {
    const int selected = Selected();
    if (selected == 0) return user_.Message("You Must Select the Query From the list that you want to edit.");
    const QueryEntry entry = builder_.Edit(selected);
    longestValue_ = longestQueryValue;
    ShowWhole(*Field_, entry.field, longestField);
    ShowWhole(*Value_, entry.value, longestValue_);
    Choose(*Operation_, entry.operation);
    Choose(*Join_, entry.join);
    ShowHint();
}

void frmReportQuery::DelCmd_Click() {
    const int selected = Selected();
    if (selected == 0) return user_.Message("You Must Select the Query from the List that you want to delete.");
    builder_.Delete(selected);
    FillFormulas(selected);
}

void frmReportQuery::ClrCmd_Click() {
    Formulas_->clearSelection();
    Field_->clear();
    ShowWhole(*Value_, {}, longestValue_);
    Operation_->setCurrentIndex(0);
    Join_->setCurrentIndex(0);
}

void frmReportQuery::UpCmd_Click() {
    const int selected = Selected();
    if (builder_.MoveUp(selected)) FillFormulas(selected - 1);
}

void frmReportQuery::DownCmd_Click() {
    const int selected = Selected();
    if (builder_.MoveDown(selected)) FillFormulas(selected + 1);
}

void frmReportQuery::LFileCmd_Click() {
    switch (files_.Load(builder_.Lines())) {
        case StepEnd::Done:
            return FillFormulas(builder_.Lines().Count(), QueryBuilder::Blanks::Trimmed);
        case StepEnd::Left:
            return;
        case StepEnd::EndProgram:
            return EndProgram();
    }
}

void frmReportQuery::SFileCmd_Click() {
    if (files_.Save(builder_.Lines()) == StepEnd::EndProgram) EndProgram();
}

void frmReportQuery::SaveCmd_Click() {
    builder_.HandOver();
    accept();
}

/// A failed file is no reason to lose lines that were moved, so whoever closes the program gets them with the layout.
void frmReportQuery::EndProgram() {
    SaveCmd_Click();
    if (endProgram) endProgram();
}

/// The button that a key of the form presses, or null.
QPushButton* frmReportQuery::FormKeyButton(const QKeyEvent& key) const {
    const Qt::KeyboardModifiers held = key.modifiers() & ~Qt::KeypadModifier;
    if (held != Qt::ControlModifier && held != Qt::AltModifier) return nullptr;
    switch (key.key()) {
        case Qt::Key_F:
            return SFileCmd_;
        case Qt::Key_L:
            return LFileCmd_;
        case Qt::Key_S:
            return SaveCmd_;
        case Qt::Key_X:
            return XitCmd_;
        default:
            return nullptr;
    }
}

/// The entry controls share it. Combo boxes are left by the arrows too; letters, Home, End and the space bar choose in
/// them.
bool frmReportQuery::Field_KeyDown(const QKeyEvent& key) {
    const auto step = FocusStepOf(key);
    return step && (*step == FocusStep::Next ? focusNextChild() : focusPreviousChild());
}

/// Signs choose the operation that they are, and "<" with "=" behind it the two together. The box's own search would
/// find the first entry that begins so: "<=" for "<".
bool frmReportQuery::ChooseOperation(const QString& typed) {
    if (typed.isEmpty()) return false;
    for (const QString& wanted : {typedOperation_ + typed, typed}) {
        const int index = Operation_->findText(wanted);
        if (index < 0) continue;
        Operation_->setCurrentIndex(index);
        typedOperation_ = wanted;
        return true;
    }
    return false;
}

bool frmReportQuery::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Operation_ && event->type() == QEvent::FocusIn) typedOperation_.clear();
    const bool isOverride = event->type() == QEvent::ShortcutOverride;
    if (!isOverride && event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (QPushButton* const button = FormKeyButton(key)) {
        // Taken here, the key reaches neither the box it was pressed in nor the mnemonic of the button.
        if (isOverride)
            event->accept();
        else if (!key.isAutoRepeat())
            button->click();
        return true;
    }
    if (isOverride) return false;
    if (watched == Formulas_ && key.key() == Qt::Key_Delete) {
        DelCmd_Click();
        return true;
    }
    if (watched == Operation_ && ChooseOperation(key.text())) return true;
    const bool isEntry = watched == Field_ || watched == Operation_ || watched == Value_ || watched == Join_;
    return isEntry && Field_KeyDown(key);
}

}  // namespace quillform::dialogs
