#pragma once

#include <string>
#include <string_view>

#include "model/DataAccess.h"

// What stands on the pages of a walk: a label above the reply and an explanation in whole sentences, and the replies
// that are proposed beside those of FieldRows.h.
namespace quillform::wizard {

struct PageTexts {
    std::string label;
    std::string explanation;
};

PageTexts TablePage(std::string_view table);
PageTexts IncludePage(std::string_view table, std::string_view field);
PageTexts RawPage(std::string_view field);
PageTexts DescriptionPage(std::string_view field);
/// For every mask but those of dates.
PageTexts MaskPage(std::string_view description);
PageTexts DateMaskPage(std::string_view description, std::string_view proposedMask);
PageTexts DateQuestionPage(std::string_view field);
PageTexts MaskCountPage(std::string_view description);
PageTexts FormulaQuestionPage(std::string_view field);
/// It has no label of its own: that of the page before stays.
std::string FormulaListExplanation();
/// The words are the same for all functions that take a position.
PageTexts PositionPage();
PageTexts LengthPage();
PageTexts AliasPage();
PageTexts LinkPage(std::string_view first, std::string_view second);
PageTexts LinkColumnsPage(std::string_view first, std::string_view second);

/// The mask proposed for a formula over a column that is no text.
std::string_view ProposedFormulaMask(FieldType type);

}  // namespace quillform::wizard
