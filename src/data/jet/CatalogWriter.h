#pragma once

#include <string>

#include "data/jet/JetTable.h"

namespace quillform::jet {

/// Enters a new table into the catalogue: its object and, for everybody who may use tables, a permission.
/// `objects` and `permissions` are MSysObjects and MSysACEs.
void EnterTable(JetTable& objects, JetTable& permissions, const std::string& name, std::uint32_t page,
                const std::string& properties, double now);

/// Takes an object and its permissions out.
void RemoveObject(JetTable& objects, JetTable& permissions, std::int32_t id);

/// A row of a table, its values given by column name; the others are Null.
class NamedRow {
public:
    explicit NamedRow(const JetTable& table) : table_(table), values_(table.Definition().Fields.size()) {}

    NamedRow& Set(std::string_view column, Value value);
    std::span<const Value> Values() const { return values_; }

private:
    const JetTable& table_;
    std::vector<Value> values_;
};

}  // namespace quillform::jet
