#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "data/sqlite/Connection.h"
#include "platform/Clock.h"
#include "platform/RunTimeError.h"
#include "platform/Value.h"

namespace quillform::sqlite {

/// One call of a function of the dialect: its arguments, counted from 0, and its result, Null until something else is
/// returned.
class Call {
public:
    Call(sqlite3_context* context, std::span<sqlite3_value*> arguments, const Clock& clock)
        : context_(context), arguments_(arguments), clock_(clock) {}

    int Count() const { return static_cast<int>(arguments_.size()); }
    bool Has(int i) const { return i < Count(); }
    bool IsNull(int i) const { return sqlite3_value_type(At(i)) == SQLITE_NULL; }
    bool IsText(int i) const { return sqlite3_value_type(At(i)) == SQLITE_TEXT; }
    bool IsWhole(int i) const { return sqlite3_value_type(At(i)) == SQLITE_INTEGER; }
    /// RunTimeError DataTypeMismatch where the argument is a text that isn't a number.
    double Number(int i) const;
    /// Rounded to the nearest, a half to the even one; RunTimeError Overflow outside 32 bits.
    std::int64_t Whole(int i) const;
    std::int64_t Whole(int i, std::int64_t otherwise) const { return Has(i) ? Whole(i) : otherwise; }
    bool Truth(int i) const { return !IsNull(i) && Number(i) != 0; }
    /// A number as a serial, a text as the date it reads as.
    double Date(int i) const;
    /// General text; `storage` holds it where the argument isn't a text.
    std::string_view Text(int i, std::string& storage) const;
    /// The argument as Null, Integer, Double, Text or Binary.
    ValueView View(int i) const;
    sqlite3_value* At(int i) const { return arguments_[static_cast<std::size_t>(i)]; }

    void Return(double number);
    void Return(std::string_view text);
    void ReturnWhole(std::int64_t number) { sqlite3_result_int64(context_, number); }
    void ReturnTruth(bool truth) { ReturnWhole(truth ? -1 : 0); }
    void ReturnArgument(int i) { sqlite3_result_value(context_, At(i)); }

    const Clock& TheClock() const { return clock_; }
    int CurrentYear() const;

private:
    sqlite3_context* context_;
    std::span<sqlite3_value*> arguments_;
    const Clock& clock_;
};

/// What to do where an argument is Null.
enum class Nulls { GiveNull, Handled };

struct Function {
    const char* name;
    int least;  ///< number of arguments
    int most;   ///< -1: any
    void (*run)(Call&);
    Nulls nulls = Nulls::GiveNull;
    bool constant = true;  ///< the same for the same arguments
};

std::span<const Function> TextFunctions();
std::span<const Function> NumberFunctions();
std::span<const Function> DateFunctions();
std::span<const Function> ConversionFunctions();
std::span<const Function> OperatorFunctions();

}  // namespace quillform::sqlite
