#pragma once

#include <QDialog>
#include <filesystem>
#include <functional>
#include <string>

#include "model/UserInterface.h"

class QLabel;
class QToolBar;

namespace quillform::designer {

class PreviewPages;

/// The screen preview: shows the rich text file of the latest report, and prints its text. The printout is the text
/// alone, without fonts, colours and tabs.
///
/// The window opens in its described size; made larger, it gives the room to the pages.
class frmPrintWindow final : public QDialog {
    Q_OBJECT

public:
    /// Sends a plain text to the printer.
    using Printing = std::function<void(const std::string& text)>;

    /// `file` is read when the form is shown. Both, and `user`, outlive the form.
    frmPrintWindow(std::filesystem::path file, Printing print, UserInterface& user, QWidget* parent = nullptr);

    PreviewPages& Text1() { return *Text1_; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Form_Load();
    void Form_Activate();
    void Toolbar1_ButtonClick();
    void ShowPageNumber();

    std::filesystem::path file_;
    Printing print_;
    UserInterface& user_;
    // Owned by the form.
    QToolBar* Toolbar1_;
    PreviewPages* Text1_;
    QLabel* pageText_;
};

}  // namespace quillform::designer
