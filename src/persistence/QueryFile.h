#pragma once

#include <string>

#include "model/collQuery.h"
#include "persistence/RecordLine.h"

namespace quillform {

/// Appends the lines of a query file to a collection; each field without outer blanks. A line without a comma is passed
/// over. Gives the number of lines added. RunTimeError FileNotFound ("You've entered an invalid path or filename."),
/// InvalidFileFormat for bytes that are no text, Overflow for a catalog number beyond every range, and the file
/// system's errors; nothing is added then.
int LoadQueries(const std::string& fileName, collQuery& queries);

/// Writes the lines of a collection, whole or not at all. RunTimeError InvalidArgument for a name that doesn't end in
/// ".QRY" in any case, and the file system's errors.
SaveLosses SaveQueries(const std::string& fileName, const collQuery& queries);

}  // namespace quillform
