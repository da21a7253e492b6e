#include "data/sql/Scope.h"

#include "platform/Text.h"

namespace quillform::sql {

namespace {

int FindField(const std::vector<Field>& fields, const std::string& name) {
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (EqualCaseBlind(fields[i].Name, name)) return static_cast<int>(i);
    return -1;
}

ExpressionRef MakeColumn(const CheckedSource& source, std::size_t position, int column, int outer) {
    auto made = std::make_shared<CheckedExpression>();
    made->kind = CheckedExpression::Kind::Column;
    made->source = static_cast<int>(position);
    made->column = column;
    made->outer = outer;
    made->type = source.fields[static_cast<std::size_t>(column)];
    return made;
}

[[noreturn]] void RefuseUnknown(const std::string& cause) { throw RunTimeError(ErrorNumber::TooFewParameters, cause); }

ExpressionRef ResolveQualified(const Scope& scope, const std::string& qualifier, const std::string& name) {
    int outer = 0;
    for (const Scope* at = &scope; at; at = at->enclosing, ++outer) {
        for (std::size_t i = 0; i < at->sources->size(); ++i) {
            const CheckedSource& source = (*at->sources)[i];
            if (!EqualCaseBlind(source.name, qualifier)) continue;
            if (i < at->first || i >= at->end)
                throw RunTimeError(ErrorNumber::JoinSyntax, "The join names " + WrittenName(qualifier, name) +
                                                                ", but " + qualifier +
                                                                " is not one of the tables that it joins.");
            const int column = FindField(source.fields, name);
            if (column < 0)
                RefuseUnknown("The statement names " + WrittenName(qualifier, name) + ", but table " + qualifier +
                              " has no column " + name + ".");
            return MakeColumn(source, i, column, outer);
        }
    }
    if (scope.clause == Clause::Join)
        throw RunTimeError(ErrorNumber::JoinSyntax, "The join names " + WrittenName(qualifier, name) + ", but " +
                                                        qualifier + " is not one of the tables that it joins.");
    RefuseUnknown("The statement names " + WrittenName(qualifier, name) + ", but no table " + qualifier +
                  " stands in its FROM clause.");
}

ExpressionRef ResolveIn(const Scope& scope, const std::string& name, int outer) {
    ExpressionRef found;
    for (std::size_t i = scope.first; i < scope.end; ++i) {
        const CheckedSource& source = (*scope.sources)[i];
        const int column = FindField(source.fields, name);
        if (column < 0) continue;
        if (found)
            throw RunTimeError(ErrorNumber::AmbiguousField,
                               "The column [" + name +
                                   "] could belong to more than one table of the statement: write it as [" +
                                   (*scope.sources)[static_cast<std::size_t>(found->source)].name + "].[" + name +
                                   "] or [" + source.name + "].[" + name + "].");
        found = MakeColumn(source, i, column, outer);
    }
    return found;
}

}  // namespace

std::string WrittenName(const std::string& qualifier, const std::string& name) {
    return qualifier.empty() ? "[" + name + "]" : "[" + qualifier + "].[" + name + "]";
}

ExpressionRef Resolve(const Scope& scope, const std::string& qualifier, const std::string& name) {
    if (!qualifier.empty()) return ResolveQualified(scope, qualifier, name);
    int outer = 0;
    for (const Scope* at = &scope; at; at = at->enclosing, ++outer) {
        if (ExpressionRef found = ResolveIn(*at, name, outer)) return found;
        if (outer == 0 && at->alias)
            if (ExpressionRef found = at->alias(name)) return found;
    }
    RefuseUnknown("The statement names [" + name + "], but no table in its FROM clause has a column of that name.");
}

}  // namespace quillform::sql
