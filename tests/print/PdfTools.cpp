#include "print/PdfTools.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace quillform::print {

namespace {

constexpr int kDotsPerInch = 144;

std::string WholeFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream all;
    all << in.rdbuf();
    return all.str();
}

}  // namespace

ToolResult RunTool(const std::string& command) {
    ToolResult result;
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) return result;
    std::array<char, 4096> part{};
    for (std::size_t size = 0; (size = fread(part.data(), 1, part.size(), pipe)) > 0;)
        result.output.append(part.data(), size);
    const int status = pclose(pipe);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

bool HasTool(const std::string& name) { return RunTool("command -v " + name).exitCode == 0; }

std::string Quoted(const std::filesystem::path& path) {
    std::string quoted = "'";
    quoted += path.string();
    return quoted += '\'';
}

std::vector<PlacedWord> WordsOf(const std::filesystem::path& pdf) {
    return WordsIn(RunTool("pdftotext -bbox " + Quoted(pdf) + " -").output);
}

std::vector<PlacedWord> WordsOfFirstPage(const std::filesystem::path& pdf) {
    std::vector<PlacedWord> words = WordsOf(pdf);
    std::erase_if(words, [](const PlacedWord& word) { return word.page > 0; });
    for (PlacedWord& word : words)
        for (double* const place : {&word.left, &word.top, &word.right, &word.bottom}) *place -= kEdge;
    return words;
}

std::string TextOf(const std::filesystem::path& pdf) {
    std::string text = RunTool("pdftotext -raw " + Quoted(pdf) + " -").output;
    std::erase(text, '\f');
    return text;
}

Picture::Picture(const std::filesystem::path& pdf, const ScratchFolder& folder) {
    const std::filesystem::path stem = folder / "picture";
    RunTool("pdftoppm -singlefile -r " + std::to_string(kDotsPerInch) + " " + Quoted(pdf) + " " + Quoted(stem));
    std::istringstream in(WholeFile(stem.string() + ".ppm"));
    std::string magic;
    int most = 0;
    in >> magic >> width_ >> height_ >> most;
    in.get();
    pixels_.assign(std::istreambuf_iterator<char>(in), {});
    if (magic != "P6" || pixels_.size() != static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_) * 3)
        throw std::runtime_error("pdftoppm gave no picture");
}

Picture::Pixel Picture::At(double x, double y) const {
    const auto place = [](double twips) { return static_cast<int>((twips + kEdge) * kDotsPerInch / 1440); };
    const int column = place(x);
    const int row = place(y);
    if (column < 0 || row < 0 || column >= width_ || row >= height_) return {-1, -1, -1};
    const std::size_t at = static_cast<std::size_t>(row * width_ + column) * 3;
    const auto part = [&](std::size_t i) { return static_cast<int>(static_cast<unsigned char>(pixels_[at + i])); };
    return {part(0), part(1), part(2)};
}

int Picture::Count(double x1, double y1, double x2, double y2, Pixel wanted) const {
    constexpr double kStep = 1440.0 / kDotsPerInch;
    int count = 0;
    for (double y = y1; y < y2; y += kStep) {
        for (double x = x1; x < x2; x += kStep) count += At(x, y) == wanted ? 1 : 0;
    }
    return count;
}

}  // namespace quillform::print
