#include "designer/frmDataFields.h"

#include <QBoxLayout>
#include <QFocusEvent>
#include <QIcon>
#include <QLineEdit>
#include <QTreeWidget>
#include <memory>
#include <optional>
#include <unordered_set>
#include <utility>
#include <vector>

#include "engine/ReportRun.h"
#include "platform/Numbers.h"
#include "platform/Text.h"
#include "support/TwipScale.h"
#include "support/frmControls.h"
#include "support/frmFieldTree.h"
#include "support/frmSizeForm.h"
#include "support/frmText.h"

namespace quillform::designer {

namespace {

constexpr double formWidth = 5400;  // twips
constexpr double formHeight = 6300;
constexpr int keyRole = Qt::UserRole;  // "C" and the code, in leaves
constexpr std::string_view looseRoot = "Date/Time/Page";

QString KeyOf(int code) { return QStringLiteral("C%1").arg(code); }

/// The code in a leaf's key; empty for a root.
std::optional<int> CodeOf(const QTreeWidgetItem& node) {
    const QString key = node.data(0, keyRole).toString();
    if (key.isEmpty()) return std::nullopt;
    return key.mid(1).toInt();
}

QIcon RootIcon() {
    QIcon icon(QStringLiteral(":/designer/close.svg"));
    icon.addFile(QStringLiteral(":/designer/open.svg"), {}, QIcon::Normal, QIcon::On);
    return icon;
}

std::unique_ptr<QTreeWidgetItem> NewRoot(const std::string& text) {
    static const QIcon icon = RootIcon();
    auto root = std::make_unique<QTreeWidgetItem>(QStringList{ToQt(text)});
    root->setIcon(0, icon);
    return root;
}

/// The root owns it.
QTreeWidgetItem& NewLeaf(QTreeWidgetItem& root, int code, const std::string& text) {
    static const QIcon icon(QStringLiteral(":/designer/leaf.svg"));
    auto* const leaf = new QTreeWidgetItem(&root, {ToQt(text)});
    leaf->setData(0, keyRole, KeyOf(code));
    leaf->setIcon(0, icon);
    return *leaf;
}

}  // namespace

frmDataFields::frmDataFields(DesignSurface& surface, DesignerServices services, QWidget* parent)
    : QDialog(parent),
      surface_(surface),
      services_(std::move(services)),
      fields_(surface, [this] { services_.user.Message("Moving to next line"); }),
      SSTree1_(NewFieldTree("Fields that can be reported")) {
    setObjectName(QStringLiteral("frmDataFields"));
    setWindowTitle(QStringLiteral("Insert/Remove Data Field"));
    auto* const DoneCmd = NewButton("DoneCmd", "&Done");

    auto* const buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(DoneCmd);
    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(NewFieldSearch(*SSTree1_));
    rows->addWidget(SSTree1_, 1);
    rows->addLayout(buttons);
    SSTree1_->setFocus();

    OnNodeClick(*SSTree1_, [this](QTreeWidgetItem& node) { SSTree1_NodeClick(&node); });
    connect(DoneCmd, &QPushButton::clicked, this, &frmDataFields::DoneCmd_Click);
    resize(TwipScale::ToPixels(formWidth), TwipScale::ToPixels(formHeight));
    SizeForm(*this);
}

int frmDataFields::exec() { return Form_Activate() ? QDialog::exec() : Rejected; }

bool frmDataFields::Form_Activate() {
    try {
        const auto database = OpenReportDatabase(surface_.Report(), services_.engine);
        const auto rows = database->OpenRecordset("SELECT ID, Text, Table FROM [Report - Index] ORDER BY Table, Text",
                                                  RecordsetType::Snapshot);
        FillTree(*rows);
    } catch (const RunTimeError&) {
        services_.user.Message(
            "Cannot locate the database.  Select [Edit], [Report Options], and go to the [Database] folder.  Locate "
            "your Brindlemark database.");
        return false;
    }
    return true;
}

/// The nodes are made aside and put into the tree together: a tree that hears of each one by itself takes its time over
/// thousands of them, and keeps half of them if the database fails on the way.
void frmDataFields::FillTree(Recordset& rows) {
    std::unordered_set<int> placed;
    for (const clssFields& item : surface_.Report().Fields) placed.insert(item.Code);
    std::vector<std::unique_ptr<QTreeWidgetItem>> roots;
    const int id = rows.FindField("ID");
    const int text = rows.FindField("Text");
    const int table = rows.FindField("Table");
    std::string lastTable;
    for (; !rows.IsEOF(); rows.MoveNext()) {
        if (std::string name(Trim(rows.Text(table))); roots.empty() || name != lastTable) {
            roots.push_back(NewRoot(name));
            lastTable = std::move(name);
        }
        const int code = static_cast<int>(Val(rows.Text(id)));
        ShowWhetherPlaced(NewLeaf(*roots.back(), code, rows.Text(text)),
                          code <= ItemCode::LastCatalog && placed.contains(code));
    }
    roots.push_back(NewRoot(std::string(looseRoot)));
    for (const FieldChoice& loose : LooseFields())
        ShowWhetherPlaced(NewLeaf(*roots.back(), loose.code, loose.text), placed.contains(loose.code));
    QList<QTreeWidgetItem*> made;
    for (std::unique_ptr<QTreeWidgetItem>& root : roots) made << root.release();
    SSTree1_->clear();
    SSTree1_->addTopLevelItems(made);
}

void frmDataFields::ShowWhetherPlaced(QTreeWidgetItem& leaf, bool isPlaced) const {
    QFont font = SSTree1_->font();
    font.setBold(true);
    leaf.setData(0, Qt::FontRole, isPlaced ? QVariant(font) : QVariant());
    leaf.setData(0, Qt::AccessibleDescriptionRole,
                 isPlaced ? QStringLiteral("on the layout") : QStringLiteral("not on the layout"));
}

void frmDataFields::SSTree1_NodeClick(QTreeWidgetItem* node) {
    if (node->childCount() > 0) {
        node->setExpanded(!node->isExpanded());
        return;
    }
    const std::optional<int> code = CodeOf(*node);
    if (!code || *code < 1) return;
    if (!IsLoose(*node) && *code > ItemCode::LastCatalog)
        return services_.user.Message(FromQt(node->text(0)) + " can't be put on a report: it is number " +
                                      std::to_string(*code) + " of the catalog, and reports select the numbers " +
                                      std::to_string(ItemCode::FirstCatalog) + " to " +
                                      std::to_string(ItemCode::LastCatalog) + ".");
    if (const int position = fields_.Find(*code); position > 0) {
        fields_.Remove(position);
    } else {
        FieldChoice choice;
        if (!FindChoice(*code, choice)) return;
        fields_.Insert(choice);
    }
    ShowWhetherPlaced(*node, fields_.Find(*code) > 0);
}

/// Whether a leaf belongs to no table. A row of the catalog may have the number of one that does.
bool frmDataFields::IsLoose(const QTreeWidgetItem& leaf) const {
    return leaf.parent() == SSTree1_->topLevelItem(SSTree1_->topLevelItemCount() - 1);
}

/// What a new item takes over. False if the catalog has lost the row, or the database is gone by now.
bool frmDataFields::FindChoice(int code, FieldChoice& choice) const {
    if (const FieldChoice* const loose = FindLooseField(code)) {
        choice = *loose;
        return true;
    }
    try {
        const auto database = OpenReportDatabase(surface_.Report(), services_.engine);
        const auto row = database->OpenRecordset(
            "SELECT ID, Text, [Default Length], Mask FROM [Report - Index] WHERE ID = " + std::to_string(code),
            RecordsetType::Snapshot);
        if (!row->HasRows()) return false;
        choice.code = code;
        choice.text = Trim(row->Text("Text"));
        choice.length = static_cast<int>(Val(row->Text("Default Length")));
        choice.mask = row->Text("Mask");
        return true;
    } catch (const RunTimeError& error) {
        services_.user.Message(error.what());
        return false;
    }
}

/// The form itself has the focus only where none of its controls can take it, so going to another program ends nothing.
void frmDataFields::focusOutEvent(QFocusEvent* event) {
    QDialog::focusOutEvent(event);
    DoneCmd_Click();
}

}  // namespace quillform::designer
