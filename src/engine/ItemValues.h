#pragma once

#include <string>

#include "catalog/CatalogTables.h"
#include "model/DataAccess.h"
#include "model/clssFields.h"
#include "platform/Format.h"

namespace quillform {

/// Where the value of one item comes from, found once before the records are walked.
struct ItemSource {
    enum class Kind {
        Text,             ///< Code 0: the item's own text, no sums
        MissingRow,       ///< its catalog row is gone: the item's own text, number 0
        Column,           ///< a column of the record, with mask
        Formula,          ///< a computed column, ready as it is
        NamelessFormula,  ///< a formula without alias: empty, and its number stays as it was
    };
    Kind kind = Kind::Text;
    int column = -1;  ///< position in the record set
    bool isTextDate = false;
    bool isDate = false;  ///< the column's type is date
    bool numeric = false;
    Mask mask;
};

/// Finds the source of an item. `column` is the position of the item's column in the report statement, -1 if the
/// statement has none for it. RunTimeError ItemNotFound where the catalog names a column that the record set lacks.
ItemSource BindItem(const clssFields& item, const CatalogRow* row, int column, const Recordset& records);

/// Reads the item's value in the current record: sets CurrentTotal and the sums, and moves ThisValue to LastValue.
/// `scratch` is any text, reused to save allocations.
void GetItemValue(const ItemSource& source, const Recordset& shadow, clssFields& item, std::string& scratch);

/// A date or time kept as digits in a text ("yyyymmddhhmm", "yyyymmdd", "hhmm"), formatted by the mask and appended to
/// `out`. What is no valid date by its digits gives nothing; what can't be converted gives the rebuilt text; a text of
/// any other length is appended unchanged.
void AppendTextDate(std::string_view value, const Mask& mask, std::string& out);

}  // namespace quillform
