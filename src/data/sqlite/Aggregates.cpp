#include "data/sqlite/Aggregates.h"

#include <cmath>
#include <cstdint>

#include "platform/Numbers.h"
#include "platform/RunTimeError.h"

namespace quillform::sqlite {
namespace {

/// Spread of a row of numbers, kept in one pass without losing digits (Welford).
struct Spread {
    std::int64_t count;
    double mean;
    double squares;
};

void AddNumber(sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL) return;
    double number = sqlite3_value_double(values[0]);
    if (sqlite3_value_type(values[0]) == SQLITE_TEXT) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(values[0]));
        const auto parsed = ParseNumber(text ? text : "");
        if (!parsed) {
            sqlite3_result_error(context, "data type mismatch in an aggregate function", -1);
            sqlite3_result_error_code(context, SQLITE_MISMATCH);
            return;
        }
        number = *parsed;
    }
    auto* spread = static_cast<Spread*>(sqlite3_aggregate_context(context, sizeof(Spread)));
    if (!spread) return sqlite3_result_error_nomem(context);
    ++spread->count;
    const double distance = number - spread->mean;
    spread->mean += distance / static_cast<double>(spread->count);
    spread->squares += distance * (number - spread->mean);
}

template <int lessThanCount, bool root>
void FinishSpread(sqlite3_context* context) {
    const auto* spread = static_cast<Spread*>(sqlite3_aggregate_context(context, 0));
    if (!spread || spread->count <= lessThanCount) return sqlite3_result_null(context);
    const double variance = spread->squares / static_cast<double>(spread->count - lessThanCount);
    sqlite3_result_double(context, root ? std::sqrt(variance) : variance);
}

struct Kept {
    sqlite3_value* value;
    bool seen;
};

template <bool first>
void KeepValue(sqlite3_context* context, int, sqlite3_value** values) {
    auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(context, sizeof(Kept)));
    if (!kept) return sqlite3_result_error_nomem(context);
    if (first && kept->seen) return;
    sqlite3_value_free(kept->value);
    kept->value = sqlite3_value_dup(values[0]);
    kept->seen = true;
}

void FinishKept(sqlite3_context* context) {
    auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(context, 0));
    if (!kept || !kept->value) return sqlite3_result_null(context);
    sqlite3_result_value(context, kept->value);
    sqlite3_value_free(kept->value);
    kept->value = nullptr;
}

}  // namespace

void AddAggregates(Connection& connection) {
    using Step = void (*)(sqlite3_context*, int, sqlite3_value**);
    using Finish = void (*)(sqlite3_context*);
    struct Aggregate {
        const char* name;
        Step step;
        Finish finish;
    };
    const Aggregate aggregates[] = {
        {"qf_stdev", AddNumber, FinishSpread<1, true>}, {"qf_stdevp", AddNumber, FinishSpread<0, true>},
        {"qf_var", AddNumber, FinishSpread<1, false>},  {"qf_varp", AddNumber, FinishSpread<0, false>},
        {"qf_first", KeepValue<true>, FinishKept},      {"qf_last", KeepValue<false>, FinishKept},
    };
    for (const Aggregate& aggregate : aggregates) {
        const int code = sqlite3_create_function_v2(connection.Handle(), aggregate.name, 1, SQLITE_UTF8, nullptr,
                                                    nullptr, aggregate.step, aggregate.finish, nullptr);
        if (code != SQLITE_OK) connection.Fail(code);
    }
}

}  // namespace quillform::sqlite
