#include "data/jet/Samples.h"

#include <unistd.h>

#include <algorithm>
#include <bit>
#include <fstream>

namespace quillform::test {

namespace {

void AppendHex(std::string& out, std::uint64_t value, int digits) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) out.push_back("0123456789abcdef"[value >> shift & 15]);
}

std::string Escaped(std::string_view text) {
    std::string out;
    for (const char letter : text) {
        if (letter == '\\')
            out += "\\\\";
        else if (letter == '\t')
            out += "\\t";
        else if (letter == '\n')
            out += "\\n";
        else if (letter == '\r')
            out += "\\r";
        else
            out.push_back(letter);
    }
    return out;
}

std::string Unscaled(std::string_view digits, int scale) {
    std::string out;
    for (const char letter : digits)
        if (letter >= '0' && letter <= '9' && (letter != '0' || !out.empty())) out.push_back(letter);
    if (out.empty()) out = "0";
    if (digits.starts_with('-')) out.insert(0, "-");
    return out + ":" + std::to_string(scale);
}

std::string FieldText(const ValueView& value, const Field& field) {
    std::string out;
    const bool isLong = field.Type == FieldType::Memo || field.Type == FieldType::LongBinary;
    if (value.IsNull() || (isLong && value.text.empty())) return "\\N";
    switch (value.kind) {
        case ValueKind::Boolean:
        case ValueKind::Integer:
        case ValueKind::Currency:
            return std::to_string(value.integer);
        case ValueKind::Single:
            AppendHex(out, std::bit_cast<std::uint32_t>(static_cast<float>(value.real)), 8);
            return out;
        case ValueKind::Double:
        case ValueKind::Date:
            AppendHex(out, std::bit_cast<std::uint64_t>(value.real), 16);
            return out;
        case ValueKind::Decimal:
            return Unscaled(value.text, field.Scale);
        case ValueKind::Text:
            return Escaped(value.text);
        case ValueKind::Guid:
            return std::string(value.text);
        case ValueKind::Binary:
            for (const char byte : value.text) AppendHex(out, static_cast<unsigned char>(byte), 2);
            return out;
        case ValueKind::Null:
            break;
    }
    return out;
}

}  // namespace

std::filesystem::path SampleFolder() {
    const std::filesystem::path folder = QUILLFORM_SOURCE_DIR "/../shared/jet/samples";
    return std::filesystem::exists(folder) ? folder : std::filesystem::path();
}

std::vector<std::filesystem::path> SampleFiles() {
    std::vector<std::filesystem::path> files;
    if (SampleFolder().empty()) return files;
    for (const auto& entry : std::filesystem::directory_iterator(SampleFolder()))
        if (entry.path().extension() == ".mdb") files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<Line> ReadList(const std::string& fileName) {
    std::vector<Line> lines;
    std::ifstream file(SampleFolder() / fileName);
    std::string text;
    std::getline(file, text);
    while (std::getline(file, text)) {
        Line line(1);
        for (const char letter : text)
            if (letter == '\t')
                line.emplace_back();
            else
                line.back().push_back(letter);
        lines.push_back(std::move(line));
    }
    return lines;
}

int FindTable(const data::Storage& storage, std::string_view name) {
    for (std::size_t i = 0; i < storage.Tables().size(); ++i)
        if (storage.Tables()[i].Name == name) return static_cast<int>(i);
    return -1;
}

std::string CanonicalDump(const data::StoredTable& table, const std::vector<int>& order, std::size_t* rows) {
    std::vector<std::string> lines;
    for (auto scan = table.Scan(); scan->Next();) {
        std::string line;
        for (const int column : order) {
            if (column != order.front()) line.push_back('\t');
            line += FieldText(scan->Value(column), table.Definition().Fields[static_cast<std::size_t>(column)]);
        }
        lines.push_back(std::move(line));
    }
    std::sort(lines.begin(), lines.end());
    std::string dump;
    for (const std::string& line : lines) dump += line + "\n";
    if (rows) *rows = lines.size();
    return dump;
}

ScratchFile::ScratchFile(std::string_view name)
    : path_(std::filesystem::temp_directory_path() /
            ("quillform-" + std::to_string(::getpid()) + "-" + std::string(name))) {
    std::filesystem::remove(path_);
}

ScratchFile::~ScratchFile() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
    std::filesystem::remove(path_.string() + "-journal", ignored);
}

}  // namespace quillform::test
