#pragma once

#include <QWidget>
#include <array>
#include <optional>
#include <string>

#include "dialogs/BoundRecords.h"
#include "model/UserInterface.h"
#include "support/frmBusyPointer.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace quillform::dialogs {

class frmDataControl;

/// The start form: a plain record editor on the table "Stock Code Table" of the sample database, and the door to the
/// report designer.
///
/// Enter in a box stores like "Update". Esc takes back what was typed into the record, and closes the form where there
/// is nothing to take back. A record that can't be stored keeps the form open, unless the user gives it up.
class frmStockCodeTable final : public QWidget {
    Q_OBJECT

public:
    /// `databasePath` is opened when the form is first shown; a failure is told, and the form stays usable. `user` and
    /// `engine` outlive the form.
    frmStockCodeTable(std::string databasePath, UserInterface& user, DBEngine& engine, QWidget* parent = nullptr);

Q_SIGNALS:
    /// The form is closed: by "Reports" (the designer is wanted) or otherwise (the program ends).
    void Unloaded(bool byReports);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    static constexpr std::size_t boxCount = 5;

    QWidget* MakeBoxes();
    QWidget* MakeDoor();
    QWidget* MakeButtons();

    void cmdAdd_Click();
    void cmdDelete_Click() { datPrimaryRS_.Delete(); }
    void cmdRefresh_Click() { datPrimaryRS_.Refresh(); }
    void cmdUpdate_Click() { datPrimaryRS_.UpdateRecord(); }
    void cmdClose_Click();
    void frmReports_Click();
    void datPrimaryRS_Reposition();
    void datPrimaryRS_Validate() { hourglass_.emplace(); }
    void datPrimaryRS_Error(const RunTimeError& DataErr);
    void Form_Unload(bool& Cancel);

    void ShowRecord();

    UserInterface& user_;
    BoundRecords datPrimaryRS_;
    bool wasShown_ = false;
    std::optional<BusyPointer> hourglass_;  // from Validate to Reposition or Error
    bool byReports_ = false;

    // Owned by the form.
    std::array<QLineEdit*, boxCount> txtFields_{};
    frmDataControl* bar_ = nullptr;
    QLabel* readOnlyNote_ = nullptr;
    QPushButton* cmdDelete_ = nullptr;
    QPushButton* cmdUpdate_ = nullptr;
};

}  // namespace quillform::dialogs
