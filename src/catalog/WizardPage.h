#pragma once

#include <exception>
#include <string>
#include <string_view>

#include "model/DataAccess.h"

namespace quillform {

/// What a wizard page asks for; decides which controls are on it.
enum class WizardButtonType {
    TextReply = 0,          ///< a reply box under `TextLabel`
    Question = 1,           ///< Yes and No
    ColumnLists = 2,        ///< the columns of `Table1` and of `Table2`, side by side
    TextFormulaList = 3,    ///< the formulas for texts
    NumberFormulaList = 4,  ///< the formulas for everything else
};

/// How a page was left. Set beforehand, Yes and No say which of the two buttons has the focus.
enum class WizardResponse { Yes = 0, No = 1, Next = 3, Back = 4 };

/// The questions of a walk.
enum class WizardQuestion {
    Table,
    Include,
    Raw,
    Description,
    NumberMask,
    DateMask,
    DateQuestion,
    MaskCount,
    TextDateMask,
    TextMask,
    FormulaQuestion,
    FormulaList,
    Position,
    Length,
    FormulaMask,
    Alias,
    FormulaDescription,
    Link,
    LinkColumns,
};

/// What a page is about, for pages that nobody reads. The pointers hold while the page is shown.
struct WizardTopic {
    WizardQuestion question = WizardQuestion::Table;
    const TableDef* table = nullptr;
    const Field* field = nullptr;      ///< null on the table page and in questions about links
    const TableDef* second = nullptr;  ///< the other table of a link, else null
    int pass = 1;                      ///< which mask of a date, which formula of a field
};

/// Thrown out of a page whose reader left the configuration in the middle. It is no RunTimeError, because it ends the
/// whole configuration and not one table's.
class WizardLeft : public std::exception {
public:
    const char* what() const noexcept override { return "The configuration was left before its end."; }
};

/// The one question-and-answer page of a configuration, reused for every question. It knows nothing of the catalog: the
/// walk sets its properties, shows it, and reads the answer. The form, a script and an answers file stand behind it.
///
/// Order of a page: SetButtonType first, since the lists depend on it; then SetButtonResponse; then the tables and the
/// texts; then Show. What a page doesn't set keeps its value from the page before.
class WizardPage {
public:
    virtual ~WizardPage() = default;

    /// Said before anything else of a page. A form has no need of it.
    virtual void SetTopic(const WizardTopic&) {}
    virtual void SetButtonType(WizardButtonType type) = 0;
    virtual void SetButtonResponse(WizardResponse response) = 0;
    /// With ColumnLists: fills the first list with the columns of the table; the formula lists fill it with their
    /// formulas. RunTimeError of the data layer if there is no such table.
    virtual void SetTable1(std::string_view table) = 0;
    /// With ColumnLists: the same for the second list.
    virtual void SetTable2(std::string_view table) = 0;
    virtual void SetTextResponse(std::string_view text) = 0;
    virtual void SetExplaination(std::string_view text) = 0;
    virtual void SetTextLabel(std::string_view text) = 0;

    /// Shows the page until one of its buttons is pressed. Throws WizardLeft.
    virtual void Show() = 0;

    virtual WizardResponse ButtonResponse() const = 0;
    /// What the reply box held when Next was pressed; Back leaves the former value.
    virtual const std::string& TextResponse() const = 0;
    /// The choices of the two lists when Next was pressed; empty where nothing was picked.
    virtual const std::string& Field1() const = 0;
    virtual const std::string& Field2() const = 0;
};

}  // namespace quillform
