#pragma once

#include <memory>
#include <string>

#include "data/Storage.h"
#include "data/columns/TableCache.h"
#include "data/sqlite/StatementRunner.h"
#include "platform/Clock.h"

namespace quillform::data {

/// What all handles on one file share: its storage, its decoded tables, and SQLite over them.
struct SharedFile {
    SharedFile(std::shared_ptr<Storage> theStorage, const std::shared_ptr<SpillStore>& store, const Clock& theClock);

    std::shared_ptr<Storage> storage;
    const Clock& clock;
    TableCache cache;
    sqlite::StatementRunner runner;

    int CurrentYear() const;
};

std::unique_ptr<Database> OpenHandle(std::shared_ptr<SharedFile> file, std::string name, Access access);

}  // namespace quillform::data
