#include "data/jet/JetDatabase.h"

#include <algorithm>

#include "data/collation/TextOrder.h"

namespace quillform::jet {

JetDatabase::JetDatabase(std::unique_ptr<FileAccess> file, std::string name, Access access)
    : name_(std::move(name)), file_(std::move(file), name_), mayWrite_(access == Access::ReadWrite) {
    ReadTables();
}

/// The catalogue lists the tables by name, since that is how its index over the container and the name gives them.
void JetDatabase::ReadTables() {
    entries_.clear();
    definitions_.clear();
    for (CatalogEntry& object : ReadCatalog(file_)) {
        if (!object.IsTable()) continue;
        entries_.emplace_back();
        entries_.back().object = std::move(object);
    }
    std::stable_sort(entries_.begin(), entries_.end(), [](const Entry& left, const Entry& right) {
        return collation::Compare(left.object.name, right.object.name) < 0;
    });
    for (Entry& entry : entries_) definitions_.push_back(ReadTable(entry));
}

/// A table whose definition is broken is listed without columns, so that the others can be used.
TableDef JetDatabase::ReadTable(Entry& entry) const {
    TableDef definition;
    definition.Name = entry.object.name;
    if (entry.object.kind == CatalogEntry::LocalTable) {
        try {
            entry.table = ReadTableDefinition(file_, static_cast<std::uint32_t>(entry.object.id));
            definition = MakeTableDef(entry.object.name, entry.table, entry.object.properties, file_.Form());
        } catch (const RunTimeError& error) {
            entry.fault = error.what();
        }
    }
    definition.IsLinked = entry.object.kind != CatalogEntry::LocalTable;
    definition.IsSystem = entry.object.IsHidden();
    return definition;
}

data::StoredTable& JetDatabase::Rows(std::size_t index) {
    Entry& entry = entries_.at(index);
    const std::string& table = definitions_[index].Name;
    if (definitions_[index].IsLinked)
        throw RunTimeError(ErrorNumber::NotSupported,
                           "The table \"" + table + "\" is linked: it lives in another file.");
    if (!entry.fault.empty()) throw RunTimeError(ErrorNumber::UnrecognizedFormat, entry.fault);
    if (!entry.rows) entry.rows = std::make_unique<JetTable>(file_, definitions_[index], entry.table);
    return *entry.rows;
}

std::vector<std::pair<std::string, std::string>> JetDatabase::Facts() const {
    const Header& header = file_.FileHeader();
    const bool jet3 = header.format == Format::Jet3;
    std::vector<std::pair<std::string, std::string>> facts;
    facts.emplace_back("Format", jet3 ? "Jet 3 (Access 95, 97)" : "Jet 4 (Access 2000 to 2003)");
    facts.emplace_back("Pages",
                       std::to_string(file_.PageCount()) + " of " + std::to_string(file_.Form().pageSize) + " bytes");
    facts.emplace_back("Code page", std::to_string(header.codePage));
    facts.emplace_back("Sort order", std::to_string(header.sortOrder) + "/" + std::to_string(header.sortVersion));
    facts.emplace_back("Engine build", std::to_string(header.build));
    facts.emplace_back("Page encoding", header.pageKey != 0 ? "yes" : "no");
    return facts;
}

}  // namespace quillform::jet
