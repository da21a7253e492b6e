#pragma once

#include <QFrame>
#include <chrono>
#include <optional>

#include "model/UserInterface.h"
#include "support/frmBusyPointer.h"

class QProgressBar;
class QPushButton;

namespace quillform::designer {

/// The progress panel `Picture1` in the middle of the form: a bar over a scale, and the button that cancels.
class RunPanel : public QFrame {
    Q_OBJECT

public:
    explicit RunPanel(QWidget& form);

    /// In the middle of the form, over everything, with the focus on its button.
    void Appear();
    /// Paints the form as it is now, since a run may not look at the window system for a while.
    void PaintForm() { parentWidget()->repaint(); }
    void SetMaximum(long long maximum);
    void SetValue(long long value);

Q_SIGNALS:
    void CanRptCmd_Click();

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void PlaceInTheMiddle();

    QProgressBar* Gauge1_;
    QPushButton* CanRptCmd_;
    long long maximum_ = 0;
};

/// The person before the designer while a report runs: what is said and asked goes to the user interface of the
/// program, progress to the form's panel.
class RunUser final : public UserInterface {
public:
    /// `isCancelled` is the form's `boolCancelReport`, which the run reads and clears.
    RunUser(UserInterface& user, RunPanel& panel, bool& isCancelled)
        : user_(user), panel_(panel), isCancelled_(isCancelled) {}

    void Message(std::string_view text, std::string_view title) override {
        busy_.reset();
        user_.Message(text, title);
    }
    bool Ask(std::string_view question, std::string_view title, MessageIcon icon) override {
        busy_.reset();
        return user_.Ask(question, title, icon);
    }
    void Warn(std::string_view text) override { user_.Warn(text); }
    void Note(std::string_view text) override {
        note_ = text;
        user_.Note(text);
    }
    std::optional<std::string> SaveDialog(const FileDialog& dialog) override { return user_.SaveDialog(dialog); }
    std::optional<std::string> OpenDialog(const FileDialog& dialog) override { return user_.OpenDialog(dialog); }
    void ShowProgress() override;
    void SetProgressMax(long long maximum) override { panel_.SetMaximum(maximum); }
    void SetProgress(long long value) override { panel_.SetValue(value); }
    void HideProgress() override;
    bool YieldAndIsCancelled() override;
    /// The last note of the run; empty if there was none.
    const std::string& LastNote() const { return note_; }

private:
    UserInterface& user_;
    std::string note_;
    RunPanel& panel_;
    bool& isCancelled_;
    std::optional<BusyPointer> busy_;  // before the first record and after the last, where nothing cancels
    std::chrono::steady_clock::time_point lastYield_{};
};

}  // namespace quillform::designer
