#pragma once

#include <filesystem>
#include <vector>

#include "model/DataAccess.h"

namespace quillform::sample {

/// Makes the samples in a folder (made if missing): `Sample.mdb`, a database of a small wholesaler of household goods
/// with its catalog, and report layouts (`*.REP`) over it. Every call makes the same database; the layouts differ only
/// in the database's path. Gives the paths of what it made, the database first.
///
/// The database is Jet 4: Access since 2000 opens it, while Jet 3 is refused by Access since 2013.
///
/// PermissionDenied if one of the files exists already, so that nobody's own layouts are lost; then nothing is made. A
/// failure later leaves none of the files behind that this call made.
std::vector<std::filesystem::path> WriteSamples(DBEngine& engine, const std::filesystem::path& folder);

}  // namespace quillform::sample
