#include "output/AccessOutput.h"

#include <algorithm>
#include <system_error>

#include "engine/ReportRun.h"
#include "output/TargetFile.h"
#include "platform/AsciiRun.h"
#include "platform/CodePage.h"
#include "platform/Text.h"

namespace quillform {

namespace {

constexpr std::string_view extension = ".MDB";
constexpr std::string_view tableName = "Project1 Table";  // the application's title and a word
constexpr int endOfDataCodes = 900;                       // items with codes below are of the catalog
constexpr std::size_t bytesPerTransaction = 8u << 20;
constexpr std::size_t bytesOfEmptyRow = 32;  // about

bool HasColumn(const clssFields& item) { return item.Code > 0 && item.Code < endOfDataCodes; }

/// The format that the layout's report option names. A layout for another output has named none: then Jet 4, which
/// every Access since 2000 opens, and which holds every letter.
DatabaseVersion VersionOfOption(int reportOption) {
    switch (reportOption) {
        case 5:
            return DatabaseVersion::Jet10;
        case 6:
            return DatabaseVersion::Jet11;
        case 7:
            return DatabaseVersion::Jet20;
        case 8:
            return DatabaseVersion::Jet30;
        default:
            return DatabaseVersion::Jet40;
    }
}

bool IsOlderThanJet3(DatabaseVersion version) {
    return version == DatabaseVersion::Jet10 || version == DatabaseVersion::Jet11 || version == DatabaseVersion::Jet20;
}

/// Where a path leads to, in capitals, so that neither a link nor case makes one file look like two.
std::string PlaceOf(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::path place = std::filesystem::weakly_canonical(path, error);
    return UpperCase((error ? path : place).string());
}

/// Whether the path is one of the layout's own databases. The report reads them, so none may be written over.
bool IsProtected(const std::filesystem::path& path, const Layout& layout) {
    const std::string place = PlaceOf(path);
    if (const auto found = FindReportDatabase(layout); found && PlaceOf(found->path) == place) return true;
    return std::ranges::any_of(layout.settings.strDatabase, [&place](const std::string& database) {
        return !database.empty() && PlaceOf(TargetPath(database)) == place;
    });
}

TableDef ExportTable(const Layout& layout) {
    TableDef table;
    table.Name = tableName;
    for (const clssFields& item : layout.Fields)
        if (HasColumn(item))
            table.Fields.push_back(
                {.Name = std::string(Trim(item.Text)), .Type = FieldType::Text, .Size = item.Length});
    return table;
}

std::string Counted(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + (count == 1 ? one : many);
}

}  // namespace

bool AccessOutput::Open(const OutputContext& context) {
    user_ = &context.user;
    const std::optional<std::filesystem::path> path = ChooseTarget(target_,
                                                                   {.title = "Save To Microsoft Access MDB...",
                                                                    .filter = "Microsoft Access (*.MDB)",
                                                                    .fileName = "*.MDB",
                                                                    .defaultExtension = "MDB",
                                                                    .initialFolder = {}},
                                                                   context.user, Replacing::AskLater);
    if (!path) return false;
    if (!Trim(UpperCase(path->string())).ends_with(extension)) {
        user_->Message("You must save the Access Database to a file with an extension of 'MDB'");
        return false;
    }
    bool boolCreated = false;
    CreateMDB(*path, context, boolCreated);
    if (!boolCreated) return false;
    dbExport_ = context.engine.OpenDatabase(aside_->Path().string());
    dbExport_->BeginTrans();
    rsExport_ = dbExport_->OpenRecordset("SELECT * FROM [" + std::string(tableName) + "]", RecordsetType::Dynaset,
                                         RecordsetOption::AppendOnly);
    for (const clssFields& item : context.layout.Fields) {
        const int index = HasColumn(item) ? rsExport_->FindField(Trim(item.Text)) : -1;
        const int size = index < 0 ? 0 : rsExport_->Fields()[static_cast<std::size_t>(index)].Size;
        columns_.push_back({index, static_cast<std::size_t>(size)});
    }
    return true;
}

/// Makes the database and its table, and leaves them closed. `boolCreated` tells whether it did.
void AccessOutput::CreateMDB(const std::filesystem::path& FileName, const OutputContext& context, bool& boolCreated) {
    boolCreated = false;
    if (IsProtected(FileName, context.layout)) {
        user_->Message("You cannot use the '" + UpperCase(FileName.string()) + "' Database to Export the Data to.");
        return;
    }
    if (!MayReplace(FileName, *user_)) return;
    path_ = FileName;
    mayLeaveStopped_ = target_.keepsStopped && MayLeaveStoppedFile(FileName);
    try {
        MakeTable(target_.format.value_or(VersionOfOption(context.layout.settings.intOutputType)), context);
        boolCreated = true;
    } catch (const RunTimeError& error) {
        aside_.reset();
        user_->Message("An error has occurred in Module 'CreateMDB'.  Unable to create the Access MDB. Error #:  " +
                       std::to_string(static_cast<int>(error.Number())));
        user_->Warn(error.what());
    }
}

/// Asks before a file is replaced, unless the file was named by whoever can't be asked.
bool AccessOutput::MayReplace(const std::filesystem::path& path, UserInterface& user) const {
    std::error_code ignored;  // what can't be looked at can't be replaced either, and says so then
    if (target_.file || !std::filesystem::exists(path, ignored)) return true;
    return user.Ask("DataBase Already Exists.  Do you want to overwrite the existing Database?", "Warning!!!",
                    MessageIcon::Question);
}

void AccessOutput::MakeTable(DatabaseVersion version, const OutputContext& context) {
    if (IsOlderThanJet3(version))
        user_->Note("\"" + path_.string() +
                    "\" gets the format of Access 97: nothing in use today reads that of an older Access.");
    holdsEveryLetter_ = version == DatabaseVersion::Jet40;
    aside_.emplace(path_);
    const std::unique_ptr<Database> database = context.engine.CreateDatabase(aside_->Path().string(), version);
    aside_->TakeRights();
    database->AppendTable(ExportTable(context.layout));
}

void AccessOutput::Close(Ending ending) {
    rsExport_.reset();
    const bool isKept = ending == Ending::Whole || mayLeaveStopped_;
    if (isKept) dbExport_->CommitTrans();
    dbExport_.reset();
    if (isKept) aside_->Commit();
    aside_.reset();
    WarnOfLosses();
}

void AccessOutput::WarnOfLosses() const {
    if (cut_ > 0)
        user_->Warn("\"" + path_.string() + "\": " +
                    Counted(cut_, " value was longer than its column and was cut.",
                            " values were longer than their columns and were cut."));
    WarnOfReplaced(path_, replaced_, *user_);
}

void AccessOutput::BeginRecord(RunVariables&) { rsExport_->AddNew(); }

void AccessOutput::EndRecord(RunVariables&) {
    rsExport_->Update();
    openBytes_ += bytesOfEmptyRow;
    if (openBytes_ < bytesPerTransaction) return;
    openBytes_ = 0;
    dbExport_->CommitTrans();
    dbExport_->BeginTrans();
}

void AccessOutput::PlaceItem(RunVariables&, const PlacedItem& placed, std::string&) {
    const ExportColumn& column = columns_[static_cast<std::size_t>(placed.position - 1)];
    if (placed.band != Band::Normal || column.index < 0) return;
    const std::string_view text = Fitting(Trim(placed.text), column.size);
    rsExport_->SetValue(column.index, {.kind = ValueKind::Text, .text = text});
    openBytes_ += text.size();
}

/// As much of the text as the column holds, which counts characters, and in Jet 4 those beyond 16 bits twice.
std::string_view AccessOutput::Fitting(std::string_view text, std::size_t size) {
    if (text.size() <= size && AsciiRun(text, 0) == text.size()) return text;
    std::size_t end = 0;
    for (std::size_t used = 0; end < text.size();) {
        std::size_t next = end;
        used += NextCodePoint(text, next) > 0xFFFF && holdsEveryLetter_ ? 2 : 1;
        if (used > size) break;
        end = next;
    }
    if (end < text.size()) ++cut_;
    if (!holdsEveryLetter_) static_cast<void>(Cp1252FromUtf8(text.substr(0, end), &replaced_));
    return text.substr(0, end);
}

}  // namespace quillform
