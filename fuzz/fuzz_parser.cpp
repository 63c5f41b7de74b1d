// Lexer and parser: every text is a statement or a criterion, or an error with a number.
#include "Numbered.h"
#include "jet/Compiler.h"
#include "jet/syntax/Parser.h"
#include "jet/syntax/Shape.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace fuzz;
    const QString text = textOf(data, size);
    const auto shape = numberOf([&] { jet::shapeOf(text); });
    const auto statement = numberOf([&] {
        jet::TokenStream tokens(text);
        jet::parseStatement(tokens);
    });
    const auto criterion = numberOf([&] { jet::checkCriterion(text); });
    accepted = statement == 0 || criterion == 0;
    if (shape != 0 && (statement == 0 || criterion == 0))
        finding(QStringLiteral("no shape (%1), but it can be read").arg(shape));
    if (statement == 0 && criterion == 0) finding(QStringLiteral("statement and criterion at once"));
    return 0;
}
