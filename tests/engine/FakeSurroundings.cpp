#include "engine/FakeSurroundings.h"

#include <algorithm>

#include "PlainItem.h"

namespace quillform::testing {

namespace {

std::unique_ptr<Recordset> CatalogRecords(const std::vector<CatalogRow>& rows) {
    const auto text = [](std::string name) {
        return Field{.Name = std::move(name), .Type = FieldType::Text, .Size = 50};
    };
    const auto flag = [](std::string name) {
        return Field{.Name = std::move(name), .Type = FieldType::Boolean, .Size = 1};
    };
    std::vector<Field> fields = {{.Name = "ID", .Type = FieldType::Integer, .Size = 2},
                                 text("Field"),
                                 text("Table"),
                                 text("Text"),
                                 {.Name = "Default Length", .Type = FieldType::Integer, .Size = 2},
                                 text("Mask"),
                                 flag("Numeric"),
                                 flag("Is Text Date"),
                                 flag("Formula Flag"),
                                 text("Alias Name"),
                                 {.Name = "Function Code", .Type = FieldType::Integer, .Size = 2},
                                 text("Parameter 1"),
                                 text("Parameter 2")};
    Rows records;
    for (const CatalogRow& row : rows)
        records.push_back({Value::Integer(row.id), Value::Text(row.field), Value::Text(row.table),
                           Value::Text(row.text), Value::Integer(row.defaultLength), Value::Text(row.mask),
                           Value::Boolean(row.numeric), Value::Boolean(row.isTextDate), Value::Boolean(row.formulaFlag),
                           Value::Text(row.aliasName), Value::Integer(row.functionCode), Value::Text(row.parameter1),
                           Value::Text(row.parameter2)});
    return std::make_unique<FakeRecordset>(std::move(fields), std::move(records));
}

/// The columns that the statement names, in its order.
std::unique_ptr<Recordset> Projected(std::string_view statement, const std::vector<Field>& fields, const Rows& rows) {
    std::vector<std::size_t> positions;
    const std::string_view list = statement.substr(0, statement.find(" FROM "));
    for (std::size_t at = list.find("].["); at != std::string_view::npos; at = list.find("].[", at + 1)) {
        const std::string_view name = list.substr(at + 3, list.find(']', at + 3) - at - 3);
        for (std::size_t i = 0; i < fields.size(); ++i)
            if (fields[i].Name == name) positions.push_back(i);
    }
    std::vector<Field> picked;
    for (const std::size_t i : positions) picked.push_back(fields[i]);
    Rows records;
    for (const auto& row : rows) {
        records.emplace_back();
        for (const std::size_t i : positions) records.back().push_back(row[i]);
    }
    return std::make_unique<FakeRecordset>(std::move(picked), std::move(records));
}

}  // namespace

const std::string FakeEngine::reportDatabase = QUILLFORM_SOURCE_DIR "/README.md";

std::unique_ptr<Recordset> FakeDatabase::OpenRecordset(std::string_view source, RecordsetType, RecordsetOption) {
    if (source.find("Report - Index") != std::string_view::npos) return CatalogRecords(data_.catalog);
    if (source.find("Report - Relation") != std::string_view::npos) {
        std::vector<Field> fields;
        for (const char* name : {"Table1", "Table2", "Field1", "Field2"})
            fields.push_back({.Name = name, .Type = FieldType::Text, .Size = 50});
        return std::make_unique<FakeRecordset>(std::move(fields), Rows{});
    }
    data_.statements.emplace_back(source);
    if (source.find(" GROUP BY ") != std::string_view::npos)
        return Projected(source, {data_.fields[static_cast<std::size_t>(data_.keyColumn)]}, data_.keys);
    if (source.find(" WHERE ") != std::string_view::npos && data_.groupRows)
        return Projected(source, data_.fields, data_.groupRows(source));
    return Projected(source, data_.fields, data_.rows);
}

Scene::Scene(std::vector<Field> fields, Rows rows) {
    data.fields = std::move(fields);
    data.rows = std::move(rows);
    int id = 0;
    for (const Field& field : data.fields) {
        CatalogRow row;
        row.id = ++id;
        row.table = "T";
        row.field = field.Name;
        row.numeric =
            field.Type != FieldType::Text && field.Type != FieldType::Date && field.Type != FieldType::Boolean;
        row.aliasName = " ";
        data.catalog.push_back(row);
    }
    layout.ClearLayout();
    layout.settings.strDatabase[1] = FakeEngine::reportDatabase;
    layout.settings.intCharChange1 = 50;
    layout.settings.intCharChange2 = 50;
}

clssFields& Scene::Add(int code, float top, float left, int length, std::string text) {
    clssFields item = PlainItem(left, top, length, std::move(text), code, "Times New Roman");
    item.Index = static_cast<std::int16_t>(layout.Fields.Count() + 1);
    return layout.Fields.Add(item);
}

void Scene::GroupBy(int column) {
    data.keyColumn = column;
    std::vector<Value> seen;
    const auto index = static_cast<std::size_t>(column);
    for (const auto& row : data.rows)
        if (std::find(seen.begin(), seen.end(), row[index]) == seen.end()) seen.push_back(row[index]);
    for (const Value& key : seen) data.keys.push_back({key});
    data.groupRows = [this, index](std::string_view statement) {
        Rows rows;
        for (const auto& row : data.rows) {
            const std::string term = row[index].IsNull() ? " Is Null" : " = '" + GeneralText(row[index]) + "'";
            if (statement.find(term) != std::string_view::npos) rows.push_back(row);
        }
        return rows;
    };
}

RunOutcome Scene::Run(Output& output, RunOptions options) {
    FakeEngine engine(data, made);
    ReportRun run(layout, output, {engine, user, *runClock, measure}, options);
    return run.ProcessReport();
}

}  // namespace quillform::testing
