#pragma once

#include <string>
#include <vector>

#include "data/jet/PageFile.h"
#include "data/jet/Properties.h"
#include "model/DataAccess.h"

namespace quillform::jet {

/// What the catalogue says about one object.
struct CatalogEntry {
    enum Kind : int { LocalTable = 1, Container = 3, OdbcTable = 4, Query = 5, LinkedTable = 6, RelationObject = 8 };

    std::string name{};
    int kind = 0;
    std::int32_t id = 0;
    std::int32_t parent = 0;
    std::uint32_t flags = 0;
    std::vector<ColumnProperties> properties{};

    bool IsTable() const { return kind == LocalTable || kind == OdbcTable || kind == LinkedTable; }
    /// Made by the engine or by Access for itself, or hidden.
    bool IsHidden() const;
};

/// All objects, in the order of the table MSysObjects.
std::vector<CatalogEntry> ReadCatalog(const PageFile& file);

std::vector<Relation> ReadRelations(const PageFile& file);

}  // namespace quillform::jet
