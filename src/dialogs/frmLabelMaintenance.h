#pragma once

#include <QDialog>
#include <array>
#include <string>

#include "dialogs/LabelStyles.h"
#include "model/UserInterface.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace quillform::dialogs {

class frmSheetPicture;

/// "Add/Edit/Delete Label Styles": the record editor of the table `Report - Labels`, with a picture of the sheet as its
/// measures are typed.
///
/// While browsing, boxes are disabled: what would be typed into them couldn't be saved and would be gone with the next
/// move. While a style is entered, "Save" (also by Enter) stores it, and "Exit" (also Esc) drops it; Prev and Next wait
/// until then, because a move would drop it, too.
class frmLabelMaintenance final : public QDialog {
    Q_OBJECT

public:
    /// Opens the database and the table; RunTimeError if that fails, and there is no form then. `user` and `engine`
    /// outlive the form.
    frmLabelMaintenance(std::string databasePath, UserInterface& user, DBEngine& engine, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* MakeBoxes();
    QWidget* MakePicture();
    using Command = void (frmLabelMaintenance::*)();
    QPushButton* NewCommand(const char* name, const char* caption, Command click);
    QLayout* MakeMoves();
    QLayout* MakeButtons();

    void Form_Load();
    void Form_Activate();
    void cmdAdd_Click();
    void cmdUpdate_Click();
    void cmdSave_Click();
    void cmdDelete_Click();
    void cmdNext_Click();
    void cmdPrev_Click();
    void cmdExit_Click() { close(); }

    void ShowLabelStyle();
    void ShowStyleOr(const char* messageIfNone);
    void ShowState();
    void ShowSheet();
    LabelStyle Entered() const;

    UserInterface& user_;
    LabelStyles styles_;  // dbLabels and rsLabels
    bool wasActivated_ = false;
    /// The current style's paper isn't in the list, which goes on showing another one. The note under the picture tells
    /// the number, and Save keeps it until a paper is chosen.
    bool isPaperUnlisted_ = false;

    // Owned by the form.
    std::array<QLineEdit*, labelMeasures.size() + 1> Custom_{};
    QComboBox* cmbPaperSize_ = nullptr;
    frmSheetPicture* sheetPicture_ = nullptr;
    QLabel* sheetNote_ = nullptr;
    QLabel* position_ = nullptr;
    QPushButton* cmdAdd_ = nullptr;
    QPushButton* cmdUpdate_ = nullptr;
    QPushButton* cmdDelete_ = nullptr;
    QPushButton* cmdSave_ = nullptr;
    QPushButton* cmdPrev_ = nullptr;
    QPushButton* cmdNext_ = nullptr;
};

/// Shows the form until it is closed; where the table is empty, the common label sheets are offered first. A database
/// or table that can't be opened is told, and no form is shown. True if the common sheets were added.
bool ShowLabelStyles(const std::string& databasePath, UserInterface& user, DBEngine& engine, QWidget* owner);

}  // namespace quillform::dialogs
