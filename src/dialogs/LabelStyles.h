#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/LabelMeasures.h"
#include "model/DataAccess.h"

namespace quillform::dialogs {

/// A label style as its boxes show it.
struct LabelStyle {
    std::string description;
    MeasureTexts measures;  ///< in the order of labelMeasures
    /// Number of the paper; of a style that is stored it may be any number, also one that no form offers. Empty where
    /// none was chosen.
    std::optional<int> paper;

    friend bool operator==(const LabelStyle&, const LabelStyle&) = default;
};

/// The record editor of `Report - Labels` without its form: the styles in the order of their descriptions, one of them
/// current, and the one that is being entered. Styles that are added come last until the table is opened again.
///
/// RunTimeErrors are sentences for the user. What fails changes nothing, and what is being entered goes on being
/// entered. Styles that others deleted are passed over.
class LabelStyles {
public:
    /// Opens the database and its table, for as long as the object lives. RunTimeError if one isn't there or lacks a
    /// column. `engine` outlives the object.
    LabelStyles(DBEngine& engine, const std::string& databasePath);

    /// Whether a style is current: after a move, whether there are any. The record set itself may go on counting rows
    /// that others deleted.
    bool HasRows() const { return isRead_; }
    /// Position of the current style from 0, -1 if there is none, and how many there are.
    std::int64_t Position() const { return isRead_ ? rsLabels_->AbsolutePosition() : -1; }
    std::int64_t Count() const { return rsLabels_->RecordCount(); }
    /// The style that is current, as it is stored; an empty one if there is none.
    const LabelStyle& Current() const { return shown_; }
    /// Between Add or Edit and the Save that stores.
    bool IsEntering() const { return state_ != State::Browsing; }
    bool IsAdding() const { return state_ == State::Adding; }

    void MoveFirst();
    void MoveNext();      ///< no further than the last
    void MovePrevious();  ///< no further than the first

    /// Begins a new style. RunTimeError ReadOnly where none can be stored.
    void Add();
    /// Begins to change the current style, which is read anew. RunTimeError NoCurrentRecord if there is none any more.
    void Edit();
    /// Stores what was entered, and makes the first style of that description current.
    ///
    /// A measure takes the number that its text begins with, 0 without one. A text that still is what the style showed
    /// leaves the stored number alone, because its digits may be fewer than the number's. A paper that isn't chosen
    /// leaves the stored one alone, too, and is 0 in a new style.
    ///
    /// RunTimeError if another changed or deleted the style since Edit; the next Save stores over the change, or as a
    /// new style.
    void Save(const LabelStyle& entered);
    /// Deletes the current style. The one behind it becomes current, the first behind the last.
    void Delete();

private:
    enum class State { Browsing, Adding, Editing };
    using Move = void (Recordset::*)();

    void FindColumns();
    bool IsOff() const { return rsLabels_->IsEOF() || rsLabels_->IsBOF(); }
    void Step(Move onward, Move edge);
    void Settle(Move onward, Move edge);
    bool Read();
    bool ReadAgain();
    void Forget();
    void ExpectThere();
    void CheckUnchanged();
    void Put(const LabelStyle& entered);
    void PutMeasure(std::size_t measure, const std::string& text);
    void Find(const std::string& description);

    std::unique_ptr<Database> dbLabels_;
    std::unique_ptr<Recordset> rsLabels_;  // of the database, and gone before it
    int descriptionColumn_ = -1;
    std::array<int, labelMeasures.size()> measureColumns_{};
    int paperColumn_ = -1;

    LabelStyle shown_;
    std::vector<Value> stored_;  // values of the row that is shown, all columns
    std::int64_t bookmark_ = 0;  // its own: a move that fails may leave another row current
    bool isRead_ = false;        // there is such a row
    State state_ = State::Browsing;
};

}  // namespace quillform::dialogs
