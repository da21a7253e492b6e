#include "persistence/QueryFile.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/CodePage.h"
#include "platform/Numbers.h"
#include "platform/OutputFile.h"
#include "platform/Paths.h"
#include "platform/RunTimeError.h"
#include "platform/Text.h"

namespace quillform {

namespace {

bool ReadQuery(std::string_view line, clssQuery& query) {
    RecordLine record(line, 0);
    const std::optional<std::string_view> code = record.Unquoted();
    if (!code) return false;
    query.Code = CInt(std::clamp(Val(*code), -32768.0, 32767.0));
    for (std::string clssQuery::*field : {&clssQuery::Operator, &clssQuery::Value, &clssQuery::Join, &clssQuery::Text})
        query.*field = std::string(Trim(record.Quoted().value_or(std::string_view())));
    return true;
}

}  // namespace

int LoadQueries(const std::string& fileName, collQuery& queries) {
    const std::optional<ResolvedPath> found = FindFile(fileName);
    if (!found) throw RunTimeError(ErrorNumber::FileNotFound, "You've entered an invalid path or filename.");
    const std::string bytes = ReadWholeFile(found->path);
    if (bytes.find('\0') != std::string::npos)
        throw RunTimeError(ErrorNumber::InvalidFileFormat,
                           "\"" + fileName + "\" is no query file: it isn't made of text.");
    const std::string text = Utf8FromCp1252(bytes);
    const std::string_view all = text;
    std::vector<clssQuery> lines;  // added only once all of them are read
    for (std::size_t start = 0, number = 1; start < all.size(); ++number) {
        const std::size_t end = std::min(all.find('\n', start), all.size());
        clssQuery query;
        try {
            if (ReadQuery(all.substr(start, end - start), query)) lines.push_back(std::move(query));
        } catch (const RunTimeError& error) {
            throw RunTimeError(error.Number(), "The query file \"" + fileName + "\" can't be read at line " +
                                                   std::to_string(number) + ": its catalog number is too large.");
        }
        start = end + 1;
    }
    for (clssQuery& line : lines) {
        line.Key = Str(static_cast<double>(queries.Count() + 1));
        queries.Add(std::move(line));
    }
    return static_cast<int>(lines.size());
}

SaveLosses SaveQueries(const std::string& fileName, const collQuery& queries) {
    if (!UpperCase(fileName).ends_with(".QRY"))
        throw RunTimeError(ErrorNumber::InvalidArgument, "You must save the Query with an extension of .QRY");
    SaveLosses losses;
    OutputFile file(TargetPath(fileName));
    for (const clssQuery& query : queries) {
        RecordLineWriter line({});
        line.Unquoted(TrimmedStr(static_cast<double>(query.Code)));
        line.Quoted(query.Operator).Quoted(query.Value).Quoted(query.Join).Quoted(query.Text);
        file.Write(Cp1252FromUtf8(line.Line() + "\r\n", &losses.lostCharacters));
        losses.hasReplaced |= line.HasReplaced();
    }
    file.Commit();
    return losses;
}

}  // namespace quillform
