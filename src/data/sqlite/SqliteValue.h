#pragma once

#include <map>
#include <string>

#include "data/sqlite/Connection.h"
#include "model/DataAccess.h"
#include "platform/Clock.h"

namespace quillform::sqlite {

/// Reads what a SQLite file holds as values of the column's type, by the rules of SqliteStorage.h.
class ValueReader {
public:
    explicit ValueReader(const Clock& clock) : clock_(clock) {}
    /// Valid until the statement's next Step, or the next Read of the same place.
    ValueView Read(const Statement& statement, int place, const Field& field) const;

private:
    ValueView ReadBoolean(const Statement& statement, int place) const;
    ValueView ReadNumber(const Statement& statement, int place, ValueKind kind) const;
    ValueView ReadDate(const Statement& statement, int place) const;
    ValueView ReadDecimal(const Statement& statement, int place, const Field& field) const;

    const Clock& clock_;
    mutable std::map<int, std::string> digits_;  // of the row's decimals, by place
};

/// Binds a value in the form in which the file keeps it: dates as ISO texts, Boolean as 1 and 0.
void BindValue(Statement& statement, int parameter, const Value& value);

}  // namespace quillform::sqlite
