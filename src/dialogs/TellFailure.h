#pragma once

#include "model/UserInterface.h"
#include "platform/RunTimeError.h"

namespace quillform::dialogs {

/// Runs a step of a form, and tells the user why it failed if it does. False then.
template <typename Step>
bool DoneOrTold(UserInterface& user, Step step) {
    try {
        step();
        return true;
    } catch (const RunTimeError& error) {
        user.Message(error.what());
        return false;
    }
}

}  // namespace quillform::dialogs
