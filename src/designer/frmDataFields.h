#pragma once

#include <QDialog>
#include <string>

#include "designer/DataFields.h"
#include "designer/DesignerForms.h"

class QTreeWidget;
class QTreeWidgetItem;

namespace quillform::designer {

/// "Insert/Remove Data Field": the tree of everything that can be reported. A click on a leaf puts it on the surface, a
/// click on the same leaf takes it off again; Enter and the space bar do what a click does. Leaves that are on the
/// layout stand in bold. A row of the catalog whose number reports can't select is shown, and a click on it says so.
class frmDataFields final : public QDialog {
    Q_OBJECT

public:
    /// Both outlive the form.
    frmDataFields(DesignSurface& surface, DesignerServices services, QWidget* parent = nullptr);

    /// Reads the catalog anew and shows the form; a database that can't be opened is told of, and nothing is shown.
    int exec() override;

protected:
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool Form_Activate();
    void SSTree1_NodeClick(QTreeWidgetItem* node);
    void DoneCmd_Click() { accept(); }

    void FillTree(Recordset& rows);
    bool FindChoice(int code, FieldChoice& choice) const;
    void ShowWhetherPlaced(QTreeWidgetItem& leaf, bool isPlaced) const;
    bool IsLoose(const QTreeWidgetItem& leaf) const;

    DesignSurface& surface_;
    DesignerServices services_;
    DataFields fields_;
    QTreeWidget* SSTree1_;  // owned by the form
};

}  // namespace quillform::designer
