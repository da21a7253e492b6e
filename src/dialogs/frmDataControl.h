#pragma once

#include <QWidget>
#include <array>

class QLabel;
class QToolButton;

namespace quillform::dialogs {

class BoundRecords;

/// The bar of a data control: to the first record and the one before, a caption, to the next one and the last.
class frmDataControl final : public QWidget {
    Q_OBJECT

public:
    /// `records` outlives the bar, which moves them. `name` is the object name.
    frmDataControl(const char* name, BoundRecords& records, QWidget* parent = nullptr);

    void SetCaption(const QString& caption);
    /// Lets the buttons work where there are records to go to.
    void Follow();

protected:
    void changeEvent(QEvent* event) override;

private:
    void ShowInk();

    BoundRecords& records_;
    QLabel* caption_;  // owned by the widget, as the buttons are
    std::array<QToolButton*, 4> buttons_{};
};

}  // namespace quillform::dialogs
