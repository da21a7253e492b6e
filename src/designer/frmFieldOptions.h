#pragma once

#include <QDialog>
#include <array>
#include <cstddef>

#include "model/Layout.h"

class QCheckBox;

namespace quillform::designer {

/// "Sorting/Totalling Options" of one item: its part in the sort order, the totals that it feeds, what of it is
/// suppressed. Only "Done" stores; closing the form in any other way leaves the item as it was.
class frmFieldOptions final : public QDialog {
    Q_OBJECT

public:
    /// For the item at `intOptionItem` of the layout, which outlives the form. RunTimeError SubscriptOutOfRange if
    /// there is none.
    explicit frmFieldOptions(Layout& layout, QWidget* parent = nullptr);

private:
    void Form_Load();
    void DoneCmd_Click();

    Layout& layout_;
    std::array<QCheckBox*, 8> Chk_{};  // owned by the form
};

}  // namespace quillform::designer
