#include <cstdio>
#include <iostream>
#include <istream>
#include <iterator>

#include "cli/Command.h"
#include "cli/InputFiles.h"
#include "cli/RowWriter.h"
#include "cli/RunClock.h"
#include "cli/TerminalUser.h"
#include "data/Engine.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace quillform::cli {

namespace {

struct OpenedDatabase {
    RunClock clock{std::nullopt};
    std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
    std::unique_ptr<Database> database;

    OpenedDatabase(const std::string& path, Access access) {
        database = engine->OpenDatabase(ExistingFile("database", path, ErrorNumber::FileMissing).string(), access);
    }
};

void Print(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

// tables

constexpr Switch tablesSwitches[] = {
    {'l', "long", "", "also the number of rows and of columns, with tabs between"},
    {'c', "columns", "", "also the columns of each table, with type and size"},
    {'s', "system", "", "also the engine's own and hidden tables"},
    {0, "json", "", "as JSON"},
};

std::int64_t CountRows(Database& database, const TableDef& table) {
    const auto count =
        database.OpenRecordset("SELECT Count(*) AS n FROM [" + table.Name + "]", RecordsetType::Snapshot);
    return static_cast<std::int64_t>(NumberOf(count->Value(0)));
}

std::string ColumnLine(const Field& field) {
    std::string line = "\t" + field.Name + "\t" + std::string(FieldTypeName(field.Type));
    if (field.Size > 0 && field.Type == FieldType::Text) line += "(" + std::to_string(field.Size) + ")";
    if (field.AutoNumber) line += " autonumber";
    if (field.Required) line += " required";
    return line + "\n";
}

std::string JsonColumns(const TableDef& table) {
    std::string json = "[";
    for (const Field& field : table.Fields) {
        if (json.size() > 1) json += ", ";
        json += "{\"name\": ";
        AppendJsonText(field.Name, json);
        json += ", \"type\": ";
        AppendJsonText(FieldTypeName(field.Type), json);
        json += ", \"size\": " + std::to_string(field.Size) + "}";
    }
    return json + "]";
}

std::string JsonTable(Database& database, const TableDef& table) {
    std::string json = "{\"name\": ";
    AppendJsonText(table.Name, json);
    json += std::string(", \"system\": ") + (table.IsSystem ? "true" : "false");
    json += std::string(", \"linked\": ") + (table.IsLinked ? "true" : "false");
    json += ", \"rows\": " + (table.IsLinked ? "null" : std::to_string(CountRows(database, table)));
    return json + ", \"columns\": " + JsonColumns(table) + "}";
}

std::string TableLines(Database& database, const TableDef& table, const Arguments& arguments) {
    std::string text = table.Name;
    if (arguments.Has("long")) {
        text += "\t" + (table.IsLinked ? "linked" : std::to_string(CountRows(database, table)));
        text += "\t" + std::to_string(table.Fields.size());
    }
    text += "\n";
    if (arguments.Has("columns"))
        for (const Field& field : table.Fields) text += ColumnLine(field);
    return text;
}

ExitCode ListTables(const Arguments& arguments) {
    arguments.ExpectOperands(1, 1, "DATABASE");
    const OpenedDatabase opened(arguments.Operands()[0], Access::ReadOnly);
    const bool isJson = arguments.Has("json");
    std::string text = isJson ? "[" : "";
    for (const TableDef& table : opened.database->TableDefs()) {
        if (table.IsSystem && !arguments.Has("system")) continue;
        if (isJson)
            text += (text.size() > 1 ? ",\n" : "\n") + JsonTable(*opened.database, table);
        else
            text += TableLines(*opened.database, table, arguments);
    }
    Print(isJson ? text + "\n]\n" : text);
    return ExitCode::Done;
}

// sql and export

constexpr Switch sqlSwitches[] = {
    {'o', "output", "FILE", "write the rows here instead of to standard output"},
    {0, "json", "", "rows as a JSON array of objects"},
    {0, "no-header", "", "no line of column names"},
    {0, "write", "", "allow DELETE, INSERT and UPDATE"},
};

RowFormat FormatOf(const Arguments& arguments) {
    if (arguments.Has("json")) return RowFormat::Json;
    return arguments.Has("no-header") ? RowFormat::CsvWithoutHeader : RowFormat::Csv;
}

ExitCode WriteTo(const Arguments& arguments, Recordset& records) {
    const std::string target = arguments.Value("output").value_or("-");
    const std::filesystem::path path = target == "-" ? std::filesystem::path(target) : TargetPath(target);
    ExpectOtherFile(path, ExistingFile("database", arguments.Operands()[0], ErrorNumber::FileMissing));
    OutputFile out(path);
    const InterruptGuard guard;  // so that the unfinished file is taken away
    if (!WriteRows(records, FormatOf(arguments), out, InterruptGuard::IsInterrupted)) {
        TerminalUser({}).Message("The writing of the rows was interrupted.", {});
        return ExitCode::Interrupted;
    }
    out.Commit();
    return ExitCode::Done;
}

bool IsAction(std::string_view statement) {
    const std::string_view trimmed =
        statement.substr(std::min(statement.find_first_not_of(" \t\r\n"), statement.size()));
    const std::string word = UpperCase(trimmed.substr(0, 6));
    return word == "DELETE" || word == "INSERT" || word == "UPDATE";
}

ExitCode RunStatement(const Arguments& arguments) {
    arguments.ExpectOperands(2, 2, "DATABASE and STATEMENT");
    std::string statement = arguments.Operands()[1];
    if (statement == "-") statement.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
    if (!IsAction(statement)) {
        const OpenedDatabase opened(arguments.Operands()[0], Access::ReadOnly);
        return WriteTo(arguments, *opened.database->OpenRecordset(statement, RecordsetType::Snapshot));
    }
    if (!arguments.Has("write")) throw UsageError("a statement that changes the database needs --write");
    const OpenedDatabase opened(arguments.Operands()[0], Access::ReadWrite);
    Print(std::to_string(opened.database->Execute(statement)) + "\n");
    return ExitCode::Done;
}

constexpr Switch exportSwitches[] = {
    {'o', "output", "FILE", "write the rows here instead of to standard output"},
    {0, "json", "", "rows as a JSON array of objects"},
    {0, "no-header", "", "no line of column names"},
};

/// The table of that name, else the first one whose name differs in case only.
const TableDef& FindTable(const Database& database, const std::string& name) {
    if (const TableDef* exact = database.FindTable(name)) return *exact;
    for (const TableDef& table : database.TableDefs())
        if (EqualCaseBlind(table.Name, name)) return table;
    throw RunTimeError(ErrorNumber::TableNotFound,
                       "The database \"" + database.Name() + "\" has no table \"" + name + "\".");
}

ExitCode ExportTable(const Arguments& arguments) {
    arguments.ExpectOperands(2, 2, "DATABASE and TABLE");
    const OpenedDatabase opened(arguments.Operands()[0], Access::ReadOnly);
    const TableDef& table = FindTable(*opened.database, arguments.Operands()[1]);
    const auto rows = opened.database->OpenRecordset("SELECT * FROM [" + table.Name + "]", RecordsetType::Snapshot);
    return WriteTo(arguments, *rows);
}

// info

constexpr Switch infoSwitches[] = {{0, "json", "", "as JSON"}};

ExitCode TellFacts(const Arguments& arguments) {
    arguments.ExpectOperands(1, 1, "DATABASE");
    const std::filesystem::path path = ExistingFile("database", arguments.Operands()[0], ErrorNumber::FileMissing);
    std::string text = arguments.Has("json") ? "{" : "";
    for (const auto& [name, value] : data::FactsOf(path)) {
        if (!arguments.Has("json")) {
            text += name + ": " + value + "\n";
            continue;
        }
        if (text.size() > 1) text += ", ";
        AppendJsonText(name, text);
        text += ": ";
        AppendJsonText(value, text);
    }
    Print(arguments.Has("json") ? text + "}\n" : text);
    return ExitCode::Done;
}

}  // namespace

const Verb tablesVerb = {"tables", "DATABASE", "Lists the tables of a database.", {}, tablesSwitches, ListTables};
const Verb sqlVerb = {
    "sql",
    "DATABASE STATEMENT",
    "Runs one statement of the report dialect and writes its rows as CSV.",
    "STATEMENT may be - to read it from standard input. Dates are written as 1998-12-31 23:59:00, Nulls as\n"
    "empty fields. A statement that changes rows writes the number of rows it changed.",
    sqlSwitches,
    RunStatement};
const Verb exportVerb = {"export", "DATABASE TABLE", "Writes all rows of a table as CSV.",
                         {},       exportSwitches,   ExportTable};
const Verb infoVerb = {"info", "DATABASE", "Tells what a database file is.", {}, infoSwitches, TellFacts};

}  // namespace quillform::cli
