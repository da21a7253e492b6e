// How fast a report's rich text is read, laid out on pages and put into a PDF.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "print/PdfTarget.h"
#include "richtext/PageFlow.h"
#include "richtext/PrintPages.h"
#include "richtext/ReadRichText.h"

namespace quillform::richtext {
namespace {

// Six items a line and 50 lines a page, as the screen output has them.
std::string Report(int records) {
    std::string text =
        "{\\rtf1\\ansi{\\fonttbl{\\f1\\fcharset0 Arial;}{\\f2\\fcharset0 Courier New;}}\\paperw12240\\paperh15840"
        "\\margl720\\margr720\\margt720\\margb720 ";
    for (int i = 0; i < records; ++i) {
        text += "{\\f1\\fs20\\cf1\\cb16 " + std::to_string(10'248 + i) + "\\tab\\tab}";
        for (const char* item : {"J\xFCrgen Gro\xDF", "Blauer See", "12/24/1996", "No"})
            text += std::string("{\\f1\\fs18\\cf1\\cb16 ") + item + "\\tab\\tab}";
        text += "{\\f2\\fs18\\cf1\\cb16 " + std::to_string(i * 37 % 30'000) + ".50} \\par\r\n";
        if (i % 50 == 49) text += " {\\page}\r\n";
    }
    return text + "\\par}\r\n";
}

void Count(benchmark::State& state, const std::string& text) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void BM_Read(benchmark::State& state) {
    const std::string text = Report(static_cast<int>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(ReadRichText(text));
    Count(state, text);
}
BENCHMARK(BM_Read)->Arg(3'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void BM_LayOut(benchmark::State& state) {
    const std::string text = Report(static_cast<int>(state.range(0)));
    const Document document = ReadRichText(text);
    const auto measure = print::MakeTextMeasure();
    std::int64_t pages = 0;
    for (auto _ : state) {
        PageFlow flow(document, *measure);
        SheetPage page;
        for (pages = 0; flow.Next(page); ++pages) benchmark::DoNotOptimize(page.texts.data());
    }
    Count(state, text);
    state.counters["pages"] = static_cast<double>(pages);
}
BENCHMARK(BM_LayOut)->Arg(3'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void BM_ReadToPdf(benchmark::State& state) {
    const std::string text = Report(static_cast<int>(state.range(0)));
    const auto file = std::filesystem::temp_directory_path() / "bench-richtext.pdf";
    for (auto _ : state) PrintPages(ReadRichText(text), *print::MakePdfTarget(file, {}));
    std::filesystem::remove(file);
    Count(state, text);
}
BENCHMARK(BM_ReadToPdf)->Arg(3'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillform::richtext

BENCHMARK_MAIN();
