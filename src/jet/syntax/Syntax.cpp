#include "jet/syntax/Syntax.h"

namespace jet {

Operands operandsOf(const Expression& expression) {
    Operands operands;
    const auto add = [&operands](const ExpressionPtr& operand) { operands.append(operand.get()); };
    const auto addAll = [&add](const ExpressionList& list) {
        for (const ExpressionPtr& operand : list)
            add(operand);
    };
    std::visit(Overloaded{[](const Literal&) {}, [](const Constant&) {}, [](const Name&) {},
                          [&](const Negation& negation) { add(negation.operand); },
                          [&](const Not& inverse) { add(inverse.operand); },
                          [&](const Binary& binary) {
                              add(binary.left);
                              add(binary.right);
                          },
                          [&](const Junction& junction) { addAll(junction.operands); },
                          [&](const Between& between) {
                              add(between.value);
                              add(between.low);
                              add(between.high);
                          },
                          [&](const In& in) {
                              add(in.value);
                              addAll(in.items);
                          },
                          [&](const IsNull& isNull) { add(isNull.value); },
                          [&](const Subquery& subquery) {
                              if (subquery.value) add(subquery.value);
                          },
                          [&](const Call& call) { addAll(call.arguments); }},
               expression.node);
    return operands;
}

} // namespace jet
