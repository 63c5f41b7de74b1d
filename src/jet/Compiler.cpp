#include "jet/Compiler.h"

#include "base/RunTimeError.h"
#include "jet/syntax/Parser.h"
#include "jet/writing/ActionWriter.h"
#include "jet/writing/DynasetWriter.h"
#include "jet/writing/StatementWriter.h"

namespace jet {

namespace {

constexpr mkl::Long invalidOperation = 3219;

BoundSelect bound(SelectStatement& select, const Schema& schema, UnknownNames& unknown) {
    return SelectBinder(select, schema, unknown).bind();
}
BoundInsert bound(InsertStatement& insert, const Schema& schema, UnknownNames& unknown) {
    return bindInsert(insert, schema, unknown);
}
BoundUpdate bound(UpdateStatement& update, const Schema& schema, UnknownNames& unknown) {
    return bindUpdate(update, schema, unknown);
}
BoundDelete bound(DeleteStatement& statement, const Schema& schema, UnknownNames& unknown) {
    return bindDelete(statement, schema, unknown);
}
BoundMakeTable bound(MakeTableStatement& statement, const Schema& schema, UnknownNames& unknown) {
    return bindMakeTable(statement, schema, unknown);
}

Plan written(const BoundSelect& select, const Target& target) {
    return StatementWriter(target).write(select);
}
template<class Action>
Plan written(const Action& action, const Target& target) {
    return ActionWriter(target).write(action);
}

} // namespace

Plan compileStatement(QStringView text, const Schema& schema, const Target& target) {
    TokenStream tokens(text);
    Statement statement = parseStatement(tokens);
    return std::visit(
        [&](auto& tree) {
            UnknownNames unknown;
            const auto ready = bound(tree, schema, unknown);
            unknown.raise();
            return written(ready, target);
        },
        statement);
}

DynasetPlan compileDynaset(QStringView text, const Schema& schema, const Target& target) {
    TokenStream tokens(text);
    Statement statement = parseStatement(tokens);
    auto* const select = std::get_if<SelectStatement>(&statement);
    if (!select) mkl::throwError(invalidOperation);
    UnknownNames unknown;
    const BoundSelect ready = bound(*select, schema, unknown);
    unknown.raise();
    return DynasetWriter(target, ready).write();
}

void checkCriterion(QStringView text) {
    TokenStream tokens(text);
    parseCriterion(tokens);
}

} // namespace jet
