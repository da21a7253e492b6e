#include "catalog/WizardTexts.h"

#include <initializer_list>

#include "catalog/FieldRows.h"

namespace quillform::wizard {

namespace {

std::string Join(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const std::string_view part : parts) text += part;
    return text;
}

PageTexts ParameterPage(std::string_view parameter) {
    constexpr std::string_view formula = "Mid$(Field, Position, Length)";
    return {
        Join({parameter, " Parameter in ", formula, ":"}),
        Join({"You must enter what the value for certain parameters is going to be.  Enter a numeric value for the '",
              parameter, "' Parameter in the formula '", formula, "'."})};
}

}  // namespace

PageTexts TablePage(std::string_view table) {
    return {Join({"Include Table '", table, "'?"}),
            Join({"Do you want the table '", table, "' to be included on the report?"})};
}

PageTexts IncludePage(std::string_view table, std::string_view field) {
    return {Join({"Include Field '", field, "'?"}),
            Join({"Do you want the Field '", field, "' in the table '", table, "' to be included on the report?"})};
}

PageTexts RawPage(std::string_view field) {
    return {"Include Data as is without performing any calculation/alteration to the data.",
            Join({"Do you want the field '", field,
                  " ' on the report in it's raw format in the database.  If you respond 'No', you will still have the "
                  "opportunity to have formula fields involving the field."})};
}

PageTexts DescriptionPage(std::string_view field) {
    return {"Field Description:",
            Join({"What description would you give the field '", field,
                  "' so that the end user best understands what the data is that they are seeing."})};
}

PageTexts MaskPage(std::string_view description) {
    return {"Field Mask:",
            Join({"What mask do you want to use when printing the data on the report for the '", description, "'?"})};
}

PageTexts DateMaskPage(std::string_view description, std::string_view proposedMask) {
    return {"Field Mask:",
            Join({"What mask do you want to use when printing the data on the report for the '", description, "(",
                  proposedMask,
                  ") '?  You have up to 4 masks for Date fields.  If you don't want to use all 4 masks, leave the mask "
                  "blank."})};
}

PageTexts DateQuestionPage(std::string_view field) {
    return {Join({"Is '", field, "' a date?"}), Join({"Is field & '", field, "' really a date?"})};
}

PageTexts MaskCountPage(std::string_view description) {
    return {"# of masks:",
            Join({"How many different masks do you want to be able to have for ", description,
                  " when querying and building reports?  If this is a text field and you don't want any mask you "
                  "should still enter one otherwise the field won't appear in the query builder or the quillform."})};
}

PageTexts FormulaQuestionPage(std::string_view field) {
    return {Join({"Create Formulas for '", field, "'?"}),
            Join({"Do you want to create any formulas for the field '", field, " ' on reports or queries."})};
}

std::string FormulaListExplanation() { return "Select the type of formula you want to use."; }

PageTexts PositionPage() { return ParameterPage("Position"); }
PageTexts LengthPage() { return ParameterPage("Length"); }

PageTexts AliasPage() {
    return {"Formula Alias:",
            "When using formulas you must create a unique alias that the system uses to distinguish the result of the "
            "formula from other data.  Enter the unique alias that you want to use."};
}

PageTexts LinkPage(std::string_view first, std::string_view second) {
    return {{}, Join({"Is there a relationship between '", first, "' and '", second, "'?"})};
}

PageTexts LinkColumnsPage(std::string_view first, std::string_view second) {
    return {{},
            Join({"Select the fields from Table '", first, "' and the field from Table '", second,
                  "' That links the two tables together."})};
}

std::string_view ProposedFormulaMask(FieldType type) {
    return type == FieldType::Date ? proposedDateMasks[0] : ProposedNumberMask(type);
}

}  // namespace quillform::wizard
