// Answers files: whatever the bytes are, they are refused with a sentence or read to answers whose text reads to the
// same answers; and answers that are read configure a database or leave it as it was.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "catalog/AnswersFile.h"
#include "catalog/MemoryDatabase.h"
#include "catalog/Unattended.h"
#include "platform/RunTimeError.h"

namespace {

using quillform::FieldType;
using quillform::testing::Column;

quillform::testing::MemoryFile Shop() {
    quillform::testing::MemoryFile file;
    file.tables = {quillform::testing::Table("A", {Column("N", FieldType::Long), Column("T", FieldType::Text, 14),
                                                   Column("M", FieldType::Memo), Column("D", FieldType::Date)}),
                   quillform::testing::Table("B", {Column("N", FieldType::Long), Column("B", FieldType::Boolean)})};
    return file;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    quillform::Answers answers;
    try {
        answers = quillform::ParseAnswers({reinterpret_cast<const char*>(data), size}, "fuzz");
    } catch (const quillform::RunTimeError&) {
        return 0;
    }
    const std::string text = quillform::AnswersText(answers);
    if (quillform::AnswersText(quillform::ParseAnswers(text, "fuzz")) != text) std::abort();

    quillform::testing::MemoryFile file = Shop();
    quillform::testing::MemoryDatabase database(file);
    try {
        quillform::ConfigureByAnswers(database, "fuzz.mdb", answers);
        if (file.tables.size() != 5) std::abort();
    } catch (const quillform::RunTimeError&) {
        if (file.tables.size() != 2 || !file.records.empty()) std::abort();
    }
    return 0;
}
