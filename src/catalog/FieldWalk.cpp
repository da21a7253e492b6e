#include "catalog/FieldWalk.h"

#include <iterator>
#include <optional>
#include <utility>

#include "catalog/FormulaLists.h"
#include "catalog/MaskDisplayLength.h"
#include "catalog/Quoted.h"
#include "catalog/ReplyChecks.h"
#include "catalog/WizardTexts.h"
#include "model/clssFields.h"

namespace quillform {

namespace {

constexpr int dateMasks = static_cast<int>(std::size(proposedDateMasks));
constexpr std::size_t maskWidth = 50;

}  // namespace

FieldWalk::FieldWalk(PageAsker& pages, Database& database, const TableDef& table, Recordset& index,
                     std::string_view databasePath)
    : pages_(pages), database_(database), table_(table), writer_(index, databasePath) {}

bool FieldWalk::Run() {
    Step step = Step::Table;
    while (step != Step::Done && step != Step::Full) step = Take(step);
    return step == Step::Done;
}

FieldWalk::Step FieldWalk::Take(Step step) {
    switch (step) {
        case Step::Table:
            return AskTable();
        case Step::Include:
            return AskInclude();
        case Step::Raw:
            return AskRaw();
        case Step::Description:
            return AskDescription();
        case Step::Value:
            return ChooseByType();
        case Step::DateMask:
            return AskDateMask();
        case Step::DateQuestion:
            return AskDateQuestion();
        case Step::MaskCount:
            return AskMaskCount();
        case Step::TextDateMask:
            return AskTextDateMask();
        case Step::TextMask:
            return AskTextMask();
        case Step::NumberMask:
            return AskNumberMask();
        case Step::BooleanRow:
            return WriteBoolean();
        case Step::FormulaQuestion:
            return AskFormulaQuestion();
        case Step::NextFormula:
            if (IsFull()) return TellFull("a formula of the field " + Quoted(F().Name));
            ++formulaCount_;
            ++formulaNumber_;
            return Step::FormulaList;
        case Step::FormulaList:
            return AskFormulaList();
        case Step::Position:
            return AskPosition();
        case Step::Length:
            return AskLength();
        case Step::FormulaMask:
            return AskFormulaMask();
        case Step::Alias:
            return AskAlias();
        case Step::FormulaDescription:
            return AskFormulaDescription();
        case Step::NextField:
            return ++field_ < table_.Fields.size() ? Step::Include : Step::Done;
        case Step::Done:
        case Step::Full:
            break;
    }
    return step;
}

FieldWalk::Step FieldWalk::AskTable() {
    if (NextCatalogId(database_) > ItemCode::LastCatalog) return TellFull("the table " + Quoted(table_.Name));
    WizardTopic topic;
    topic.table = &table_;
    const WizardResponse response = pages_.AskYesNo(topic, wizard::TablePage(table_.Name), WizardResponse::Yes,
                                                    wizard::CheckName("The table", table_.Name));
    return response == WizardResponse::No || table_.Fields.empty() ? Step::Done : Step::Include;
}

FieldWalk::Step FieldWalk::AskInclude() {
    if (IsFull()) return TellFull("the field " + Quoted(F().Name));
    const WizardResponse response =
        pages_.AskYesNo(Topic(WizardQuestion::Include), wizard::IncludePage(table_.Name, F().Name), WizardResponse::Yes,
                        wizard::CheckName("The field", F().Name));
    if (response == WizardResponse::Back) return BackFromInclude();
    isIncluded_ = response != WizardResponse::No;
    return isIncluded_ ? Step::Raw : Step::NextField;
}

FieldWalk::Step FieldWalk::BackFromInclude() {
    if (field_ == 0) return Step::Table;
    --field_;
    if (!isIncluded_) return Step::Include;
    if (!hasFormulas_) return Step::FormulaQuestion;
    if (!isRaw_) return Step::Raw;
    UndoRow();
    if (formulaNumber_ > 1) --formulaNumber_;
    return Step::FormulaDescription;
}

FieldWalk::Step FieldWalk::AskRaw() {
    const WizardResponse response = pages_.AskYesNo(Topic(WizardQuestion::Raw), wizard::RawPage(F().Name));
    if (response == WizardResponse::Back) return Step::Include;
    isRaw_ = response != WizardResponse::No;
    return isRaw_ ? Step::Description : Step::FormulaQuestion;
}

FieldWalk::Step FieldWalk::AskDescription() {
    const WizardResponse response = pages_.AskText(
        Topic(WizardQuestion::Description), wizard::DescriptionPage(F().Name), F().Name,
        [&](const std::string& reply) { return wizard::CheckDescription(reply, CharactersBehindDescription(F())); });
    if (response == WizardResponse::Back) return Step::Raw;
    description_ = pages_.TextResponse();
    return Step::Value;
}

FieldWalk::Step FieldWalk::ChooseByType() {
    switch (FieldKindOf(F().Type)) {
        case FieldKind::Boolean:
            return Step::BooleanRow;
        case FieldKind::Date:
            maskPass_ = 1;
            return Step::DateMask;
        case FieldKind::Text:
            return MayBeTextDate(F()) ? Step::DateQuestion : Step::TextMask;
        case FieldKind::Number:
            break;
    }
    return Step::NumberMask;
}

FieldWalk::Step FieldWalk::AskDateMask() {
    if (IsFull()) return TellFull("a mask of the field " + Quoted(F().Name));
    const std::string_view proposed = proposedDateMasks[maskPass_ - 1];
    const auto rowOf = [&](std::string_view mask) { return DateRow(table_.Name, F(), description_, mask); };
    const WizardResponse response =
        pages_.AskText(Topic(WizardQuestion::DateMask, maskPass_), wizard::DateMaskPage(description_, proposed),
                       proposed, [&](const std::string& mask) {
                           if (mask.empty()) return Objection{};
                           const Objection tooLong = wizard::CheckMask(mask, maskWidth);
                           return tooLong.text.empty() ? wizard::CheckMaskedText(rowOf(mask).text) : tooLong;
                       });
    if (response == WizardResponse::Back) return BackFromMask(Step::DateMask, Step::Description);
    const Step next = maskPass_ < dateMasks ? Step::DateMask : Step::FormulaQuestion;
    if (next == Step::DateMask) ++maskPass_;
    return pages_.TextResponse().empty() ? next : WriteAndGo(rowOf(pages_.TextResponse()), next);
}

FieldWalk::Step FieldWalk::BackFromMask(Step step, Step first) {
    if (maskPass_ <= 1) return first;
    UndoRow();
    --maskPass_;
    return step;
}

FieldWalk::Step FieldWalk::AskDateQuestion() {
    const WizardResponse response =
        pages_.AskYesNo(Topic(WizardQuestion::DateQuestion), wizard::DateQuestionPage(F().Name), WizardResponse::No);
    if (response == WizardResponse::Back) return Step::Description;
    if (response == WizardResponse::No) return Step::TextMask;
    isTextDate_ = true;
    return Step::MaskCount;
}

FieldWalk::Step FieldWalk::AskMaskCount() {
    const WizardResponse response = pages_.AskText(Topic(WizardQuestion::MaskCount),
                                                   wizard::MaskCountPage(description_), "4", wizard::CheckMaskCount);
    if (response == WizardResponse::Back) return Step::DateQuestion;
    maskCount_ = wizard::WholeNumber(pages_.TextResponse()).value_or(0);
    maskPass_ = 1;
    return maskCount_ < 1 ? Step::FormulaQuestion : Step::TextDateMask;
}

FieldWalk::Step FieldWalk::AskTextDateMask() {
    if (IsFull()) return TellFull("a mask of the field " + Quoted(F().Name));
    std::optional<std::string_view> proposed;
    if (maskPass_ <= dateMasks) proposed = proposedDateMasks[maskPass_ - 1];
    const auto rowOf = [&](std::string_view mask) { return TextDateRow(table_.Name, F(), description_, mask); };
    const WizardResponse response =
        pages_.AskText(Topic(WizardQuestion::TextDateMask, maskPass_), wizard::MaskPage(description_), proposed,
                       [&](const std::string& mask) {
                           const Objection tooLong = wizard::CheckMask(mask, maskWidth);
                           return tooLong.text.empty() ? wizard::CheckMaskedText(rowOf(mask).text) : tooLong;
                       });
    if (response == WizardResponse::Back) return BackFromMask(Step::TextDateMask, Step::MaskCount);
    const Step next = maskPass_ < maskCount_ ? Step::TextDateMask : Step::FormulaQuestion;
    if (next == Step::TextDateMask) ++maskPass_;
    return WriteAndGo(rowOf(pages_.TextResponse()), next);
}

FieldWalk::Step FieldWalk::AskTextMask() {
    isTextDate_ = false;
    // The mask is stored with a blank in front.
    const WizardResponse response =
        pages_.AskText(Topic(WizardQuestion::TextMask), wizard::MaskPage(description_), "",
                       [](const std::string& mask) { return wizard::CheckMask(mask, maskWidth - 1); });
    if (response == WizardResponse::Back) return Step::Description;
    return WriteAndGo(TextRow(table_.Name, F(), description_, pages_.TextResponse()), Step::FormulaQuestion);
}

FieldWalk::Step FieldWalk::AskNumberMask() {
    const WizardResponse response =
        pages_.AskText(Topic(WizardQuestion::NumberMask), wizard::MaskPage(description_), ProposedNumberMask(F().Type),
                       [](const std::string& mask) { return wizard::CheckMask(mask, maskWidth); });
    if (response == WizardResponse::Back) return Step::Description;
    return WriteAndGo(NumberRow(table_.Name, F(), description_, pages_.TextResponse()), Step::FormulaQuestion);
}

FieldWalk::Step FieldWalk::WriteBoolean() {
    return WriteAndGo(BooleanRow(table_.Name, F(), description_), Step::FormulaQuestion);
}

FieldWalk::Step FieldWalk::AskFormulaQuestion() {
    const WizardResponse response =
        pages_.AskYesNo(Topic(WizardQuestion::FormulaQuestion), wizard::FormulaQuestionPage(F().Name));
    if (response == WizardResponse::Back) return BackFromFormulaQuestion();
    hasFormulas_ = response != WizardResponse::No;
    formulaCount_ = formulaNumber_ = 0;
    return hasFormulas_ ? Step::NextFormula : Step::NextField;
}

FieldWalk::Step FieldWalk::BackFromFormulaQuestion() {
    if (!isRaw_) return Step::Raw;
    UndoRow();
    switch (FieldKindOf(F().Type)) {
        case FieldKind::Boolean:
            return Step::BooleanRow;
        case FieldKind::Date:
            maskPass_ = dateMasks;
            return Step::DateMask;
        case FieldKind::Text:
            if (!isTextDate_) return Step::TextMask;
            maskPass_ = maskCount_;
            return maskCount_ < 1 ? Step::MaskCount : Step::TextDateMask;
        case FieldKind::Number:
            break;
    }
    return Step::NumberMask;
}

FieldWalk::Step FieldWalk::AskFormulaList() {
    const WizardResponse response =
        pages_.AskFormula(Topic(WizardQuestion::FormulaList, formulaNumber_),
                          [&](const std::string& entry) { return wizard::CheckFormula(F().Type, entry); });
    if (response == WizardResponse::Back) {
        if (formulaCount_ <= 1) return Step::FormulaQuestion;
        --formulaCount_;
        --formulaNumber_;
        UndoRow();
        return Step::FormulaDescription;
    }
    const FunctionCode code = FormulaOf(F().Type, pages_.Field1()).value_or(FunctionCode::None);
    if (code == FunctionCode::None) return Step::NextField;
    formula_.code = code;
    if (HasTextFormulas(F().Type)) return Step::Position;
    formula_.position = formula_.length = " ";
    return Step::FormulaMask;
}

FieldWalk::Step FieldWalk::AskPosition() {
    // A text taken from its left or right may be empty; one from the middle begins at its first character or later.
    const int least = formula_.code == FunctionCode::Mid ? 1 : 0;
    const WizardResponse response =
        pages_.AskText(Topic(WizardQuestion::Position, formulaNumber_), wizard::PositionPage(), F().Name,
                       [&](const std::string& reply) { return wizard::CheckParameter("position", reply, least); });
    if (response == WizardResponse::Back) return Step::FormulaList;
    formula_.position = pages_.TextResponse();
    if (formula_.code == FunctionCode::Mid) return Step::Length;
    formula_.length = formula_.mask = " ";
    formula_.defaultLength = wizard::WholeNumber(formula_.position).value_or(0);
    return Step::Alias;
}

FieldWalk::Step FieldWalk::AskLength() {
    const WizardResponse response =
        pages_.AskText(Topic(WizardQuestion::Length, formulaNumber_), wizard::LengthPage(), F().Name,
                       [](const std::string& reply) { return wizard::CheckParameter("length", reply, 0); });
    if (response == WizardResponse::Back) return Step::Position;
    formula_.length = pages_.TextResponse();
    formula_.mask = " ";
    formula_.defaultLength = wizard::WholeNumber(formula_.length).value_or(0);
    return Step::Alias;
}

FieldWalk::Step FieldWalk::BeforeFormulaMask() const {
    switch (formula_.code) {
        case FunctionCode::Mid:
            return Step::Length;
        case FunctionCode::Right:
        case FunctionCode::Left:
            return Step::Position;
        case FunctionCode::None:
        case FunctionCode::Sum:
        case FunctionCode::Count:
        case FunctionCode::Average:
        case FunctionCode::StandardDeviation:
        case FunctionCode::PopulationDeviation:
            break;
    }
    return Step::FormulaList;
}

FieldWalk::Step FieldWalk::AskFormulaMask() {
    const WizardResponse response =
        pages_.AskText(Topic(WizardQuestion::FormulaMask, formulaNumber_), wizard::MaskPage(description_),
                       wizard::ProposedFormulaMask(F().Type),
                       [](const std::string& mask) { return wizard::CheckMask(mask, maskWidth); });
    if (response == WizardResponse::Back) return BeforeFormulaMask();
    formula_.mask = pages_.TextResponse();
    formula_.defaultLength = MaskDisplayLength(formula_.mask);
    return Step::Alias;
}

FieldWalk::Step FieldWalk::AskAlias() {
    const WizardResponse response =
        pages_.AskText(Topic(WizardQuestion::Alias, formulaNumber_), wizard::AliasPage(), F().Name,
                       [&](const std::string& reply) { return wizard::CheckAlias(database_, reply); });
    if (response == WizardResponse::Back) return HasTextFormulas(F().Type) ? BeforeFormulaMask() : Step::FormulaMask;
    formula_.alias = pages_.TextResponse();
    return Step::FormulaDescription;
}

FieldWalk::Step FieldWalk::AskFormulaDescription() {
    const WizardResponse response =
        pages_.AskText(Topic(WizardQuestion::FormulaDescription, formulaNumber_), wizard::DescriptionPage(F().Name),
                       F().Name, [](const std::string& reply) { return wizard::CheckDescription(reply, 0); });
    if (response == WizardResponse::Back) return Step::Alias;
    description_ = pages_.TextResponse();
    return WriteAndGo(FormulaRow(table_.Name, F(), description_, formula_), Step::NextFormula);
}

WizardTopic FieldWalk::Topic(WizardQuestion question, int pass) const {
    WizardTopic topic;
    topic.question = question;
    topic.table = &table_;
    topic.field = &F();
    topic.pass = pass;
    return topic;
}

FieldWalk::Step FieldWalk::WriteAndGo(CatalogRow row, Step next) {
    row.id = nextId_ ? *nextId_ : NextCatalogId(database_);
    if (row.id > ItemCode::LastCatalog) return TellFull(Quoted(row.text));
    writer_.Write(row);
    lastId_ = row.id;
    nextId_ = row.id + 1;
    return next;
}

bool FieldWalk::IsFull() const { return lastId_ >= ItemCode::LastCatalog; }

FieldWalk::Step FieldWalk::TellFull(const std::string& next) {
    pages_.Tell("The catalog is full: a report can select " + std::to_string(ItemCode::LastCatalog) + " entries, and " +
                next + " would come next. All entries so far are kept; no more fields are asked for.");
    return Step::Full;
}

void FieldWalk::UndoRow() {
    database_.Execute("DELETE * FROM [Report - Index] WHERE ID = " + std::to_string(lastId_));
    --lastId_;
    nextId_.reset();
}

}  // namespace quillform
