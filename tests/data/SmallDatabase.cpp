#include "data/SmallDatabase.h"

#include <unistd.h>

#include <cstring>

namespace quillform::data {

Field MakeField(const char* name, FieldType type, int size) {
    Field field;
    field.Name = name;
    field.Type = type;
    field.Size = size;
    return field;
}

TableDef MakeTable(const char* name, std::vector<Field> fields) {
    TableDef table;
    table.Name = name;
    table.Fields = std::move(fields);
    return table;
}

void AddRow(Recordset& rows, const std::vector<const char*>& texts) {
    rows.AddNew();
    for (std::size_t i = 0; i < texts.size(); ++i)
        if (std::strcmp(texts[i], "-") != 0) rows.SetValue(static_cast<int>(i), Value::Text(texts[i]));
    rows.Update();
}

void FillSmall(Database& database) {
    database.AppendTable(
        MakeTable("Members", {MakeField("ID", FieldType::Long), MakeField("Last Name", FieldType::Text, 40),
                              MakeField("Town", FieldType::Text, 20), MakeField("Fee", FieldType::Currency),
                              MakeField("Joined", FieldType::Date), MakeField("Active", FieldType::Boolean),
                              MakeField("Score", FieldType::Double), MakeField("Notes", FieldType::Memo)}));
    database.AppendTable(
        MakeTable("Towns", {MakeField("Town", FieldType::Text, 20), MakeField("Zip", FieldType::Text, 10),
                            MakeField("Big", FieldType::Integer)}));
    database.AppendTable(
        MakeTable("Payments", {MakeField("Member", FieldType::Long), MakeField("Amount", FieldType::Currency),
                               MakeField("Paid", FieldType::Date)}));
    const auto open = [&](const char* table) {
        return database.OpenRecordset(table, RecordsetType::Dynaset, RecordsetOption::AppendOnly);
    };
    const auto members = open("Members");
    AddRow(*members, {"1", "Miller", "Bonn", "12.50", "12/31/1998", "True", "1.5", "first"});
    AddRow(*members, {"2", "adams", "BONN", "7", "1/2/1999 10:30", "False", "2.5", "-"});
    AddRow(*members, {"3", "O'Neill", "Trier", "-", "-", "True", "-1", ""});
    AddRow(*members, {"4", "Adams", "-", "0.0001", "5/6/1985", "False", "4", "last"});
    AddRow(*members, {"5", "Zürn", "Ulm", "100", "1/1/1999", "True", "-", "x"});
    const auto towns = open("Towns");
    AddRow(*towns, {"Bonn", "53111", "1"});
    AddRow(*towns, {"Trier", "54290", "0"});
    AddRow(*towns, {"Kiel", "24103", "1"});
    const auto payments = open("Payments");
    AddRow(*payments, {"1", "10", "1/5/1999"});
    AddRow(*payments, {"1", "2.5", "2/5/1999"});
    AddRow(*payments, {"3", "20", "1/7/1999"});
    AddRow(*payments, {"9", "1", "1/8/1999"});
}

std::string Dump(Recordset& rows) {
    std::string text;
    for (; !rows.IsEOF(); rows.MoveNext()) {
        if (!text.empty()) text += " / ";
        for (int i = 0; i < static_cast<int>(rows.Fields().size()); ++i) {
            if (i > 0) text += '|';
            text += rows.Value(i).IsNull() ? "-" : rows.Text(i);
        }
    }
    return text;
}

std::string Dump(Database& database, std::string_view statement) {
    return Dump(*database.OpenRecordset(statement, RecordsetType::Snapshot));
}

int ErrorOf(Database& database, std::string_view statement) {
    try {
        database.OpenRecordset(statement, RecordsetType::Snapshot);
    } catch (const RunTimeError& error) {
        return static_cast<int>(error.Number());
    }
    return 0;
}

}  // namespace quillform::data
