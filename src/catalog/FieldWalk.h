#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "catalog/CatalogWriter.h"
#include "catalog/FieldRows.h"
#include "catalog/PageAsker.h"
#include "catalog/WizardPage.h"
#include "model/DataAccess.h"

namespace quillform {

/// The questions about one table, page by page, and the rows of `Report - Index` that the answers make. Each page
/// says which one follows; a row is written as soon as its last answer is there, and Back takes it away again.
///
/// The answers are kept for the whole table, not for each field: Back from one field into the one before goes by the
/// answers given last, and takes away the row that was counted last, whichever field wrote it.
class FieldWalk {
public:
    /// All of it outlives the walk. `index` is the open `Report - Index` of `database`; `databasePath` goes into the
    /// rows.
    FieldWalk(PageAsker& pages, Database& database, const TableDef& table, Recordset& index,
              std::string_view databasePath);

    /// Goes from the table page to the end. False if the catalog was full before the end: a report can't select what
    /// comes next, which the user is told, and nothing more is asked.
    bool Run();

private:
    enum class Step {
        Table,
        Include,
        Raw,
        Description,
        Value,  ///< no page: picks the one that suits the column's type
        DateMask,
        DateQuestion,
        MaskCount,
        TextDateMask,
        TextMask,
        NumberMask,
        BooleanRow,  ///< no page: a Boolean has no mask to ask for
        FormulaQuestion,
        NextFormula,  ///< no page: counts one up
        FormulaList,
        Position,
        Length,
        FormulaMask,
        Alias,
        FormulaDescription,
        NextField,  ///< no page: counts one up
        Done,
        Full,
    };

    Step Take(Step step);
    Step AskTable();
    Step AskInclude();
    Step AskRaw();
    Step AskDescription();
    Step ChooseByType();
    Step AskDateMask();
    Step AskDateQuestion();
    Step AskMaskCount();
    Step AskTextDateMask();
    Step AskTextMask();
    Step AskNumberMask();
    Step WriteBoolean();
    Step AskFormulaQuestion();
    Step AskFormulaList();
    Step AskPosition();
    Step AskLength();
    Step AskFormulaMask();
    Step AskAlias();
    Step AskFormulaDescription();

    Step BackFromInclude();
    Step BackFromFormulaQuestion();
    /// The page before the mask of a formula or, where the column has none, before its alias.
    Step BeforeFormulaMask() const;
    /// Undoes a row and goes to the mask before; `first` is the page before the first mask.
    Step BackFromMask(Step step, Step first);

    const Field& F() const { return table_.Fields[field_]; }
    WizardTopic Topic(WizardQuestion question, int pass = 1) const;
    Step WriteAndGo(CatalogRow row, Step next);
    /// Looked at before each page that leads to a row: nobody gives answers that can't become one.
    bool IsFull() const;
    /// `next` is what there is no room for.
    Step TellFull(const std::string& next);
    void UndoRow();

    PageAsker& pages_;
    Database& database_;
    const TableDef& table_;
    IndexWriter writer_;

    std::size_t field_ = 0;
    bool isIncluded_ = false;
    bool isRaw_ = false;
    bool hasFormulas_ = false;
    int formulaCount_ = 0;   ///< visits to the list, which say where Back leads from there
    int formulaNumber_ = 0;  ///< which formula the pages are about; a field left and entered again keeps its visits
    std::int32_t lastId_ = 0;
    std::optional<std::int32_t> nextId_;  ///< while it is known without asking the database
    std::string description_;
    int maskPass_ = 1;
    int maskCount_ = 0;
    bool isTextDate_ = false;
    Formula formula_;
};

}  // namespace quillform
