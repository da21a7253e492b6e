#include "catalog/WizardWalk.h"

#include "catalog/FieldWalk.h"

namespace quillform {

void WizardWalk::ConfigureTableFields(Database& database, const TableDef& table, Recordset& index) {
    if (isFull_) return;
    const std::string& path = databasePath_.empty() ? database.Name() : databasePath_;
    isFull_ = !FieldWalk(pages_, database, table, index, path).Run();
}

}  // namespace quillform
