#include <QBoxLayout>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTreeWidget>

#include "dialogs/frmReportQuery.h"
#include "support/TwipScale.h"
#include "support/frmControls.h"
#include "support/frmFieldTree.h"
#include "support/frmKeyFilters.h"
#include "support/frmSizeForm.h"
#include "support/frmText.h"

namespace quillform::dialogs {

namespace {

constexpr double formWidth = 12300;  // twips
constexpr double formHeight = 6300;

QLineEdit* NewBox(const char* name, const char* accessibleName) {
    auto* const box = new QLineEdit;
    box->setObjectName(QString::fromLatin1(name));
    box->setAccessibleName(QString::fromLatin1(accessibleName));
    return box;
}

/// A list to choose from, with nothing chosen yet.
template <typename Texts>
QComboBox* NewChoice(const char* name, const Texts& texts) {
    auto* const box = new QComboBox;
    box->setObjectName(QString::fromLatin1(name));
    box->setAccessibleName(box->objectName());
    for (const std::string_view text : texts) box->addItem(ToQt(text));
    box->setCurrentIndex(-1);
    return box;
}

void AddWithCaption(QBoxLayout& column, const char* caption, QWidget& control) {
    auto* const label = new QLabel(QString::fromLatin1(caption));
    label->setBuddy(&control);
    column.addWidget(label);
    column.addWidget(&control);
}

QBoxLayout* Column(QWidget& upper, QWidget& lower) {
    auto* const column = new QVBoxLayout;
    column->addWidget(&upper);
    column->addWidget(&lower, 1);
    return column;
}

}  // namespace

void frmReportQuery::MakeParts() {
    SSTree1_ = NewFieldTree("Fields that can be asked for");
    find_ = NewFieldSearch(*SSTree1_);
    Field_ = NewBox("Field", "Query Field");
    Operation_ = NewChoice("Operation", queryOperations);
    Value_ = NewBox("Value", "Value");
    Value_->setMaxLength(longestQueryValue);
    FilterEnterKey(*Value_);
    Join_ = NewChoice("Join", queryJoins);
    hint_ = new QLabel;
    hint_->setObjectName(QStringLiteral("hint"));
    hint_->setWordWrap(true);
    hint_->setTextFormat(Qt::PlainText);
    hint_->setAlignment(Qt::AlignTop);
    hint_->setMinimumHeight(3 * hint_->fontMetrics().lineSpacing());  // of a form made as small as it gets
    Formulas_ = new QListWidget;
    Formulas_->setObjectName(QStringLiteral("Formulas"));
    Formulas_->setAccessibleName(QStringLiteral("Lines of the query"));
    const int letterHeight = Formulas_->fontMetrics().ascent();
    Formulas_->setIconSize({letterHeight, letterHeight});  // a warning makes no line higher
    AddCmd_ = NewButton("AddCmd", "Add>>");
    EdtCmd_ = NewButton("EdtCmd", "<<Edit");
    DelCmd_ = NewButton("DelCmd", "<Delete>");
    ClrCmd_ = NewButton("ClrCmd", "<New>");
    UpCmd_ = NewButton("UpCmd", "Up");
    DownCmd_ = NewButton("DownCmd", "Down");
    LFileCmd_ = NewButton("LFileCmd", "&Load from File");
    SFileCmd_ = NewButton("SFileCmd", "Save to &File");
    SaveCmd_ = NewButton("SaveCmd", "&Save");
    XitCmd_ = NewButton("XitCmd", "E&xit");
    for (QPushButton* const button : {LFileCmd_, SFileCmd_, SaveCmd_, XitCmd_}) {
        const QString caption = button->text();
        const QChar letter = caption[caption.indexOf(u'&') + 1].toUpper();
        button->setToolTip(QStringLiteral("Ctrl+%1 or Alt+%1").arg(letter));
    }
}

void frmReportQuery::LayOut() {
    auto* const commands = new QGridLayout;
    commands->addWidget(AddCmd_, 0, 0);
    commands->addWidget(EdtCmd_, 0, 1);
    commands->addWidget(DelCmd_, 1, 0);
    commands->addWidget(ClrCmd_, 1, 1);
    auto* const entry = new QVBoxLayout;
    AddWithCaption(*entry, "Query Field", *Field_);
    AddWithCaption(*entry, "Operation", *Operation_);
    AddWithCaption(*entry, "Value", *Value_);
    AddWithCaption(*entry, "Join", *Join_);
    entry->addWidget(hint_, 1);
    entry->addLayout(commands);
    auto* const moves = new QHBoxLayout;
    moves->addWidget(UpCmd_);
    moves->addWidget(DownCmd_);
    moves->addStretch(1);
    auto* const list = Column(*new QLabel(QStringLiteral("Lines of the query")), *Formulas_);
    list->addLayout(moves);
    auto* const columns = new QHBoxLayout;
    columns->addLayout(Column(*find_, *SSTree1_), 4);
    columns->addLayout(entry, 3);
    columns->addLayout(list, 5);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(LFileCmd_);
    buttons->addWidget(SFileCmd_);
    buttons->addStretch(1);
    buttons->addWidget(SaveCmd_);
    buttons->addWidget(XitCmd_);
    auto* const rows = new QVBoxLayout(this);
    rows->addLayout(columns, 1);
    rows->addLayout(buttons);
    resize(TwipScale::ToPixels(formWidth), TwipScale::ToPixels(formHeight));
    SizeForm(*this);
    setWindowTitle(QStringLiteral("BUILD QUERY"));
}

void frmReportQuery::SetTabs() {
    QWidget* const order[] = {find_,   SSTree1_,  Field_, Operation_, Value_,    Join_,     AddCmd_,  EdtCmd_, DelCmd_,
                              ClrCmd_, Formulas_, UpCmd_, DownCmd_,   LFileCmd_, SFileCmd_, SaveCmd_, XitCmd_};
    for (std::size_t i = 1; i < std::size(order); ++i) setTabOrder(order[i - 1], order[i]);
    SSTree1_->setFocus();
}

}  // namespace quillform::dialogs
