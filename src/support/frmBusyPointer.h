#pragma once

#include <QGuiApplication>

namespace quillform {

/// The waiting pointer, for as long as it lives: over work that answers neither mouse nor keys.
class BusyPointer {
public:
    BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

}  // namespace quillform
