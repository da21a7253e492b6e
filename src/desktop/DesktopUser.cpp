#include "desktop/DesktopUser.h"

#include <QApplication>
#include <QMessageBox>

#include "desktop/FileDialogs.h"
#include "support/frmText.h"

namespace quillform {

namespace {

using namespace std::chrono_literals;

/// Of boxes that say no other.
constexpr std::string_view programTitle = "Quillform";

/// Often enough for a button that feels alive, and too seldom to cost a run anything.
constexpr auto yieldInterval = 10ms;

QMessageBox::Icon IconOf(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::None:
            return QMessageBox::NoIcon;
        case MessageIcon::Question:
            return QMessageBox::Question;
        case MessageIcon::Exclamation:
            return QMessageBox::Warning;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButton ShowBox(QMessageBox::Icon icon, std::string_view title, std::string_view text,
                                    QMessageBox::StandardButtons buttons,
                                    QMessageBox::StandardButton first = QMessageBox::NoButton) {
    QMessageBox box(icon, ToQt(title.empty() ? programTitle : title), ToQt(text), buttons,
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);  // names in it may look like markup
    box.setDefaultButton(first);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

}  // namespace

void DesktopUser::Message(std::string_view text, std::string_view title) {
    MessageWithIcon(text, title, MessageIcon::None);
}

void DesktopUser::MessageWithIcon(std::string_view text, std::string_view title, MessageIcon icon) {
    ShowBox(IconOf(icon), title, text, QMessageBox::Ok);
}

void DesktopUser::Beep() { QApplication::beep(); }

bool DesktopUser::Ask(std::string_view question, std::string_view title, MessageIcon icon) {
    // Where something may be lost, a hasty Enter loses nothing.
    const auto first = icon == MessageIcon::Exclamation ? QMessageBox::No : QMessageBox::Yes;
    return ShowBox(IconOf(icon), title, question, QMessageBox::Yes | QMessageBox::No, first) == QMessageBox::Yes;
}

bool DesktopUser::AskRetry(std::string_view question, std::string_view title, MessageIcon icon) {
    return ShowBox(IconOf(icon), title, question, QMessageBox::Retry | QMessageBox::Cancel) == QMessageBox::Retry;
}

void DesktopUser::Warn(std::string_view text) { warnings_.emplace_back(text); }

void DesktopUser::ShowWarnings() {
    if (warnings_.empty()) return;
    std::string text;
    for (const std::string& warning : warnings_) text += (text.empty() ? "" : "\n\n") + warning;
    warnings_.clear();
    ShowBox(QMessageBox::Warning, {}, text, QMessageBox::Ok);
}

std::optional<std::string> DesktopUser::SaveDialog(const FileDialog& dialog) {
    return ShowSaveDialog(dialog, QApplication::activeWindow());
}

std::optional<std::string> DesktopUser::OpenDialog(const FileDialog& dialog) {
    return ShowOpenDialog(dialog, QApplication::activeWindow());
}

void DesktopUser::ShowProgress() {
    panel_.SetMaximum(0);
    panel_.show();
    lastYield_ = {};
}

bool DesktopUser::YieldAndIsCancelled() {
    const auto now = std::chrono::steady_clock::now();
    if (now - lastYield_ >= yieldInterval) {
        QApplication::processEvents();
        lastYield_ = std::chrono::steady_clock::now();
    }
    return panel_.IsCancelled();
}

}  // namespace quillform
