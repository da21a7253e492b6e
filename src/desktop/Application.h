#pragma once

#include <QApplication>

namespace quillform {

/// Qt's application object with this program's name and icon. Qt gives up by aborting where it finds no display; here
/// the program then ends with one sentence to standard error and exit code 1.
class Application {
public:
    Application();

private:
    int count_ = 1;
    char name_[10] = "quillform";
    char* words_[2] = {name_, nullptr};
    QApplication application_;
};

}  // namespace quillform
