#pragma once

#include <string>

#include "model/DataAccess.h"
#include "model/UserInterface.h"

namespace quillform::dialogs {

/// Where `Report - Labels` is empty and can be written, asks whether the common label sheets shall be added, and on Yes
/// adds all of them or, if that fails, tells why and adds none. True if they were added. RunTimeError if the database
/// or its table can't be opened.
bool OfferCommonSheets(const std::string& databasePath, UserInterface& user, DBEngine& engine);

}  // namespace quillform::dialogs
