#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "engine/ReportRun.h"
#include "platform/Clock.h"

namespace quillform::testing {

using Rows = std::vector<std::vector<Value>>;

/// Rows in memory, read only.
class FakeRecordset final : public Recordset {
public:
    FakeRecordset(std::vector<Field> fields, Rows rows) : fields_(std::move(fields)), rows_(std::move(rows)) {}

    bool IsEOF() const override { return at_ >= static_cast<std::int64_t>(rows_.size()); }
    bool IsBOF() const override { return at_ < 0 || rows_.empty(); }
    void MoveFirst() override {
        if (rows_.empty()) throw RunTimeError(ErrorNumber::NoCurrentRecord, "No current record.");
        at_ = 0;
    }
    void MoveNext() override { ++at_; }
    void MovePrevious() override { --at_; }
    void MoveLast() override { at_ = RecordCount() - 1; }
    std::int64_t RecordCount() const override { return static_cast<std::int64_t>(rows_.size()); }
    const std::vector<Field>& Fields() const override { return fields_; }
    int FindField(std::string_view name) const override {
        for (std::size_t i = 0; i < fields_.size(); ++i)
            if (fields_[i].Name == name) return static_cast<int>(i);
        return -1;
    }
    using Recordset::Value;
    ValueView Value(int column) const override {
        return rows_[static_cast<std::size_t>(at_)][static_cast<std::size_t>(column)];
    }
    void AddNew() override { Refuse(); }
    void Edit() override { Refuse(); }
    using Recordset::SetValue;
    void SetValue(int, const ValueView&) override { Refuse(); }
    void Update() override { Refuse(); }
    void CancelUpdate() override { Refuse(); }
    void Delete() override { Refuse(); }
    void FindFirst(std::string_view) override { Refuse(); }
    bool NoMatch() const override { return true; }
    std::int64_t Bookmark() const override { return at_; }
    void SetBookmark(std::int64_t bookmark) override { at_ = bookmark; }
    std::int64_t LastModified() const override { return -1; }
    std::int64_t AbsolutePosition() const override { return at_; }

private:
    [[noreturn]] static void Refuse() { throw RunTimeError(ErrorNumber::ReadOnly, "The record set can't be changed."); }

    std::vector<Field> fields_;
    Rows rows_;
    std::int64_t at_ = 0;
};

/// What the database of a test holds: the answer to every statement.
struct FakeData {
    std::vector<Field> fields;  ///< of the report statement
    Rows rows;                  ///< of the report statement
    std::vector<CatalogRow> catalog;
    std::function<Rows(std::string_view)> groupRows;  ///< of a group statement
    Rows keys;                                        ///< of the group list statement
    int keyColumn = 0;                                ///< what the group list statement gives
    std::vector<std::string> statements;              ///< as they came in
};

class FakeDatabase final : public Database {
public:
    explicit FakeDatabase(FakeData& data) : data_(data) {}

    const std::string& Name() const override { return name_; }
    const std::vector<TableDef>& TableDefs() const override { return tables_; }
    std::vector<Relation> Relations() const override { return {}; }
    void AppendTable(const TableDef&) override {}
    void DropTable(std::string_view) override {}
    std::unique_ptr<Recordset> OpenRecordset(std::string_view source, RecordsetType, RecordsetOption) override;
    std::int64_t Execute(std::string_view) override { return 0; }
    void BeginTrans() override {}
    void CommitTrans() override {}
    void Rollback() override {}

private:
    FakeData& data_;
    std::string name_ = "fake";
    std::vector<TableDef> tables_;
};

class FakeEngine final : public DBEngine {
public:
    /// Databases that an output makes are `made`'s, where one is given.
    explicit FakeEngine(FakeData& data, DBEngine* made = nullptr) : data_(data), made_(made) {}
    std::unique_ptr<Database> OpenDatabase(std::string_view path, Access access) override {
        if (made_ != nullptr && path != reportDatabase) return made_->OpenDatabase(path, access);
        return std::make_unique<FakeDatabase>(data_);
    }
    std::unique_ptr<Database> CreateDatabase(std::string_view path, DatabaseVersion version) override {
        return made_ != nullptr ? made_->CreateDatabase(path, version) : nullptr;
    }

    /// The run opens whatever file is there; what is in it comes from the fake.
    static const std::string reportDatabase;

private:
    FakeData& data_;
    DBEngine* made_;
};

class FakeUser final : public UserInterface {
public:
    void Message(std::string_view text, std::string_view) override { messages.emplace_back(text); }
    bool Ask(std::string_view question, std::string_view title, MessageIcon) override {
        questions.emplace_back(std::string(title) + "|" + std::string(question));
        return answersYes;
    }
    void Warn(std::string_view text) override { warnings.emplace_back(text); }
    void Note(std::string_view) override {}
    std::optional<std::string> SaveDialog(const FileDialog& dialog) override {
        dialogs.push_back(dialog.title + "|" + dialog.filter + "|" + dialog.fileName + "|" + dialog.defaultExtension);
        return chosenFile;
    }
    bool YieldAndIsCancelled() override { return ++yields == cancelAtYield; }

    std::vector<std::string> messages;
    std::vector<std::string> warnings;
    std::vector<std::string> questions;  ///< "title|question"
    std::vector<std::string> dialogs;    ///< "title|filter|file name|extension"
    bool answersYes = false;
    std::optional<std::string> chosenFile;  ///< of a save dialog; empty: cancelled
    int yields = 0;
    int cancelAtYield = -1;
};

/// Every letter 120 twips wide, every line 240 high: a text is as wide as its cells.
class CellMeasure final : public TextMeasure {
public:
    FontId Font(const FontSpec&) override { return FontId{0}; }
    double TextWidth(FontId, std::string_view text) const override { return 120.0 * static_cast<double>(text.size()); }
    double TextHeight(FontId) const override { return 240; }
};

/// Times that grow by a step at each look, so that the dearer walk is known beforehand.
class SteppingClock final : public Clock {
public:
    double Now() const override { return 36161.5; }  // 1999-01-01 12:00
    double Timer() const override { return time_ += 1; }

private:
    mutable double time_ = 0;
};

/// A layout of items of a database with one table T of the given columns, catalog IDs from 1 in column order.
class Scene {
public:
    Scene(std::vector<Field> fields, Rows rows);

    /// Adds an item in "Times New Roman" 10 and gives it to be changed.
    clssFields& Add(int code, float top, float left, int length, std::string text = {});
    /// Lets the group list statement give the values of a column, and the group statements its rows.
    void GroupBy(int column);
    RunOutcome Run(Output& output, RunOptions options = {.walk = Walk::OnePass});

    Layout layout;
    FakeData data;
    FakeUser user;
    DBEngine* made = nullptr;  ///< makes the databases that an output makes
    FixedClock clock{36161.5};
    const Clock* runClock = &clock;
    CellMeasure measure;
};

}  // namespace quillform::testing
