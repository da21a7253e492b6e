#pragma once

#include "data/jet/Header.h"
#include "data/jet/PageAllocator.h"
#include "data/jet/TableDefinition.h"
#include "model/DataAccess.h"

namespace quillform::jet {

/// The stored shape of a new table: columns, trees and named indexes, but no pages yet. InvalidArgument, NotSupported
/// if the format can't hold it.
TableDefinition PlanTable(const TableDef& table, const Header& header);

/// Gives a planned table its pages: maps, empty index roots, and the definition itself on `definition.page`, or on a
/// new page if that is 0.
void PlaceTable(PageFile& file, PageAllocator& allocator, TableDefinition& definition);

/// Gives all pages of a table back. Pages that only claim to be the table's are left alone.
void FreeTable(PageFile& file, PageAllocator& allocator, const TableDefinition& definition);

}  // namespace quillform::jet
