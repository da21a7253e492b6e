#include "dialogs/BoundRecords.h"

#include <utility>

namespace quillform::dialogs {

namespace {

bool CanAdd(Recordset& rows) {
    try {
        rows.AddNew();
    } catch (const RunTimeError&) {
        return false;
    }
    rows.CancelUpdate();
    return true;
}

/// Whether three digits, and no fourth, follow each comma.
bool CommasPartThousands(std::string_view text) {
    const auto isDigit = [&](std::size_t at) { return at < text.size() && text[at] >= '0' && text[at] <= '9'; };
    for (std::size_t at = text.find(','); at != text.npos; at = text.find(',', at + 1))
        if (!isDigit(at + 1) || !isDigit(at + 2) || !isDigit(at + 3) || isDigit(at + 4)) return false;
    return true;
}

/// The database passes over any comma in a number: "12,50", typed by someone used to decimal commas, would be stored as
/// 1250 and nobody told.
void CheckCommas(const Field& field, const std::string& typed) {
    if (!IsNumber(field.Type) || CommasPartThousands(typed)) return;
    throw RunTimeError(ErrorNumber::TypeMismatch,
                       "\"" + typed + "\" can't be stored in the field \"" + field.Name +
                           "\": a comma stands before groups of three digits, and a decimal point is written \".\".");
}

}  // namespace

BoundRecords::BoundRecords(DBEngine& engine, Source source, Events events)
    : engine_(engine),
      source_(std::move(source)),
      events_(std::move(events)),
      texts_(source_.columns.size()),
      stored_(source_.columns.size()) {}

template <typename Step>
bool BoundRecords::Run(Step step) {
    try {
        step();
    } catch (const RunTimeError& error) {
        events_.Error(error);
        return false;
    }
    return true;
}

void BoundRecords::Refresh() {
    events_.Validate();
    const bool isDone = Run([this] {
        Store();
        Open();
        Show();
    });
    if (isDone) events_.Reposition();
}

/// Opened aside, so that a failure leaves the user what he has.
void BoundRecords::Open() {
    std::unique_ptr<Database> database = engine_.OpenDatabase(source_.databaseName);
    std::unique_ptr<Recordset> rows = database->OpenRecordset(source_.recordSource, RecordsetType::Dynaset);
    std::vector<int> positions;
    for (const std::string& column : source_.columns) {
        positions.push_back(rows->FindField(column));
        if (positions.back() < 0)
            throw RunTimeError(ErrorNumber::ItemNotFound,
                               "The records of \"" + source_.databaseName + "\" have no column \"" + column + "\".");
    }
    rows_ = std::move(rows);
    database_ = std::move(database);
    positions_ = std::move(positions);
    isReadOnly_ = !CanAdd(*rows_);
}

Recordset& BoundRecords::Rows() {
    if (!rows_) Open();
    return *rows_;
}

void BoundRecords::LeaveBy(void (Recordset::*move)()) {
    events_.Validate();
    const bool isDone = Run([this, move] {
        Store();
        Recordset& rows = Rows();
        if (rows.HasRows()) (rows.*move)();
        if (rows.IsBOF() && rows.HasRows()) rows.MoveFirst();
        if (rows.IsEOF() && rows.HasRows()) rows.MoveLast();
        Show();
    });
    if (isDone) events_.Reposition();
}

void BoundRecords::MoveFirst() { LeaveBy(&Recordset::MoveFirst); }
void BoundRecords::MovePrevious() { LeaveBy(&Recordset::MovePrevious); }
void BoundRecords::MoveNext() { LeaveBy(&Recordset::MoveNext); }
void BoundRecords::MoveLast() { LeaveBy(&Recordset::MoveLast); }

void BoundRecords::AddNew() {
    events_.Validate();
    const bool isDone = Run([this] {
        Store();
        Rows().AddNew();  // says at once where nothing can be added
        rows_->CancelUpdate();
        isAdding_ = true;
        stored_.assign(source_.columns.size(), {});
        texts_ = stored_;
    });
    if (isDone) events_.Reposition();
}

void BoundRecords::Delete() {
    if (isAdding_ || !HasRecord()) return UpdateControls();
    events_.Validate();
    const bool isDone = Run([this] {
        rows_->Delete();
        rows_->MoveNext();
        if (rows_->IsEOF()) rows_->MoveLast();
        Show();
    });
    if (isDone) events_.Reposition();
}

void BoundRecords::UpdateRecord() {
    events_.Validate();
    const bool isDone = Run([this] {
        Store();
        Show();
    });
    if (isDone) events_.Reposition();
}

void BoundRecords::UpdateControls() {
    const bool isDone = Run([this] { Show(); });
    if (isDone) events_.Reposition();
}

bool BoundRecords::SaveChanges() {
    return Run([this] { Store(); });
}

/// A record that was added becomes the current one, so that a move starts from what the user sees.
void BoundRecords::Store() {
    if (!IsChanged()) return;
    isAdding_ ? rows_->AddNew() : rows_->Edit();
    try {
        PutTexts();
        rows_->Update();
    } catch (...) {
        rows_->CancelUpdate();
        throw;
    }
    rows_->SetBookmark(rows_->LastModified());
    stored_ = texts_;
    isAdding_ = false;
    isRead_ = true;
}

void BoundRecords::PutTexts() {
    for (std::size_t i = 0; i < texts_.size(); ++i) {
        if (texts_[i] == stored_[i]) continue;
        CheckCommas(rows_->Fields()[static_cast<std::size_t>(positions_[i])], texts_[i]);
        const Value typed = texts_[i].empty() ? Value() : Value::Text(texts_[i]);
        rows_->SetValue(positions_[i], typed);
    }
}

void BoundRecords::Show() {
    isAdding_ = false;
    isRead_ = false;
    stored_.assign(source_.columns.size(), {});
    texts_ = stored_;
    if (!rows_ || rows_->IsEOF() || rows_->IsBOF()) return;
    for (std::size_t i = 0; i < stored_.size(); ++i) stored_[i] = rows_->Text(positions_[i]);
    texts_ = stored_;
    isRead_ = true;
}

}  // namespace quillform::dialogs
