#pragma once

#include <QDialog>

#include "designer/TextItems.h"
#include "model/UserInterface.h"

class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace quillform::designer {

/// "Insert/Remove Text Fields": the free texts of the layout. The form works on a copy of them, and gives it back when
/// it is closed, by whatever way, since the surface shows the texts already.
class frmTextFields final : public QDialog {
    Q_OBJECT

public:
    /// Both outlive the form.
    frmTextFields(DesignSurface& surface, UserInterface& user, QWidget* parent = nullptr);

    void done(int result) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class Mode { New = 0, Edit = 2 };

    void MakeParts();
    void Form_Activate();
    void FillTextList();
    void NewCmd_Click();
    void EditCmd_Click();
    void DelCmd_Click();
    void AddCmd_Click();
    void XitCmd_Click() { accept(); }
    void BeginEntry();
    void EndEntry();
    void EnableForEntry(bool isEntering);
    bool TakesKey(int key);
    int Selected() const;

    UserInterface& user_;
    TextItems texts_;
    Mode intTextMode_ = Mode::New;
    // Owned by the form.
    QListWidget* List1_;
    QLineEdit* Text_;
    QRadioButton *Opt0_, *Opt1_;
    QPushButton *NewCmd_, *EditCmd_, *DelCmd_, *AddCmd_, *XitCmd_;
};

}  // namespace quillform::designer
