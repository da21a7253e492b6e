// What a recording says after going back in ways that delete rows of pages further behind.
#include <gtest/gtest.h>

#include "catalog/AnswersFile.h"
#include "catalog/CatalogFixture.h"
#include "catalog/MemoryDatabase.h"
#include "catalog/RecordingPage.h"
#include "catalog/Unattended.h"

namespace quillform {
namespace {

using testing::Column;
using testing::ScriptedPage;
using testing::Table;
using Lines = std::vector<std::string>;

class Recording : public testing::CatalogFixture {};

struct Way {
    const char* what;
    FieldType first;
    FieldType second;
    Lines answers;  ///< behind the Yes to the table
    std::size_t rows;
};

TEST_F(Recording, GivesTheRowsThatGoingBackLeft) {
    using enum FieldType;
    const std::string tooLong(51, 'm');
    const Way ways[] = {
        {"a mask before blank ones",
         Date,
         Long,
         {"yes", "yes", "next", "next", "next", "=", "=", "back", "=", "no", "no"},
         1},
        {"a mask before one that was refused",
         Date,
         Long,
         {"yes", "yes", "next", "next", "=" + tooLong, "back", "=d", "=", "=", "=", "no", "no"},
         1},
        {"the number before a date without masks",
         Long,
         Date,
         {"yes", "yes", "next", "next", "no", "yes", "yes", "next", "=", "=", "=", "=", "back", "=d", "no"},
         1},
        {"a date's masks, and a truth's row that is written again",
         Date,
         Boolean,
         {"yes", "yes", "next", "=", "=", "=", "=", "back", "=m", "back", "=", "no", "yes", "yes", "next", "back",
          "no"},
         1},
        {"a formula",
         Long,
         Long,
         {"yes",  "yes", "next", "next",    "yes",  "=Sum(Field)", "next", "=A",   "=B",      "=Avg(Field)",
          "next", "=C",  "=D",   "=(None)", "back", "back",        "back", "back", "=(None)", "no"},
         2},
    };
    int count = 0;
    for (const Way& way : ways) {
        SCOPED_TRACE(way.what);
        const auto make = [&](const char* name) {
            path_ = folder_.File(name + std::to_string(count));
            Make({Table("A", {Column("N", way.first), Column("D", way.second)})});
        };
        ++count;
        make("walk");
        Lines answers = way.answers;
        answers.insert(answers.begin(), "yes");
        ScriptedPage page(answers);
        RecordingPage recording(page);
        Configure(recording);
        const Lines rows = IndexRows();
        EXPECT_EQ(rows.size(), way.rows);
        EXPECT_TRUE(recording.GivesAllRows());
        const std::string file = AnswersText(recording.Recorded(*engine_->OpenDatabase(path_)));
        make("replay");
        ConfigureByAnswers(*engine_->OpenDatabase(path_), path_, ParseAnswers(file, "answers"));
        EXPECT_EQ(IndexRows(), rows) << file;
    }
}

// Back to a field that was passed over, and from there to the one before it, whose row nothing took back.
TEST_F(Recording, OwnsUpToRowsThatAnswersCannotGive) {
    Make({Table("A", {Column("N", FieldType::Long), Column("D", FieldType::Long), Column("E", FieldType::Long)})});
    ScriptedPage page({"yes", "yes", "yes", "next", "next", "no", "no", "back", "back", "yes", "yes", "next", "next",
                       "no", "no", "no"});
    RecordingPage recording(page);
    Configure(recording);
    EXPECT_EQ(IndexRows().size(), 2U);
    EXPECT_FALSE(recording.GivesAllRows());
}

}  // namespace
}  // namespace quillform
