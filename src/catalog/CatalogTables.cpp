#include "catalog/CatalogTables.h"

#include "platform/Text.h"

namespace quillform {

namespace {

/// Reads columns by position; -1, a column that the table lacks, reads as Null.
class ColumnReader {
public:
    explicit ColumnReader(const Recordset& records) : records_(records) {}

    int Find(std::string_view name) const { return records_.FindField(name); }
    std::string Text(int column) const { return GeneralText(At(column)); }
    /// A number outside the range of a code is none.
    std::int32_t Number(int column) const {
        const double number = NumberOf(At(column));
        return number > -1e9 && number < 1e9 ? static_cast<std::int32_t>(number) : 0;
    }
    bool Flag(int column) const { return NumberOf(At(column)) != 0; }

private:
    ValueView At(int column) const { return column < 0 ? ValueView{} : records_.Value(column); }

    const Recordset& records_;
};

std::vector<CatalogRow> ReadIndex(Database& database) {
    const std::unique_ptr<Recordset> records =
        database.OpenRecordset("SELECT * FROM [Report - Index]", RecordsetType::Snapshot);
    const ColumnReader reader(*records);
    const int id = reader.Find("ID");
    const int field = reader.Find("Field");
    const int table = reader.Find("Table");
    const int text = reader.Find("Text");
    const int defaultLength = reader.Find("Default Length");
    const int mask = reader.Find("Mask");
    const int numeric = reader.Find("Numeric");
    const int isTextDate = reader.Find("Is Text Date");
    const int formulaFlag = reader.Find("Formula Flag");
    const int aliasName = reader.Find("Alias Name");
    const int functionCode = reader.Find("Function Code");
    const int parameter1 = reader.Find("Parameter 1");
    const int parameter2 = reader.Find("Parameter 2");

    std::vector<CatalogRow> rows;
    for (; !records->IsEOF(); records->MoveNext())
        rows.push_back({.id = reader.Number(id),
                        .field = reader.Text(field),
                        .table = reader.Text(table),
                        .text = reader.Text(text),
                        .defaultLength = reader.Number(defaultLength),
                        .mask = reader.Text(mask),
                        .numeric = reader.Flag(numeric),
                        .isTextDate = reader.Flag(isTextDate),
                        .formulaFlag = reader.Flag(formulaFlag),
                        .aliasName = reader.Text(aliasName),
                        .functionCode = reader.Number(functionCode),
                        .parameter1 = reader.Text(parameter1),
                        .parameter2 = reader.Text(parameter2)});
    return rows;
}

std::vector<CatalogRelation> ReadRelations(Database& database) {
    const std::unique_ptr<Recordset> records =
        database.OpenRecordset("SELECT * FROM [Report - Relation]", RecordsetType::Snapshot);
    const ColumnReader reader(*records);
    const int table1 = reader.Find("Table1");
    const int table2 = reader.Find("Table2");
    const int field1 = reader.Find("Field1");
    const int field2 = reader.Find("Field2");

    std::vector<CatalogRelation> relations;
    for (; !records->IsEOF(); records->MoveNext())
        relations.push_back({reader.Text(table1), reader.Text(table2), reader.Text(field1), reader.Text(field2)});
    return relations;
}

}  // namespace

Catalog Catalog::Read(Database& database) { return Of(ReadIndex(database), ReadRelations(database)); }

Catalog Catalog::Of(std::vector<CatalogRow> rows, std::vector<CatalogRelation> relations) {
    Catalog catalog;
    catalog.rows_ = std::move(rows);
    catalog.relations_ = std::move(relations);
    for (std::size_t i = 0; i < catalog.rows_.size(); ++i) catalog.byId_.try_emplace(catalog.rows_[i].id, i);
    return catalog;
}

const CatalogRow* Catalog::Find(int id) const {
    const auto found = byId_.find(id);
    return found == byId_.end() ? nullptr : &rows_[found->second];
}

const CatalogRelation* Catalog::FindRelation(std::string_view left, std::string_view right) const {
    for (const CatalogRelation& relation : relations_) {
        const bool isForward = EqualCaseBlind(relation.table1, left) && EqualCaseBlind(relation.table2, right);
        const bool isBackward = EqualCaseBlind(relation.table1, right) && EqualCaseBlind(relation.table2, left);
        if (isForward || isBackward) return &relation;
    }
    return nullptr;
}

}  // namespace quillform
