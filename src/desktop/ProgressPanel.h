#pragma once

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

namespace quillform {

/// How far a run has come, with a button that cancels it. While it is shown, the other windows take no input.
class ProgressPanel : public QDialog {
public:
    explicit ProgressPanel(QWidget* owner = nullptr);

    /// 0: not known yet, and the bar shows that something goes on.
    void SetMaximum(long long maximum);
    void SetValue(long long value);
    /// Since the panel was shown.
    bool IsCancelled() const { return isCancelled_; }

    void reject() override;  // Esc and the close button mean Cancel

protected:
    void showEvent(QShowEvent* event) override;

private:
    long long maximum_ = 0;
    bool isCancelled_ = false;
    QProgressBar* Gauge1_;
    QPushButton* CanRptCmd_;
};

}  // namespace quillform
