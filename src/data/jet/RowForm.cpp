#include "data/jet/RowForm.h"

namespace quillform::jet {

RowForm::RowForm(const TableDefinition& table, const Layout& form, int headerCodePage)
    : layout(&form), codePage(headerCodePage), hasVariables(table.variableSlots > 0), columns(table.columns) {}

std::size_t FixedBytes(const Column& column) {
    switch (column.type) {
        case ColumnType::Boolean:
            return 0;
        case ColumnType::Byte:
            return 1;
        case ColumnType::Integer:
            return 2;
        case ColumnType::Long:
        case ColumnType::Single:
            return 4;
        case ColumnType::Money:
        case ColumnType::Double:
        case ColumnType::DateTime:
            return 8;
        case ColumnType::Guid:
            return 16;
        case ColumnType::Numeric:
            return 17;
        case ColumnType::Binary:
        case ColumnType::Text:
        case ColumnType::Ole:
        case ColumnType::Memo:
            break;
    }
    return column.length;
}

}  // namespace quillform::jet
