#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/RunTimeError.h"
#include "platform/Value.h"

namespace quillform {

/// Column types with the data layer's own published numbers.
enum class FieldType : std::int16_t {
    Boolean = 1,
    Byte = 2,
    Integer = 3,
    Long = 4,
    Currency = 5,
    Single = 6,
    Double = 7,
    Date = 8,
    Binary = 9,
    Text = 10,
    LongBinary = 11,
    Memo = 12,
    Guid = 15,
    Decimal = 20,
};

/// Whether values of the type are numbers to count and calculate with; Boolean and Date aren't.
bool IsNumber(FieldType type);

/// "Text", "Currency", ...: for people.
std::string_view FieldTypeName(FieldType type);

/// One column of a table or of a result.
struct Field {
    std::string Name;
    FieldType Type = FieldType::Text;
    /// Text: characters. Others: bytes (Boolean 1, Integer 2, Long 4, Currency 8, Date 8, ...). Memo and LongBinary: 0.
    int Size = 0;
    bool Required = false;
    bool AutoNumber = false;
    int Precision = 0;  ///< Decimal only
    int Scale = 0;      ///< Decimal only

    friend bool operator==(const Field&, const Field&) = default;
};

/// One index of a table, for readers and for tables that are made.
struct IndexDef {
    struct Column {
        std::string Name;
        bool Descending = false;
        friend bool operator==(const Column&, const Column&) = default;
    };
    std::string Name;
    std::vector<Column> Columns;
    bool Primary = false;
    bool Unique = false;
    bool Foreign = false;
    bool IgnoreNulls = false;
    bool Required = false;

    friend bool operator==(const IndexDef&, const IndexDef&) = default;
};

struct TableDef {
    std::string Name;
    std::vector<Field> Fields;  ///< in display order
    std::vector<IndexDef> Indexes;
    bool IsSystem = false;  ///< the engine's own or hidden: not offered to users
    bool IsLinked = false;  ///< lives in another file; its rows can't be read here

    /// Position of the field, names compared case-blind; -1 if there is none.
    int FindField(std::string_view name) const;
};

/// A relation between two tables as the file itself keeps it. `Fields[i]` of `Table` (the one side) goes with
/// `ForeignFields[i]` of `ForeignTable` (the many side).
struct Relation {
    std::string Name;
    std::string Table;
    std::string ForeignTable;
    std::vector<std::string> Fields;
    std::vector<std::string> ForeignFields;
};

enum class RecordsetType { Dynaset = 2, Snapshot = 4 };
enum class RecordsetOption { None = 0, AppendOnly = 8 };

/// Rows of a table or a statement, one of them current. After opening, the first row is current, or IsEOF and IsBOF are
/// both true if there is none. Not to be shared between threads.
///
/// A snapshot keeps its rows packed and typed, is walked any number of times, and can't be changed. A dynaset keeps row
/// identities and reads each row when it becomes current.
class Recordset {
public:
    virtual ~Recordset() = default;

    // The data layer's words are EOF and BOF; EOF is a macro of <cstdio>, hence the question form.
    virtual bool IsEOF() const = 0;
    virtual bool IsBOF() const = 0;
    virtual void MoveFirst() = 0;
    virtual void MoveNext() = 0;
    virtual void MovePrevious() = 0;
    virtual void MoveLast() = 0;
    /// Number of rows. A snapshot knows it at once.
    virtual std::int64_t RecordCount() const = 0;

    virtual const std::vector<Field>& Fields() const = 0;
    /// Position of a result column: by plain field name or alias, case-blind; `Table.Field` also serves. -1 if none.
    virtual int FindField(std::string_view name) const = 0;
    /// Value in the current row; valid until the next move, edit or update.
    /// RunTimeError NoCurrentRecord at EOF or BOF.
    virtual ValueView Value(int column) const = 0;

    // Dynasets only; NotSupported or ReadOnly elsewhere.
    virtual void AddNew() = 0;
    virtual void Edit() = 0;
    /// Puts a value into the record that AddNew or Edit opened. Converted to the column's type; ValueTooLong,
    /// DataTypeMismatch where that can't be.
    virtual void SetValue(int column, const ValueView& value) = 0;
    /// Stores the record: whole or not at all.
    virtual void Update() = 0;
    virtual void CancelUpdate() = 0;
    virtual void Delete() = 0;
    /// Makes the first row that meets the criteria (a WHERE expression) current; NoMatch tells.
    virtual void FindFirst(std::string_view criteria) = 0;
    virtual bool NoMatch() const = 0;
    /// Identity of the current row, opaque; good for this record set only.
    virtual std::int64_t Bookmark() const = 0;
    virtual void SetBookmark(std::int64_t bookmark) = 0;
    virtual std::int64_t LastModified() const = 0;
    /// Position of the current row from 0; -1 if there is none.
    virtual std::int64_t AbsolutePosition() const = 0;

    // Convenience over the operations above.
    ValueView Value(std::string_view name) const;  ///< RunTimeError ItemNotFound
    std::string Text(int column) const;            ///< general text; empty for Null
    std::string Text(std::string_view name) const;
    void SetValue(std::string_view name, const ValueView& value);
    bool HasRows() const { return !(IsEOF() && IsBOF()); }
};

/// One open database, `.mdb` or SQLite. Closing is destruction.
class Database {
public:
    virtual ~Database() = default;

    virtual const std::string& Name() const = 0;  ///< path as opened
    /// All tables in the engine's order, system tables among them. Valid until a table is made or dropped.
    virtual const std::vector<TableDef>& TableDefs() const = 0;
    /// Exact name, case counted, as the catalog check asks for it; null if there is none.
    const TableDef* FindTable(std::string_view name) const;

    virtual std::vector<Relation> Relations() const = 0;
    /// Makes an empty table: TableDefs.Append. TableExists if the name is taken.
    virtual void AppendTable(const TableDef& table) = 0;
    virtual void DropTable(std::string_view name) = 0;

    /// `source` is a SELECT statement or a table name.
    virtual std::unique_ptr<Recordset> OpenRecordset(std::string_view source, RecordsetType type,
                                                     RecordsetOption option = RecordsetOption::None) = 0;
    /// Runs an action statement (DELETE, INSERT, UPDATE); gives the number of rows it touched.
    virtual std::int64_t Execute(std::string_view statement) = 0;

    // Many updates as one: nothing reaches the file before CommitTrans, Rollback drops it all.
    virtual void BeginTrans() = 0;
    virtual void CommitTrans() = 0;
    virtual void Rollback() = 0;
};

/// Version argument of CreateDatabase. The first four are the numbers of the described formats. Jet 1.0, 1.1 and 2.0
/// make a file of Jet 3.0, too: no program of today reads theirs, and all that read .mdb files at all read that one.
enum class DatabaseVersion : int { Jet10 = 1, Jet11 = 8, Jet20 = 16, Jet30 = 32, Jet40 = 64, Sqlite = 1000 };

enum class Access { ReadWrite, ReadOnly };

/// Opens and makes databases. The engine gets one handed in and knows no file format.
class DBEngine {
public:
    virtual ~DBEngine() = default;
    /// RunTimeError FileMissing, UnrecognizedFormat, PasswordRequired, Locked, NoPermission. A file that can only be
    /// read opens for reading; the first write then fails with ReadOnly.
    virtual std::unique_ptr<Database> OpenDatabase(std::string_view path, Access access = Access::ReadWrite) = 0;
    /// Makes an empty database file; TableExists' sibling for files: PermissionDenied if the file exists.
    virtual std::unique_ptr<Database> CreateDatabase(std::string_view path, DatabaseVersion version) = 0;
};

}  // namespace quillform
