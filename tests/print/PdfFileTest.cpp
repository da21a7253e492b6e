#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/Dates.h"
#include "platform/RunTimeError.h"
#include "print/PdfTools.h"

namespace quillform::print {
namespace {

std::string BytesOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void ExpectSound(const std::filesystem::path& pdf) {
    const ToolResult check = RunTool("qpdf --check " + Quoted(pdf));
    EXPECT_EQ(check.exitCode, 0) << check.output;
    EXPECT_EQ(check.output.find("WARNING"), std::string::npos) << check.output;
}

#if defined(__SANITIZE_ADDRESS__)
constexpr std::size_t kSpread = 100 * 1024 * 1024;  // the sanitizer keeps freed memory for a while
#else
constexpr std::size_t kSpread = 2 * 1024 * 1024;
#endif

std::size_t ResidentBytes() {
    std::ifstream in("/proc/self/statm");
    std::size_t whole = 0, resident = 0;
    in >> whole >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

void PrintRows(PdfTarget& target, int first, int count) {
    for (int row = first; row < first + count; ++row) {
        const double y = target.CurrentY();
        target.BeginRow();
        for (int item = 0; item < 6; ++item) {
            target.SetCurrentX(item * 1800);
            target.SetCurrentY(y);
            target.Print("item " + std::to_string(row * 31 + item));
        }
    }
}

TEST(PdfFileTest, SameCallsGiveTheSameBytes) {
    const ScratchFolder folder;
    for (const char* name : {"a.pdf", "b.pdf"}) {
        const auto target = MakePdfTarget(folder / name, {"Same", "en-US", 36160.5});
        target->SetFont(target->Font({"Times New Roman", 11}));
        PrintRows(*target, 0, 50);
        target->AddOutlineEntry(1, "Group");
        target->NewPage();
        target->Print("\xE4\xB8\xAD \xD0\x96");
        target->EndDoc();
    }
    EXPECT_EQ(BytesOf(folder / "a.pdf"), BytesOf(folder / "b.pdf"));
    EXPECT_EQ(BytesOf(folder / "a.pdf").substr(0, 8), "%PDF-1.7");
}

TEST(PdfFileTest, DifferentContentHasADifferentIdentifier) {
    const ScratchFolder folder;
    std::string ends[2];
    for (int i = 0; i < 2; ++i) {
        const auto target = MakePdfTarget(folder / "a.pdf", {"Title", "en", 1});
        target->Print(i == 0 ? "1998" : "1999");
        target->EndDoc();
        const std::string bytes = BytesOf(folder / "a.pdf");
        const std::size_t at = bytes.rfind("/ID[<");
        ASSERT_NE(at, std::string::npos);
        ends[i] = bytes.substr(at, 40);
    }
    EXPECT_NE(ends[0], ends[1]);
}

TEST(PdfFileTest, NothingIsLeftWithoutEndDoc) {
    const ScratchFolder folder;
    {
        const auto target = MakePdfTarget(folder / "a.pdf", {});
        PrintRows(*target, 0, 100);
        target->NewPage();
        PrintRows(*target, 0, 100);
        EXPECT_FALSE(std::filesystem::exists(folder / "a.pdf"));
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(PdfFileTest, AFolderThatIsMissingIsAnError) {
    const ScratchFolder folder;
    EXPECT_THROW(MakePdfTarget(folder / "no" / "a.pdf", {}), RunTimeError);
}

TEST(PdfFileTest, PagesAreCountedAsPrinted) {
    struct Case {
        const char* name;
        void (*draw)(PdfTarget&);
        int pages;
    };
    const Case cases[] = {
        {"nothing at all", [](PdfTarget&) {}, 1},
        {"a text", [](PdfTarget& t) { t.Print("x"); }, 1},
        {"ended with NewPage", [](PdfTarget& t) { t.Print("x"), t.NewPage(); }, 1},
        {"blank lines behind NewPage", [](PdfTarget& t) { t.Print("x"), t.NewPage(), t.Print(), t.Print("  "); }, 1},
        {"a blank page between", [](PdfTarget& t) { t.NewPage(), t.Print("x"); }, 2},
        {"a box only", [](PdfTarget& t) { t.Print("x"), t.NewPage(), t.FillBox(0, 0, 9, 9, 3); }, 2},
        {"an outline entry only", [](PdfTarget& t) { t.Print("x"), t.NewPage(), t.AddOutlineEntry(1, "here"); }, 2},
    };
    for (const Case& c : cases) {
        const ScratchFolder folder;
        const auto target = MakePdfTarget(folder / "a.pdf", {});
        c.draw(*target);
        target->EndDoc();
        EXPECT_EQ(target->PageCount(), c.pages) << c.name;
        if (!HasTool("qpdf")) continue;
        ExpectSound(folder / "a.pdf");
        EXPECT_EQ(RunTool("qpdf --show-npages " + Quoted(folder / "a.pdf")).output, std::to_string(c.pages) + "\n")
            << c.name;
    }
}

TEST(PdfFileTest, CallsBehindEndDocDoNoHarm) {
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "a.pdf", {});
    target->Print("x");
    target->EndDoc();
    const std::string bytes = BytesOf(folder / "a.pdf");
    target->Print("late");
    target->AddOutlineEntry(1, "late");
    target->NewPage();
    target->EndDoc();
    EXPECT_EQ(BytesOf(folder / "a.pdf"), bytes);
    EXPECT_EQ(target->PageCount(), 1);
}

TEST(PdfFileTest, HostileTextsKeepTheFileSound) {
    SKIP_WITHOUT("qpdf");
    const std::string_view texts[] = {"((((",
                                      "))))",
                                      "\\",
                                      "\\)",
                                      ")Tj ET Q endstream endobj",
                                      "<</MCID 0>>BDC",
                                      std::string_view("a\0b", 3),
                                      "\r\n\t\x1B\x7F",
                                      "\xFF\xFE\x80\xC3",
                                      "\xC3(",
                                      "\xED\xA0\x80",
                                      "\xF4\x90\x80\x80",
                                      "\xF0\x9F\x98\x80",
                                      "\xEF\xBF\xBF",
                                      "%comment",
                                      "]>>"};
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "a.pdf", {"first", "e)n(", 0});
    for (const std::string_view text : texts) {
        target->SetTitle(text);
        target->SetFont(target->Font({std::string(text), 9, false, false, true}));
        target->AddOutlineEntry(2, text);
        target->Print(text);
    }
    target->Print(std::string(100000, ')'));
    target->EndDoc();
    ExpectSound(folder / "a.pdf");
    const std::string text = TextOf(folder / "a.pdf");
    for (const char* kept : {"((((", "))))", ")Tj ET Q endstream endobj", "<</MCID 0>>BDC", "a b", "%comment"})
        EXPECT_NE(text.find(kept), std::string::npos) << kept;
}

TEST(PdfFileTest, ManyPagesTakeNoMoreMemoryThanFew) {
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "a.pdf", {});
    target->SetFont(target->Font({"Arial", 9}));
    std::size_t early = 0;
    constexpr int kPages = 3000;
    for (int page = 0; page < kPages; ++page) {
        if (page == 500) early = ResidentBytes();
        target->AddOutlineEntry(1 + page % 2, "Group " + std::to_string(page));
        PrintRows(*target, page * 25, 25);
        target->NewPage();
    }
    // A page is some 10 KB of content, so keeping pages or their objects would show as tens of megabytes.
    EXPECT_LT(ResidentBytes(), early + kSpread);
    target->EndDoc();
    EXPECT_EQ(target->PageCount(), kPages);
    if (!HasTool("qpdf")) return;
    ExpectSound(folder / "a.pdf");
    EXPECT_EQ(RunTool("qpdf --show-npages " + Quoted(folder / "a.pdf")).output, "3000\n");
}

}  // namespace
}  // namespace quillform::print
