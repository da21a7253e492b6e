#pragma once

#include <functional>
#include <memory>

#include "data/sql/CheckedTree.h"
#include "data/sql/FunctionTable.h"
#include "data/sql/Scope.h"

namespace quillform::sql {

/// Checks expressions in one scope: resolves their names, settles their types, finds their functions.
class ExpressionChecker {
public:
    /// Checks a sub-select that sees the scope around it.
    using SelectChecker =
        std::function<std::shared_ptr<const CheckedSelect>(const syntax::Select& select, const Scope& enclosing)>;
    ExpressionChecker(const Scope& scope, int currentYear, const SelectChecker& select)
        : scope_(scope), currentYear_(currentYear), select_(select) {}

    /// Checks a whole expression. QueryTooComplex where aliases and Choose make it too large.
    ExpressionRef Check(const syntax::Expression& expression);

private:
    using Syntax = syntax::Expression;
    using Arguments = std::vector<ExpressionRef>;

    ExpressionRef CheckPart(const Syntax& expression);
    ExpressionRef CheckCondition(const Syntax& expression);

    ExpressionRef CheckLiteral(const Syntax& expression);
    ExpressionRef CheckUnary(const Syntax& expression);
    ExpressionRef CheckBinary(const Syntax& expression);
    ExpressionRef CheckArithmetic(Operator op, ExpressionRef left, ExpressionRef right);
    ExpressionRef CheckTest(const Syntax& expression);
    ExpressionRef CheckInSelect(const Syntax& expression);
    ExpressionRef CheckSelect(const Syntax& expression);

    ExpressionRef CheckCall(const Syntax& expression);
    ExpressionRef CheckAggregate(const Syntax& expression, const FunctionEntry& entry);
    void RefuseAggregate(const Syntax& expression) const;
    ExpressionRef CheckSpecial(const FunctionEntry& entry, Arguments arguments);
    ExpressionRef MakeCall(const FunctionEntry& entry, Arguments arguments);
    ExpressionRef Convert(char letter, ExpressionRef argument);
    ExpressionRef MakeInStr(const FunctionEntry& entry, Arguments arguments);
    ExpressionRef MakeFormat(const FunctionEntry& entry, Arguments arguments);
    ExpressionRef MakeChoice(CheckedExpression::Kind kind, Arguments operands);
    ExpressionRef MakeIIf(Arguments arguments);
    ExpressionRef MakeNz(Arguments arguments);
    ExpressionRef MakeSwitch(const Arguments& arguments);
    ExpressionRef MakeChoose(const Arguments& arguments);

    const Scope& scope_;
    int currentYear_;
    const SelectChecker& select_;
    bool inAggregate_ = false;
};

}  // namespace quillform::sql
