#include "catalog/CatalogWriter.h"

#include "catalog/CatalogDefinitions.h"
#include "platform/Text.h"

namespace quillform {

namespace {

template <std::size_t count>
std::array<int, count> FindColumns(const Recordset& records, const TableDef& definition) {
    std::array<int, count> columns{};
    for (std::size_t i = 0; i < count; ++i) {
        columns[i] = records.FindField(definition.Fields[i].Name);
        if (columns[i] < 0)
            throw RunTimeError(ErrorNumber::ItemNotFound, "The table \"" + definition.Name + "\" has no column \"" +
                                                              definition.Fields[i].Name + "\".");
    }
    return columns;
}

/// The path is kept for people only, so a long one is cut rather than refused.
std::string CutPath(std::string_view path, const Field& column) {
    return std::string(LeftCharacters(path, static_cast<std::size_t>(column.Size)));
}

ValueView TextView(std::string_view text) { return {ValueKind::Text, 0, 0, text}; }
ValueView IntegerView(std::int64_t number) { return {ValueKind::Integer, number, 0, {}}; }
ValueView BooleanView(bool truth) { return {ValueKind::Boolean, truth ? 1 : 0, 0, {}}; }

/// One record with its values in the order of the definition: stored whole, or dropped if a value is refused.
template <std::size_t count>
void Append(Recordset& records, const std::array<int, count>& columns, const std::array<ValueView, count>& values) {
    records.AddNew();
    try {
        for (std::size_t i = 0; i < count; ++i) records.SetValue(columns[i], values[i]);
        records.Update();
    } catch (const RunTimeError&) {
        records.CancelUpdate();
        throw;
    }
}

}  // namespace

std::int32_t NextCatalogId(Database& database) {
    const std::unique_ptr<Recordset> records =
        database.OpenRecordset("SELECT Max(ID) AS [Max ID] FROM [Report - Index]", RecordsetType::Snapshot);
    return static_cast<std::int32_t>(NumberOf(records->Value("Max ID"))) + 1;
}

IndexWriter::IndexWriter(Recordset& records, std::string_view databasePath)
    : records_(records),
      databasePath_(CutPath(databasePath, IndexTableDef().Fields[1])),
      columns_(FindColumns<15>(records, IndexTableDef())) {}

void IndexWriter::Write(const CatalogRow& row) {
    // The third parameter is always blank; a formula's has a blank in front, as its other two have.
    const std::string_view parameter3 = row.formulaFlag ? "  " : " ";
    Append<15>(
        records_, columns_,
        {IntegerView(row.id), TextView(databasePath_), TextView(row.field), TextView(row.table), TextView(row.text),
         IntegerView(row.defaultLength), TextView(row.mask), BooleanView(row.numeric), BooleanView(row.isTextDate),
         BooleanView(row.formulaFlag), TextView(row.aliasName), IntegerView(row.functionCode), TextView(row.parameter1),
         TextView(row.parameter2), TextView(parameter3)});
}

RelationWriter::RelationWriter(Recordset& records, std::string_view databasePath1, std::string_view databasePath2)
    : records_(records),
      databasePaths_{CutPath(databasePath1, RelationTableDef().Fields[0]),
                     CutPath(databasePath2, RelationTableDef().Fields[1])},
      columns_(FindColumns<6>(records, RelationTableDef())) {}

void RelationWriter::Write(const CatalogRelation& relation) {
    Append<6>(records_, columns_,
              {TextView(databasePaths_[0]), TextView(databasePaths_[1]), TextView(relation.table1),
               TextView(relation.table2), TextView(relation.field1), TextView(relation.field2)});
}

}  // namespace quillform
