#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "model/DataAccess.h"
#include "platform/Clock.h"

namespace quillform::data {

/// The data layer's door: opens `.mdb` (Jet 3, Jet 4) and SQLite files by their content, makes both.
/// `clock` completes dates written without a year and serves Now() in statements; it outlives the engine.
std::unique_ptr<DBEngine> MakeEngine(const Clock& clock);

/// Facts about a database file for people (`quillform info`).
std::vector<std::pair<std::string, std::string>> FactsOf(const std::filesystem::path& path);

}  // namespace quillform::data
