#include "dialogs/SheetOffer.h"

#include "catalog/CommonSheets.h"
#include "dialogs/LabelStyles.h"
#include "dialogs/TellFailure.h"
#include "model/Transaction.h"

namespace quillform::dialogs {

namespace {

constexpr std::string_view question =
    "The database has no label styles yet.  Shall the common label sheets be added?  You can change or delete them "
    "here.";
constexpr std::string_view title = "Add Label Styles";

bool IsOpenForSheets(const std::string& databasePath, DBEngine& engine) {
    LabelStyles styles(engine, databasePath);
    if (styles.HasRows()) return false;
    try {
        styles.Add();
        return true;
    } catch (const RunTimeError&) {
        return false;  // the form tells why when a style is added by hand
    }
}

}  // namespace

bool OfferCommonSheets(const std::string& databasePath, UserInterface& user, DBEngine& engine) {
    if (!IsOpenForSheets(databasePath, engine) || !user.Ask(question, title)) return false;
    return DoneOrTold(user, [&] {
        const std::unique_ptr<Database> database = engine.OpenDatabase(databasePath);
        Transaction work(*database);
        AddSheets(*database, commonSheets);
        work.Commit();
    });
}

}  // namespace quillform::dialogs
