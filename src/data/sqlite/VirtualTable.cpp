#include "data/sqlite/VirtualTable.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "data/columns/FieldValue.h"
#include "platform/Dates.h"
#include "platform/RunTimeError.h"

namespace quillform::sqlite {
namespace {

using data::CachedTable;
using data::Column;
using data::CompareClass;
using data::RowPosition;

constexpr int scanAll = 0;
constexpr int findRowId = 1;
constexpr int findColumn = 2;  // 2 + column

struct Table : sqlite3_vtab {
    TableModule* module;
    std::size_t table;
};

struct Cursor : sqlite3_vtab_cursor {
    std::shared_ptr<CachedTable> rows;
    std::vector<std::shared_ptr<const Column>> columns;  // by position; those that the statement reads
    bool isLoaded = false;
    std::span<const RowPosition> found;  // the rows of a lookup
    bool walksFound = false;
    RowPosition single = data::noRow;
    std::size_t at = 0;
    std::size_t end = 0;

    RowPosition Current() const { return walksFound ? found[at] : static_cast<RowPosition>(at); }
};

Table& Of(sqlite3_vtab* table) { return *static_cast<Table*>(table); }
Cursor& Of(sqlite3_vtab_cursor* cursor) { return *static_cast<Cursor*>(cursor); }

/// Runs a callback; what it throws goes through SQLite as an error code and leaves by Connection::Fail.
template <class Body>
int Guarded(sqlite3_vtab* table, Body body) noexcept {
    try {
        return body();
    } catch (const std::exception& error) {
        Of(table).module->connection.KeepError();
        sqlite3_free(table->zErrMsg);
        table->zErrMsg = sqlite3_mprintf("%s", error.what());
        return SQLITE_ERROR;
    }
}

const char* DeclaredType(FieldType type) {
    switch (data::KindOf(type)) {
        case ValueKind::Boolean:
        case ValueKind::Integer:
            return "INTEGER";
        case ValueKind::Currency:
        case ValueKind::Single:
        case ValueKind::Double:
        case ValueKind::Date:
        case ValueKind::Decimal:
            return "REAL";
        case ValueKind::Text:
        case ValueKind::Guid:
            return "TEXT COLLATE QFTEXT";
        case ValueKind::Null:
        case ValueKind::Binary:
            return "BLOB";
    }
    return "BLOB";
}

std::string Declaration(const TableDef& definition) {
    std::string text = "CREATE TABLE t(";
    for (const Field& field : definition.Fields) {
        if (text.back() != '(') text += ", ";
        text += Quoted(field.Name) + ' ' + DeclaredType(field.Type);
    }
    return text + ')';
}

int Connect(sqlite3* handle, void* context, int count, const char* const* arguments, sqlite3_vtab** made,
            char** message) {
    auto& module = *static_cast<TableModule*>(context);
    try {
        const auto number = static_cast<std::size_t>(std::strtoull(count > 3 ? arguments[3] : "0", nullptr, 10));
        const TableDef& definition = module.cache.Stored().Tables().at(number);
        if (definition.Fields.empty())  // every table has columns when it is whole
            throw RunTimeError(ErrorNumber::UnrecognizedFormat,
                               "The table \"" + definition.Name + "\" is damaged: its columns can't be read.");
        if (const int code = sqlite3_declare_vtab(handle, Declaration(definition).c_str()); code != SQLITE_OK)
            return code;
        auto* table = new Table{};
        table->module = &module;
        table->table = number;
        *made = table;
        return SQLITE_OK;
    } catch (const std::exception& error) {
        module.connection.KeepError();
        *message = sqlite3_mprintf("%s", error.what());
        return SQLITE_ERROR;
    }
}

int Disconnect(sqlite3_vtab* table) {
    delete &Of(table);
    return SQLITE_OK;
}

/// How many rows an equality lookup gives, as far as can be told without reading the table.
double RowsPerValue(const CachedTable& rows, int column) {
    const auto total = static_cast<double>(std::max<std::int64_t>(rows.RowEstimate(), 1));
    if (const auto* index = rows.ExistingIndex({column}))
        return std::max(1.0, total / static_cast<double>(std::max<std::size_t>(index->Groups(), 1)));
    const std::string& name = rows.Definition().Fields[static_cast<std::size_t>(column)].Name;
    for (const IndexDef& index : rows.Definition().Indexes)
        if ((index.Primary || index.Unique) && index.Columns.size() == 1 && index.Columns[0].Name == name) return 1;
    return std::max(2.0, total / 20);
}

bool CanFind(const TableDef& definition, int column) {
    return data::ClassOf(data::KindOf(definition.Fields[static_cast<std::size_t>(column)].Type)) != CompareClass::Bytes;
}

bool CollationFits(const TableDef& definition, sqlite3_index_info* info, int constraint, int column) {
    if (data::ClassOf(data::KindOf(definition.Fields[static_cast<std::size_t>(column)].Type)) != CompareClass::Text)
        return true;
    return std::string_view(sqlite3_vtab_collation(info, constraint)) == "QFTEXT";
}

int BestIndex(sqlite3_vtab* table, sqlite3_index_info* info) {
    return Guarded(table, [&] {
        const std::shared_ptr<CachedTable> rows = Of(table).module->cache.Get(Of(table).table);
        const TableDef& definition = rows->Definition();
        double fewest = static_cast<double>(std::max<std::int64_t>(rows->RowEstimate(), 1));
        info->idxNum = scanAll;
        int used = -1;
        for (int i = 0; i < info->nConstraint; ++i) {
            const auto& constraint = info->aConstraint[i];
            if (!constraint.usable || constraint.op != SQLITE_INDEX_CONSTRAINT_EQ) continue;
            const int column = constraint.iColumn;
            if (column >= 0 && (!CanFind(definition, column) || !CollationFits(definition, info, i, column))) continue;
            const double expected = column < 0 ? 1 : RowsPerValue(*rows, column);
            if (used >= 0 && expected >= fewest) continue;
            fewest = std::min(fewest, expected);
            used = i;
            info->idxNum = column < 0 ? findRowId : findColumn + column;
        }
        // `omit` stays 0: SQLite checks the found rows again, so a value of another type than the column's can fall
        // back to walking all rows.
        if (used >= 0) info->aConstraintUsage[used].argvIndex = 1;
        info->estimatedRows = static_cast<sqlite3_int64>(fewest);
        info->estimatedCost = used >= 0 ? fewest + 2 : fewest + 10;
        if (info->idxNum == findRowId) info->idxFlags = SQLITE_INDEX_SCAN_UNIQUE;
        info->idxStr = sqlite3_mprintf("%llx", static_cast<unsigned long long>(info->colUsed));
        info->needToFreeIdxStr = 1;
        return SQLITE_OK;
    });
}

int Open(sqlite3_vtab* table, sqlite3_vtab_cursor** made) {
    return Guarded(table, [&] {
        auto cursor = std::make_unique<Cursor>();
        cursor->rows = Of(table).module->cache.Get(Of(table).table);
        *made = cursor.release();
        return SQLITE_OK;
    });
}

int Close(sqlite3_vtab_cursor* cursor) {
    delete &Of(cursor);
    return SQLITE_OK;
}

/// Decodes the columns that the statement reads, all in one pass. The last bit of the mask stands for all columns from
/// the 64th on.
void LoadColumns(Cursor& cursor, std::uint64_t mask) {
    const std::size_t count = cursor.rows->Definition().Fields.size();
    std::vector<int> wanted;
    for (std::size_t i = 0; i < count; ++i)
        if (mask >> std::min<std::size_t>(i, 63) & 1) wanted.push_back(static_cast<int>(i));
    cursor.rows->Load(wanted);
    cursor.columns.resize(count);
    for (const int column : wanted) cursor.columns[static_cast<std::size_t>(column)] = cursor.rows->Get({column});
    cursor.isLoaded = true;
}

void WalkAll(Cursor& cursor) {
    cursor.walksFound = false;
    cursor.at = 0;
    cursor.end = cursor.rows->RowCount();
}

void WalkFound(Cursor& cursor, std::span<const RowPosition> found) {
    cursor.walksFound = true;
    cursor.found = found;
    cursor.at = 0;
    cursor.end = found.size();
}

void FindByColumn(Cursor& cursor, int column, sqlite3_value* sought) {
    const auto kind = data::KindOf(cursor.rows->Definition().Fields[static_cast<std::size_t>(column)].Type);
    const bool isText = data::ClassOf(kind) == CompareClass::Text;
    const data::ColumnIndex& index = cursor.rows->Index({column});
    switch (sqlite3_value_type(sought)) {
        case SQLITE_NULL:
            return WalkFound(cursor, {});
        case SQLITE_INTEGER:
            if (isText) break;
            return WalkFound(cursor, index.FindKey(data::EqualityKey(std::int64_t{sqlite3_value_int64(sought)})));
        case SQLITE_FLOAT:
            if (isText) break;
            return WalkFound(cursor, index.FindKey(data::EqualityKey(sqlite3_value_double(sought))));
        case SQLITE_TEXT: {
            if (!isText) break;
            const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(sought));
            return WalkFound(cursor, index.FindText({text, static_cast<std::size_t>(sqlite3_value_bytes(sought))}));
        }
        default:
            break;
    }
    WalkAll(cursor);
}

int Filter(sqlite3_vtab_cursor* base, int plan, const char* mask, int count, sqlite3_value** values) {
    return Guarded(base->pVtab, [&] {
        Cursor& cursor = Of(base);
        if (!cursor.isLoaded) LoadColumns(cursor, std::strtoull(mask ? mask : "0", nullptr, 16));
        if (plan == scanAll || count == 0) {
            WalkAll(cursor);
        } else if (plan == findRowId) {
            cursor.single = cursor.rows->Find(sqlite3_value_int64(values[0]));
            WalkFound(cursor, std::span(&cursor.single, cursor.single == data::noRow ? 0 : 1));
        } else {
            FindByColumn(cursor, plan - findColumn, values[0]);
        }
        return SQLITE_OK;
    });
}

int Next(sqlite3_vtab_cursor* cursor) {
    ++Of(cursor).at;
    return SQLITE_OK;
}

int AtEnd(sqlite3_vtab_cursor* cursor) { return Of(cursor).at >= Of(cursor).end; }

int GiveColumn(sqlite3_vtab_cursor* base, sqlite3_context* context, int number) {
    const Cursor& cursor = Of(base);
    if (sqlite3_vtab_nochange(context)) return SQLITE_OK;
    const Column* column = cursor.columns[static_cast<std::size_t>(number)].get();
    if (!column) return SQLITE_OK;  // not in the mask: nobody looks
    const RowPosition row = cursor.Current();
    if (column->IsNull(row)) return SQLITE_OK;
    switch (column->Kind()) {
        case ValueKind::Null:
            break;
        case ValueKind::Boolean:
            sqlite3_result_int(context, column->Whole(row) != 0 ? -1 : 0);
            break;
        case ValueKind::Integer:
            sqlite3_result_int64(context, column->Whole(row));
            break;
        case ValueKind::Currency:
        case ValueKind::Single:
        case ValueKind::Double:
        case ValueKind::Date:
        case ValueKind::Decimal:
            sqlite3_result_double(context, column->Number(row));
            break;
        case ValueKind::Text:
        case ValueKind::Guid: {
            // The cursor keeps the column, and SQLite copies what outlives the row.
            const std::string_view text = column->Text(row);
            sqlite3_result_text64(context, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
            break;
        }
        case ValueKind::Binary: {
            const std::string_view bytes = column->Text(row);
            sqlite3_result_blob64(context, bytes.data(), bytes.size(), SQLITE_STATIC);
            break;
        }
    }
    return SQLITE_OK;
}

int GiveRowId(sqlite3_vtab_cursor* base, sqlite3_int64* id) {
    *id = Of(base).rows->IdAt(Of(base).Current());
    return SQLITE_OK;
}

ValueView ViewOf(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_NULL:
            return {};
        case SQLITE_INTEGER:
            return {ValueKind::Integer, sqlite3_value_int64(value), 0, {}};
        case SQLITE_FLOAT:
            return {ValueKind::Double, 0, sqlite3_value_double(value), {}};
        default:
            break;
    }
    const bool isText = sqlite3_value_type(value) == SQLITE_TEXT;
    const auto* bytes = static_cast<const char*>(sqlite3_value_blob(value));
    return {isText ? ValueKind::Text : ValueKind::Binary,
            0,
            0,
            {bytes ? bytes : "", static_cast<std::size_t>(sqlite3_value_bytes(value))}};
}

int Update(sqlite3_vtab* base, int count, sqlite3_value** values, sqlite3_int64* newId) {
    return Guarded(base, [&] {
        TableModule& module = *Of(base).module;
        const std::size_t number = Of(base).table;
        const std::vector<Field>& fields = module.cache.Stored().Tables()[number].Fields;
        const int year = PartsOf(module.clock.Now()).year;
        const auto valueFor = [&](std::size_t i) {
            return data::ValueForField(fields[i], ViewOf(values[i + 2]), year);
        };
        if (count == 1) {
            const data::RowId id = sqlite3_value_int64(values[0]);
            module.cache.ChangeRows(number, [&](data::StoredTable& rows) { rows.Delete(id); });
        } else if (sqlite3_value_type(values[0]) == SQLITE_NULL) {
            std::vector<Value> row;
            for (std::size_t i = 0; i < fields.size(); ++i) row.push_back(valueFor(i));
            *newId = module.cache.ChangeRows(number, [&](data::StoredTable& rows) { return rows.Insert(row); });
        } else {
            std::vector<std::pair<int, Value>> changes;
            for (std::size_t i = 0; i < fields.size(); ++i)
                if (!sqlite3_value_nochange(values[i + 2])) changes.emplace_back(static_cast<int>(i), valueFor(i));
            const data::RowId id = sqlite3_value_int64(values[0]);
            module.cache.ChangeRows(number, [&](data::StoredTable& rows) { rows.Update(id, changes); });
        }
        return SQLITE_OK;
    });
}

const sqlite3_module methods = [] {
    sqlite3_module table{};
    table.iVersion = 1;
    table.xCreate = Connect;
    table.xConnect = Connect;
    table.xBestIndex = BestIndex;
    table.xDisconnect = Disconnect;
    table.xDestroy = Disconnect;
    table.xOpen = Open;
    table.xClose = Close;
    table.xFilter = Filter;
    table.xNext = Next;
    table.xEof = AtEnd;
    table.xColumn = GiveColumn;
    table.xRowid = GiveRowId;
    table.xUpdate = Update;
    return table;
}();

}  // namespace

void AddTableModule(TableModule& module) {
    const int code = sqlite3_create_module_v2(module.connection.Handle(), "quillform", &methods, &module, nullptr);
    if (code != SQLITE_OK) module.connection.Fail(code);
}

void DeclareTable(TableModule& module, std::size_t table) {
    module.connection.Execute("CREATE VIRTUAL TABLE " + Quoted(module.cache.Stored().Tables()[table].Name) +
                              " USING quillform(" + std::to_string(table) + ')');
}

}  // namespace quillform::sqlite
