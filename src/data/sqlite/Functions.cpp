#include "data/sqlite/Functions.h"

#include <cmath>
#include <memory>
#include <utility>

#include "data/collation/TextOrder.h"
#include "data/sqlite/Aggregates.h"
#include "data/sqlite/FunctionCall.h"
#include "platform/Dates.h"
#include "platform/Numbers.h"

namespace quillform::sqlite {
namespace {

struct Registered {
    const Function& function;
    Connection& connection;
    const Clock& clock;
};

bool AnyNull(std::span<sqlite3_value*> arguments) {
    for (sqlite3_value* argument : arguments)
        if (sqlite3_value_type(argument) == SQLITE_NULL) return true;
    return false;
}

void Run(sqlite3_context* context, int count, sqlite3_value** values) {
    const auto& registered = *static_cast<const Registered*>(sqlite3_user_data(context));
    const std::span arguments(values, static_cast<std::size_t>(count));
    if (registered.function.nulls == Nulls::GiveNull && AnyNull(arguments)) return;
    try {
        Call call(context, arguments, registered.clock);
        registered.function.run(call);
    } catch (const std::exception& error) {
        registered.connection.KeepError();
        sqlite3_result_error(context, error.what(), -1);
    }
}

void Forget(void* registered) { delete static_cast<Registered*>(registered); }

void Add(Connection& connection, const Clock& clock, const Function& function) {
    const int flags = SQLITE_UTF8 | (function.constant ? SQLITE_DETERMINISTIC : 0);
    const auto add = [&](int arguments) {
        auto registered = std::make_unique<Registered>(Registered{function, connection, clock});
        const int code = sqlite3_create_function_v2(connection.Handle(), function.name, arguments, flags,
                                                    registered.release(), Run, nullptr, nullptr, Forget);
        if (code != SQLITE_OK) connection.Fail(code);
    };
    if (function.most < 0) return add(-1);
    for (int arguments = function.least; arguments <= function.most; ++arguments) add(arguments);
}

int Collate(void*, int leftSize, const void* left, int rightSize, const void* right) {
    return collation::Compare({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
                              {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

}  // namespace

double Call::Number(int i) const {
    switch (sqlite3_value_type(At(i))) {
        case SQLITE_INTEGER:
        case SQLITE_FLOAT:
            return sqlite3_value_double(At(i));
        case SQLITE_NULL:
            return 0;
        default:
            break;
    }
    std::string storage;
    const std::string_view text = Text(i, storage);
    if (const auto number = ParseNumber(text)) return *number;
    throw RunTimeError(ErrorNumber::DataTypeMismatch,
                       "Data type mismatch: \"" + std::string(text) + "\" is not a number.");
}

std::int64_t Call::Whole(int i) const { return IsWhole(i) ? sqlite3_value_int64(At(i)) : CLng(Number(i)); }

double Call::Date(int i) const {
    if (!IsText(i)) return Number(i);
    std::string storage;
    const std::string_view text = Text(i, storage);
    if (const auto date = ParseDate(text, CurrentYear())) return *date;
    if (const auto number = ParseNumber(text)) return *number;
    throw RunTimeError(ErrorNumber::DataTypeMismatch,
                       "Data type mismatch: \"" + std::string(text) + "\" is not a date.");
}

std::string_view Call::Text(int i, std::string& storage) const {
    switch (sqlite3_value_type(At(i))) {
        case SQLITE_INTEGER:
            AppendGeneralInteger(sqlite3_value_int64(At(i)), storage);
            return storage;
        case SQLITE_FLOAT:
            AppendGeneralNumber(sqlite3_value_double(At(i)), storage);
            return storage;
        default:
            break;
    }
    const auto* text = static_cast<const char*>(sqlite3_value_blob(At(i)));
    return {text ? text : "", static_cast<std::size_t>(sqlite3_value_bytes(At(i)))};
}

ValueView Call::View(int i) const {
    ValueView view;
    std::string unused;
    switch (sqlite3_value_type(At(i))) {
        case SQLITE_NULL:
            break;
        case SQLITE_INTEGER:
            view = {ValueKind::Integer, sqlite3_value_int64(At(i)), 0, {}};
            break;
        case SQLITE_FLOAT:
            view = {ValueKind::Double, 0, sqlite3_value_double(At(i)), {}};
            break;
        case SQLITE_TEXT:
            view = {ValueKind::Text, 0, 0, Text(i, unused)};
            break;
        default:
            view = {ValueKind::Binary, 0, 0, Text(i, unused)};
            break;
    }
    return view;
}

void Call::Return(double number) {
    if (!std::isfinite(number)) throw RunTimeError(ErrorNumber::Overflow, "Overflow: a result is too large a number.");
    sqlite3_result_double(context_, number);
}

void Call::Return(std::string_view text) {
    sqlite3_result_text64(context_, text.data() ? text.data() : "", text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

int Call::CurrentYear() const { return PartsOf(clock_.Now()).year; }

void AddFunctions(Connection& connection, const Clock& clock) {
    for (const auto functions :
         {TextFunctions(), NumberFunctions(), DateFunctions(), ConversionFunctions(), OperatorFunctions()})
        for (const Function& function : functions) Add(connection, clock, function);
    AddAggregates(connection);
    const int code = sqlite3_create_collation_v2(connection.Handle(), "QFTEXT", SQLITE_UTF8, nullptr, Collate, nullptr);
    if (code != SQLITE_OK) connection.Fail(code);
}

}  // namespace quillform::sqlite
