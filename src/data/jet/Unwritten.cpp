#include "data/jet/DiskFile.h"
#include "data/jet/JetDatabase.h"

namespace quillform::jet {

namespace {

[[noreturn]] void CannotWrite() {
    throw RunTimeError(ErrorNumber::NotSupported, "Access databases can't be changed yet.");
}

}  // namespace

data::RowId JetTable::Insert(std::span<const Value>) { CannotWrite(); }
void JetTable::Update(data::RowId, std::span<const std::pair<int, Value>>) { CannotWrite(); }
void JetTable::Delete(data::RowId) { CannotWrite(); }
void JetDatabase::CreateTable(const TableDef&) { CannotWrite(); }
void JetDatabase::DropTable(std::string_view) { CannotWrite(); }
void JetDatabase::Begin() { CannotWrite(); }
void JetDatabase::Commit() { CannotWrite(); }
void JetDatabase::Rollback() { CannotWrite(); }
void DiskFile::StartWriting() { CannotWrite(); }
void DiskFile::StopWriting() { CannotWrite(); }
void DiskFile::Replace(std::span<const PageImage>, std::uint64_t) { CannotWrite(); }
std::shared_ptr<data::Storage> Create(const std::filesystem::path&, Format) { CannotWrite(); }

}  // namespace quillform::jet
