#pragma once

#include <QDialog>
#include <functional>

#include "dialogs/QueryBuilder.h"
#include "dialogs/QueryFileCommands.h"
#include "model/DataAccess.h"
#include "model/Layout.h"

class QComboBox;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace quillform::dialogs {

/// "BUILD QUERY": which records a report takes. A field is picked in the tree of the catalog, compared with a value,
/// and the line goes to the list. Lines can be saved to a query file and loaded from one.
///
/// Enter and the arrows move between the entry controls. Ctrl or Alt with F, L, S, X press the buttons that have these
/// letters, in text boxes too: Ctrl and X is Exit, not Cut.
class frmReportQuery final : public QDialog {
    Q_OBJECT

public:
    /// All outlive the form.
    frmReportQuery(Layout& layout, UserInterface& user, DBEngine& engine, const Clock& clock,
                   QWidget* parent = nullptr);

    /// Reads the catalog anew and shows the form; a database that can't be opened is told of, and nothing is shown.
    int exec() override;

    /// Called after an error that ends the program, when the lines are the layout's and the form is closed. Unless set,
    /// it closes every window, so that each can keep what it has.
    std::function<void()> endProgram;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakeParts();
    void LayOut();
    void SetTabs();
    bool Form_Activate();
    void FillTree(Database& database);
    void FillFormulas(int current = 0, QueryBuilder::Blanks blanks = QueryBuilder::Blanks::Kept);
    QPushButton* FormKeyButton(const QKeyEvent& key) const;
    bool Field_KeyDown(const QKeyEvent& key);
    bool ChooseOperation(const QString& typed);

    void SSTree1_Click(QTreeWidgetItem& node);
    void AddCmd_Click();
    void EdtCmd_Click();
    void DelCmd_Click();
    void ClrCmd_Click();
    void UpCmd_Click();
    void DownCmd_Click();
    void LFileCmd_Click();
    void SFileCmd_Click();
    void SaveCmd_Click();
    void XitCmd_Click() { reject(); }

    int Selected() const;
    QueryEntry Entry() const;
    void ShowHint();
    void EndProgram();

    Layout& layout_;
    UserInterface& user_;
    DBEngine& engine_;
    QueryBuilder builder_;
    QueryFileCommands files_;
    int longestValue_ = longestQueryValue;
    QString typedOperation_;  // since the box has the keyboard
    // Owned by the form.
    QTreeWidget* SSTree1_;
    QLineEdit *find_, *Field_, *Value_;
    QComboBox *Operation_, *Join_;
    QListWidget* Formulas_;
    QLabel* hint_;
    QPushButton *AddCmd_, *EdtCmd_, *DelCmd_, *ClrCmd_, *UpCmd_, *DownCmd_, *LFileCmd_, *SFileCmd_, *SaveCmd_, *XitCmd_;
};

}  // namespace quillform::dialogs
