#pragma once

#include <string>
#include <vector>

#include "catalog/CatalogTables.h"
#include "model/ReportSettings.h"
#include "model/collFields.h"
#include "model/collQuery.h"
#include "platform/Value.h"

namespace quillform {

/// The texts from which a run's statements are made. Blanks in the fragments are part of the statements.
struct ReportSelect {
    std::string strColumns;
    std::string strFrom;
    std::string strWhere;
    std::string strOrderBy;
    /// For each item (entry 0 is position 1) the position of its column in strColumns, from 0; -1 if it has none.
    std::vector<int> itemColumns;
    /// An OR stands among the conditions, so that a group condition added behind them doesn't hold for all of them.
    bool hasOr = false;
};

/// Most tables that one report can draw on.
inline constexpr int maximumTables = 10;

/// Turns items, query lines and catalog into the statement texts. An item whose catalog row is gone gets Code 0 and
/// counts as one without data from then on. RunTimeError SubscriptOutOfRange at the eleventh table.
ReportSelect BuildReportSelect(collFields& items, const collQuery& queries, const Catalog& catalog, JoinRule joinRule);

/// All records, in sort order.
std::string ReportStatement(const ReportSelect& select);
/// One row for each value of the primary sort column.
std::string GroupListStatement(const ReportSelect& select, const CatalogRow& primary);
/// The records of one value of the primary sort column. A Null value is asked for by Is Null, because no comparison
/// finds it.
std::string GroupStatement(const ReportSelect& select, const CatalogRow& primary, const ValueView& key);
/// Whether the group statement of this key gives just the records that have the key: a quote or outer blanks in a text,
/// a number or time that its text doesn't carry whole, and formulas don't.
bool GroupStatementIsExact(const CatalogRow& primary, const ValueView& key);

}  // namespace quillform
