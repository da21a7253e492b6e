#pragma once

#include <QPushButton>

#include "support/TwipScale.h"

namespace quillform {

/// A button under its given name. Enter presses it only while it has the focus, or where its form makes it the default.
inline QPushButton* NewButton(const char* name, const char* caption) {
    constexpr double leastWidth = 1215;  // twips
    auto* const button = new QPushButton(QString::fromLatin1(caption));
    button->setObjectName(QString::fromLatin1(name));
    button->setMinimumWidth(TwipScale::ToPixels(leastWidth));
    button->setAutoDefault(false);
    return button;
}

}  // namespace quillform
