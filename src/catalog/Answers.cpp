#include "catalog/Answers.h"

#include <algorithm>

#include "platform/Text.h"

namespace quillform {

namespace {

template <typename Element, typename Matches>
const Element* FindIf(const std::vector<Element>& elements, Matches matches) {
    const auto found = std::find_if(elements.begin(), elements.end(), matches);
    return found == elements.end() ? nullptr : &*found;
}

}  // namespace

const TableAnswers* FindAnswers(const std::vector<TableAnswers>& tables, const std::string& name) {
    return FindIf(tables, [&](const TableAnswers& table) { return EqualCaseBlind(table.name, name); });
}

const FieldAnswers* FindAnswers(const std::vector<FieldAnswers>& fields, const std::string& name) {
    return FindIf(fields, [&](const FieldAnswers& field) { return EqualCaseBlind(field.name, name); });
}

const LinkAnswers* FindAnswers(const std::vector<LinkAnswers>& links, const std::string& table1,
                               const std::string& table2) {
    return FindIf(links, [&](const LinkAnswers& link) {
        return (EqualCaseBlind(link.table1, table1) && EqualCaseBlind(link.table2, table2)) ||
               (EqualCaseBlind(link.table1, table2) && EqualCaseBlind(link.table2, table1));
    });
}

}  // namespace quillform
