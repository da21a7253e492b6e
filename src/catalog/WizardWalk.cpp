#include "catalog/WizardWalk.h"

#include "catalog/FieldWalk.h"

namespace quillform {

void WizardWalk::ConfigureTableFields(Database& database, const TableDef& table, Recordset& index) {
    if (!isFull_) isFull_ = !FieldWalk(pages_, database, table, index).Run();
}

}  // namespace quillform
