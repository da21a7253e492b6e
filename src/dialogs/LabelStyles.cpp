#include "dialogs/LabelStyles.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/Numbers.h"

namespace quillform::dialogs {

namespace {

constexpr std::string_view statement = "SELECT * FROM [Report - Labels] ORDER BY [Label Description]";

/// Positions in labelMeasures in the order in which the columns are put, which decides what is told where several
/// numbers are out of range.
constexpr std::size_t savedOrder[] = {5, 4, 2, 3, 0, 1, 6, 7};

std::string Doubled(std::string_view text) {
    std::string doubled;
    for (const char c : text) doubled.append(c == '\'' ? 2U : 1U, c);
    return doubled;
}

/// A table that somebody made otherwise may hold anything.
int PaperOf(const Value& value) {
    const double number = NumberOf(value);
    constexpr double most = std::numeric_limits<std::int16_t>::max();
    return number >= -most && number <= most ? static_cast<int>(number) : 0;
}

}  // namespace

LabelStyles::LabelStyles(DBEngine& engine, const std::string& databasePath)
    : dbLabels_(engine.OpenDatabase(databasePath)),
      rsLabels_(dbLabels_->OpenRecordset(statement, RecordsetType::Dynaset)) {
    FindColumns();
    MoveFirst();
}

void LabelStyles::FindColumns() {
    const auto find = [this](std::string_view name) {
        const int column = rsLabels_->FindField(name);
        if (column >= 0) return column;
        throw RunTimeError(ErrorNumber::ItemNotFound, "The table \"Report - Labels\" of \"" + dbLabels_->Name() +
                                                          "\" has no column \"" + std::string(name) + "\".");
    };
    descriptionColumn_ = find("Label Description");
    std::ranges::transform(labelMeasures, measureColumns_.begin(),
                           [&](const LabelMeasure& measure) { return find(measure.column); });
    paperColumn_ = find("Paper Size");
}

void LabelStyles::MoveFirst() {
    rsLabels_->MoveFirst();
    Settle(&Recordset::MoveNext, &Recordset::MoveFirst);
}

void LabelStyles::MoveNext() { Step(&Recordset::MoveNext, &Recordset::MoveLast); }
void LabelStyles::MovePrevious() { Step(&Recordset::MovePrevious, &Recordset::MoveFirst); }

void LabelStyles::Step(Move onward, Move edge) {
    if (IsOff()) return MoveFirst();
    (rsLabels_.get()->*onward)();
    Settle(onward, edge);
}

/// Passes over rows that others deleted. A move to an edge lets go of them, but for the current one; so the rows are
/// left first.
void LabelStyles::Settle(Move onward, Move edge) {
    while (!IsOff()) {
        if (Read()) return;
        (rsLabels_.get()->*onward)();
    }
    if (rsLabels_->HasRows()) (rsLabels_.get()->*edge)();
    if (IsOff() || !Read()) Forget();
}

void LabelStyles::Forget() {
    isRead_ = false;
    shown_ = {};
}

/// False if the current row isn't there any more.
bool LabelStyles::Read() {
    std::vector<Value> values;
    try {
        for (std::size_t i = 0; i < rsLabels_->Fields().size(); ++i)
            values.emplace_back(rsLabels_->Value(static_cast<int>(i)));
    } catch (const RunTimeError& error) {
        if (error.Number() != ErrorNumber::NoCurrentRecord) throw;
        return false;
    }
    const auto text = [&](int column) { return GeneralText(values[static_cast<std::size_t>(column)]); };
    shown_.description = text(descriptionColumn_);
    std::ranges::transform(measureColumns_, shown_.measures.begin(), text);
    shown_.paper = PaperOf(values[static_cast<std::size_t>(paperColumn_)]);
    stored_ = std::move(values);
    bookmark_ = rsLabels_->Bookmark();
    isRead_ = true;
    return true;
}

/// The row that is shown, as it is now; false if it isn't there any more.
bool LabelStyles::ReadAgain() {
    try {
        if (isRead_) rsLabels_->SetBookmark(bookmark_);
        if (isRead_ && Read()) return true;
    } catch (const RunTimeError& error) {
        if (error.Number() != ErrorNumber::NoCurrentRecord) throw;
    }
    Forget();
    return false;
}

void LabelStyles::ExpectThere() {
    const std::string description = shown_.description;
    if (!ReadAgain())
        throw RunTimeError(ErrorNumber::NoCurrentRecord,
                           "The label style \"" + description + "\" isn't there any more; another program deleted it.");
}

void LabelStyles::Add() {
    rsLabels_->AddNew();  // says at once where nothing can be stored
    rsLabels_->CancelUpdate();
    state_ = State::Adding;
}

void LabelStyles::Edit() {
    ExpectThere();
    rsLabels_->Edit();
    rsLabels_->CancelUpdate();
    state_ = State::Editing;
}

void LabelStyles::CheckUnchanged() {
    const std::string description = shown_.description;
    const std::vector<Value> before = stored_;
    if (!ReadAgain()) {
        state_ = State::Adding;
        throw RunTimeError(ErrorNumber::NoCurrentRecord,
                           "The label style \"" + description +
                               "\" isn't there any more; another program deleted it.  Save again to add it anew.");
    }
    if (stored_ != before)
        throw RunTimeError(ErrorNumber::Locked,
                           "The label style \"" + description +
                               "\" was changed by another program meanwhile.  Save again to put yours in its place.");
}

void LabelStyles::Save(const LabelStyle& entered) {
    if (state_ == State::Browsing) return;
    if (state_ == State::Editing) CheckUnchanged();
    state_ == State::Adding ? rsLabels_->AddNew() : rsLabels_->Edit();
    try {
        Put(entered);
        rsLabels_->Update();
    } catch (...) {
        rsLabels_->CancelUpdate();
        throw;
    }
    state_ = State::Browsing;
    Find(entered.description);
}

void LabelStyles::Put(const LabelStyle& entered) {
    if (state_ == State::Adding || entered.description != shown_.description)
        rsLabels_->SetValue(descriptionColumn_, Value::Text(entered.description));
    for (const std::size_t measure : savedOrder) PutMeasure(measure, entered.measures[measure]);
    if (state_ == State::Adding || entered.paper)
        rsLabels_->SetValue(paperColumn_, Value::Integer(entered.paper.value_or(0)));
}

void LabelStyles::PutMeasure(std::size_t measure, const std::string& text) {
    // An empty text may stand for Null, which no reader of styles expects.
    if (state_ == State::Editing && !text.empty() && text == shown_.measures[measure]) return;
    rsLabels_->SetValue(measureColumns_[measure], Value::Double(Val(text)));
}

void LabelStyles::Find(const std::string& description) {
    rsLabels_->FindFirst("[Label Description] = '" + Doubled(description) + "'");
    if (rsLabels_->NoMatch()) rsLabels_->SetBookmark(rsLabels_->LastModified());
    Read();
}

void LabelStyles::Delete() {
    ExpectThere();
    rsLabels_->Delete();
    Forget();
    rsLabels_->MoveNext();
    Settle(&Recordset::MoveNext, &Recordset::MoveFirst);
}

}  // namespace quillform::dialogs
