// Which file a save goes to, and who is asked first.

#include <gtest/gtest.h>

#include <filesystem>

#include "ScratchFolder.h"
#include "ScriptedUser.h"
#include "platform/OutputFile.h"
#include "platform/Text.h"
#include "support/SaveName.h"

namespace quillform {
namespace {

TEST(SaveName, AGoodFileIsReplacedOnlyAfterAQuestionAboutIt) {
    struct Case {
        const char* what;
        std::vector<std::string> there;
        std::string chosen;
        bool answer;
        std::string saved;  // empty: nothing
        std::string askedAbout;
    };
    const Case cases[] = {
        {"a new name", {}, "report.pdf", false, "REPORT.PDF", ""},
        {"one that the dialog asked about", {"report.pdf", "REPORT.PDF"}, "report.pdf", false, "report.pdf", ""},
        {"one in capitals", {"REPORT.PDF"}, "report.pdf", true, "REPORT.PDF", "REPORT.PDF"},
        {"one in capitals that is to stay", {"REPORT.PDF"}, "report.pdf", false, "", "REPORT.PDF"},
        {"one of another case", {"Report.Pdf"}, "report.pdf", true, "Report.Pdf", "Report.Pdf"},
        {"letters beyond ASCII", {"BÜCHER.PDF"}, "Bücher.pdf", false, "", "BÜCHER.PDF"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const ScratchFolder folder;
        for (const std::string& name : c.there) OutputFile(folder.File(name)).Commit();
        ScriptedUser user;
        user.answer = c.answer;
        const auto saved = NameToSave(folder.File(c.chosen), "Save as...", user);
        EXPECT_EQ(saved.value_or(""), c.saved.empty() ? "" : folder.File(c.saved));
        std::vector<std::string> questions;
        if (!c.askedAbout.empty())
            questions.push_back("\"" + folder.File(c.askedAbout) + "\" is there already.  Replace it?");
        EXPECT_EQ(user.questions, questions);
    }
}

TEST(SaveName, CapitalsNeverLeadToAnotherFileOrFolder) {
    const ScratchFolder folder;
    for (const char* sub : {"plain", "twin", "TWIN"}) std::filesystem::create_directory(folder.File(sub));
    for (const char* file : {"plain/one.rep", "plain/two.rep", "plain/TWO.REP"}) OutputFile(folder.File(file)).Commit();
    EXPECT_EQ(NameToKeep(folder.File("plain/one.rep")), UpperCase(folder.File("plain/one.rep")));
    EXPECT_EQ(NameToKeep(folder.File("plain/two.rep")), folder.File("plain/two.rep"));
    EXPECT_EQ(NameToKeep(folder.File("plain/new.rep")), UpperCase(folder.File("plain/new.rep")));
    EXPECT_EQ(NameToKeep(folder.File("twin/new.rep")), folder.File("twin/NEW.REP"));
}

}  // namespace
}  // namespace quillform
