#include "catalog/MemoryDatabase.h"

#include "platform/Text.h"

namespace quillform::testing {

namespace {

/// The records of one table, and new ones behind them.
class MemoryRecordset final : public Recordset {
public:
    MemoryRecordset(const TableDef& table, Records& records, int& untilFull)
        : fields_(table.Fields), records_(records), untilFull_(untilFull) {}

    bool IsEOF() const override { return at_ >= records_.size(); }
    bool IsBOF() const override { return records_.empty(); }
    void MoveFirst() override { at_ = 0; }
    void MoveNext() override { ++at_; }
    void MovePrevious() override { --at_; }
    void MoveLast() override { at_ = records_.size() - 1; }
    std::int64_t RecordCount() const override { return static_cast<std::int64_t>(records_.size()); }
    const std::vector<Field>& Fields() const override { return fields_; }
    int FindField(std::string_view name) const override {
        for (std::size_t i = 0; i < fields_.size(); ++i)
            if (EqualCaseBlind(fields_[i].Name, name)) return static_cast<int>(i);
        return -1;
    }
    using Recordset::Value;
    ValueView Value(int column) const override { return records_[at_][static_cast<std::size_t>(column)]; }
    void AddNew() override { fresh_.assign(fields_.size(), quillform::Value()); }
    void Edit() override {}
    using Recordset::SetValue;
    void SetValue(int column, const ValueView& value) override {
        const Field& field = fields_[static_cast<std::size_t>(column)];
        if (field.Type == FieldType::Text && CountCharacters(value.text) > static_cast<std::size_t>(field.Size))
            throw RunTimeError(ErrorNumber::ValueTooLong, "\"" + field.Name + "\" can't hold the text.");
        fresh_[static_cast<std::size_t>(column)] = quillform::Value(value);
    }
    void Update() override {
        if (untilFull_ == 0) throw RunTimeError(ErrorNumber::DiskFull, "The disk is full.");
        if (untilFull_ > 0) --untilFull_;
        records_.push_back(fresh_);
    }
    void CancelUpdate() override { fresh_.clear(); }
    void Delete() override {}
    void FindFirst(std::string_view) override {}
    bool NoMatch() const override { return true; }
    std::int64_t Bookmark() const override { return 0; }
    void SetBookmark(std::int64_t) override {}
    std::int64_t LastModified() const override { return 0; }
    std::int64_t AbsolutePosition() const override { return static_cast<std::int64_t>(at_); }

private:
    std::vector<Field> fields_;
    Records& records_;
    int& untilFull_;
    std::vector<quillform::Value> fresh_;
    std::size_t at_ = 0;
};

/// One record that owns itself: the answer to the question for the highest ID.
class HighestId final : public Recordset {
public:
    explicit HighestId(const Records& index) {
        for (const auto& record : index)
            if (!(NumberOf(record[0]) < NumberOf(highest_))) highest_ = record[0];
    }
    bool IsEOF() const override { return false; }
    bool IsBOF() const override { return false; }
    void MoveFirst() override {}
    void MoveNext() override {}
    void MovePrevious() override {}
    void MoveLast() override {}
    std::int64_t RecordCount() const override { return 1; }
    const std::vector<Field>& Fields() const override { return fields_; }
    int FindField(std::string_view name) const override { return name == "Max ID" ? 0 : -1; }
    using Recordset::Value;
    ValueView Value(int) const override { return highest_; }
    void AddNew() override {}
    void Edit() override {}
    using Recordset::SetValue;
    void SetValue(int, const ValueView&) override {}
    void Update() override {}
    void CancelUpdate() override {}
    void Delete() override {}
    void FindFirst(std::string_view) override {}
    bool NoMatch() const override { return true; }
    std::int64_t Bookmark() const override { return 0; }
    void SetBookmark(std::int64_t) override {}
    std::int64_t LastModified() const override { return 0; }
    std::int64_t AbsolutePosition() const override { return 0; }

private:
    std::vector<Field> fields_{Column("Max ID", FieldType::Integer)};
    quillform::Value highest_;
};

}  // namespace

std::map<std::string, std::string> MemoryFile::Record(const std::string& table, std::size_t position) const {
    std::map<std::string, std::string> record;
    for (const TableDef& definition : tables)
        for (std::size_t i = 0; definition.Name == table && i < definition.Fields.size(); ++i)
            record[definition.Fields[i].Name] = GeneralText(records.at(table).at(position)[i]);
    return record;
}

void MemoryDatabase::AppendTable(const TableDef& table) {
    if (file_.cannotMakeTables) throw RunTimeError(ErrorNumber::ReadOnly, "The database can't be written.");
    for (const TableDef& other : file_.tables)
        if (EqualCaseBlind(other.Name, table.Name))
            throw RunTimeError(ErrorNumber::TableExists, "The table \"" + table.Name + "\" exists.");
    file_.tables.push_back(table);
}

std::unique_ptr<Recordset> MemoryDatabase::OpenRecordset(std::string_view source, RecordsetType, RecordsetOption) {
    if (source == "SELECT Max(ID) AS [Max ID] FROM [Report - Index]")
        return std::make_unique<HighestId>(file_.records["Report - Index"]);
    for (const TableDef& table : file_.tables)
        if (source == "SELECT * FROM [" + table.Name + "]")
            return std::make_unique<MemoryRecordset>(table, file_.records[table.Name], file_.recordsUntilFull);
    throw RunTimeError(ErrorNumber::InputTableNotFound, "Nothing here answers: " + std::string(source));
}

std::unique_ptr<Database> MemoryEngine::OpenDatabase(std::string_view path, Access) {
    if (file_.cannotBeOpened) throw RunTimeError(ErrorNumber::UnrecognizedFormat, "The file is no database.");
    opened.emplace_back(path);
    return std::make_unique<MemoryDatabase>(file_);
}

Field Column(std::string name, FieldType type, int size) {
    Field field;
    field.Name = std::move(name);
    field.Type = type;
    field.Size = size;
    return field;
}

TableDef Table(std::string name, std::vector<Field> fields, const std::string& key) {
    TableDef table;
    table.Name = std::move(name);
    table.Fields = std::move(fields);
    if (key.empty()) return table;
    IndexDef primary;
    primary.Name = "PrimaryKey";
    primary.Columns = {{key, false}};
    primary.Primary = primary.Unique = true;
    table.Indexes.push_back(primary);
    return table;
}

}  // namespace quillform::testing
