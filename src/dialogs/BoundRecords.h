#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/DataAccess.h"

namespace quillform::dialogs {

/// A data control without its window: the records of a statement, one of them current, and texts bound to its columns.
///
/// A record whose texts were changed is stored by whatever leaves it: a move, AddNew, Refresh, and SaveChanges before
/// the form goes. Where it can't be stored, nothing moves and the texts stay as they were typed. A new record in which
/// nothing was typed isn't stored. The operations throw no RunTimeError: each ends in the event Reposition or Error.
class BoundRecords {
public:
    struct Source {
        std::string databaseName;  ///< path of the file
        std::string recordSource;  ///< SELECT statement over one table
        std::vector<std::string> columns;
    };
    /// What happens to the records, for the form over them. Each is there.
    struct Events {
        std::function<void()> Validate;    ///< before the current record is left, while it can still be stored
        std::function<void()> Reposition;  ///< a record, or none, has become the current one
        std::function<void(const RunTimeError& DataErr)> Error;  ///< in place of Reposition
    };

    /// Nothing is opened before the first Refresh. `engine` outlives the records.
    BoundRecords(DBEngine& engine, Source source, Events events);

    /// Opens the database anew, and makes the first record current. What was open stays where that fails.
    void Refresh();
    void MoveFirst();
    void MovePrevious();  ///< no further than the first
    void MoveNext();      ///< no further than the last
    void MoveLast();
    /// Begins a record, which stands nowhere until it is stored.
    void AddNew();
    /// Deletes the current record, whatever was typed into it. The one behind it becomes current, or the new last one.
    /// A new record is only dropped.
    void Delete();
    /// Stores the texts, and makes the record that was changed last the current one.
    void UpdateRecord();
    /// Shows the current record again in place of what was typed, and drops a new one.
    void UpdateControls();
    /// Stores what was changed; false if it couldn't be. Without Reposition.
    bool SaveChanges();

    /// Whether there is something that the texts belong to: a current record or a new one.
    bool HasRecord() const { return isAdding_ || isRead_; }
    bool HasRows() const { return rows_ && rows_->HasRows(); }
    bool IsAdding() const { return isAdding_; }
    bool IsChanged() const { return texts_ != stored_; }
    /// Whether the database that is open can only be read; then AddNew, Delete and UpdateRecord end in Error.
    bool IsReadOnly() const { return isReadOnly_; }
    /// Position of the current record from 0; -1 if there is none.
    std::int64_t AbsolutePosition() const { return rows_ ? rows_->AbsolutePosition() : -1; }

    /// By position in `Source::columns`. A text is converted to the type of its column when it is stored; an empty one
    /// is Null.
    const std::string& Text(std::size_t column) const { return texts_[column]; }
    void SetText(std::size_t column, std::string_view text) { texts_[column] = text; }

private:
    template <typename Step>
    bool Run(Step step);
    void LeaveBy(void (Recordset::*move)());
    Recordset& Rows();
    void Open();
    void Store();
    void PutTexts();
    void Show();

    DBEngine& engine_;
    Source source_;
    Events events_;
    std::unique_ptr<Database> database_;
    std::unique_ptr<Recordset> rows_;  // of the database, and gone before it
    std::vector<int> positions_;       // of the columns in the rows
    std::vector<std::string> texts_;   // as they are typed
    std::vector<std::string> stored_;  // as the record has them
    bool isAdding_ = false;
    bool isRead_ = false;
    bool isReadOnly_ = false;
};

}  // namespace quillform::dialogs
