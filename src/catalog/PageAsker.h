#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "catalog/WizardPage.h"
#include "catalog/WizardTexts.h"
#include "model/UserInterface.h"

namespace quillform {

/// How a doubt ends.
inline constexpr std::string_view keepHint = " To keep it nevertheless, give it once more.";

/// What speaks against a reply; an empty text if nothing does.
struct Objection {
    std::string text;      ///< whole sentences, with the reply in them
    bool isFinal = false;  ///< the catalog can't hold the reply; otherwise it is taken if it is given once more

    static Objection Refuse(std::string text) { return {std::move(text), true}; }
    static Objection Doubt(std::string text) { return {std::move(text), false}; }
};
using FindObjection = std::function<Objection(const std::string& reply)>;

/// Shows one page at a time. A reply that something speaks against is told to the user, and the page is shown again
/// with the reply still in it, so that no answer is lost by a slip.
class PageAsker {
public:
    /// Both outlive it.
    PageAsker(WizardPage& page, UserInterface& user) : page_(page), user_(user) {}

    /// A Yes and No page; `focus` is the button that Enter presses. `problemOfYes` says why Yes can't be.
    WizardResponse AskYesNo(const WizardTopic& topic, const wizard::PageTexts& texts,
                            WizardResponse focus = WizardResponse::Yes, const std::string& problemOfYes = {});
    /// A page with a reply box; without a proposed reply the box keeps what it holds.
    WizardResponse AskText(const WizardTopic& topic, const wizard::PageTexts& texts,
                           std::optional<std::string_view> proposed, const FindObjection& find);
    /// The page with the list of formulas; `find` is given the entry that was picked.
    WizardResponse AskFormula(const WizardTopic& topic, const FindObjection& find);
    /// The page with the columns of both tables of the topic. `problem` looks at Field1 and Field2.
    WizardResponse AskColumns(const WizardTopic& topic, const wizard::PageTexts& texts,
                              const std::function<std::string()>& problem);

    const std::string& TextResponse() const { return page_.TextResponse(); }
    const std::string& Field1() const { return page_.Field1(); }
    const std::string& Field2() const { return page_.Field2(); }
    void Tell(std::string_view sentence);

private:
    WizardResponse ShowUntilTaken(const std::function<Objection()>& find);

    WizardPage& page_;
    UserInterface& user_;
};

}  // namespace quillform
