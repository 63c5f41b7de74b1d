#include "jet/Compiler.h"
#include "jet/syntax/Parser.h"

#include "support/Printing.h"

using namespace jet;
using namespace Qt::StringLiterals;
using mkl::errorOf;

namespace {

QString show(const Expression& expression);

QString showOperands(const Expression& expression) {
    QStringList shown;
    for (const Expression* operand : operandsOf(expression))
        shown.append(show(*operand));
    return shown.join(u' ');
}

const char* const operatorSigns[] = {"^",  "*", "/",  "\\", "mod", "+",    "-",   "&",   "=",
                                     "<>", "<", "<=", ">",  ">=",  "like", "xor", "eqv", "imp"};

QString label(const Expression& expression) {
    return std::visit(
        Overloaded{[](const Binary& node) { return QString::fromLatin1(operatorSigns[int(node.op)]); },
                   [](const Junction& node) { return node.isAnd ? u"and"_s : u"or"_s; },
                   [](const Negation&) { return u"neg"_s; }, [](const Not&) { return u"not"_s; },
                   [](const Between&) { return u"between"_s; }, [](const In&) { return u"in"_s; },
                   [](const IsNull& node) { return node.negated ? u"notnull"_s : u"null"_s; },
                   [](const Call& node) { return node.name.toString() + (node.star ? u"*"_s : QString()); },
                   [](const auto&) { return QString(); }},
        expression.node);
}

QString show(const Expression& expression) {
    if (const auto* literal = expression.as<Literal>())
        return (literal->negated ? u"-"_s : QString()) + literal->value.toText();
    if (const auto* constant = expression.as<Constant>())
        return constant->value.isNull() ? u"Null"_s : constant->value.toBoolean() ? u"True"_s : u"False"_s;
    if (const auto* name = expression.as<Name>())
        return name->qualifier.isEmpty() ? name->name.toString()
                                         : name->qualifier.toString() + u'.' + name->name.toString();
    const QString operands = showOperands(expression);
    return u'(' + label(expression) + (operands.isEmpty() ? QString() : u' ' + operands) + u')';
}

QString tree(QStringView text) {
    TokenStream tokens(text);
    return show(*parseCriterion(tokens));
}

mkl::Long criterionError(QStringView text) {
    return errorOf([&] { checkCriterion(text); });
}

SelectStatement selectOf(QStringView text) {
    TokenStream tokens(text);
    return std::get<SelectStatement>(parseStatement(tokens));
}

} // namespace

TEST(ExpressionParser, PowersOfTheOperators) {
    EXPECT_EQ(tree(u"a Imp b Eqv c Xor d Or e And f"), u"(imp a (eqv b (xor c (or d (and e f)))))"_s);
    EXPECT_EQ(tree(u"Not a = b & c + d Mod e \\ f * g ^ h"), u"(not (= a (& b (+ c (mod d (\\ e (* f (^ g h))))))))"_s);
    EXPECT_EQ(tree(u"a-b-c"), u"(- (- a b) c)"_s);
    EXPECT_EQ(tree(u"2^3^2"), u"(^ (^ 2 3) 2)"_s);
    EXPECT_EQ(tree(u"a / b * c"), u"(* (/ a b) c)"_s);
    EXPECT_EQ(tree(u"a = b = c"), u"(= (= a b) c)"_s);
    EXPECT_EQ(tree(u"(a Or b) And Not c"), u"(and (or a b) (not c))"_s);
}

TEST(ExpressionParser, SignsBelongToTheLiteral) {
    EXPECT_EQ(tree(u"-2^2"), u"(^ -2 2)"_s);
    EXPECT_EQ(tree(u"-(2)^2"), u"(neg (^ 2 2))"_s);
    EXPECT_EQ(tree(u"-a^2"), u"(neg (^ a 2))"_s);
    EXPECT_EQ(tree(u"5--3"), u"(- 5 -3)"_s);
    EXPECT_EQ(tree(u"5-3"), u"(- 5 3)"_s);
    EXPECT_EQ(tree(u"2^-1"), u"(^ 2 -1)"_s);
    EXPECT_EQ(tree(u"+a - +1"), u"(- a 1)"_s);
}

TEST(ExpressionParser, Comparisons) {
    EXPECT_EQ(tree(u"a Between 1 And 2 And b"), u"(and (between a 1 2) b)"_s);
    EXPECT_EQ(tree(u"a Not Between b+1 And c & d"), u"(not (between a (+ b 1) (& c d)))"_s);
    EXPECT_EQ(tree(u"a Not In (1, 2)"), u"(not (in a 1 2))"_s);
    EXPECT_EQ(tree(u"a Like 'x*' Or a Not Like b"), u"(or (like a x*) (not (like a b)))"_s);
    EXPECT_EQ(tree(u"a Is Null Or b Is Not Null"), u"(or (null a) (notnull b))"_s);
    EXPECT_EQ(tree(u"a >= 1 And b <> 2"), u"(and (>= a 1) (<> b 2))"_s);
}

TEST(ExpressionParser, NamesAndConstants) {
    EXPECT_EQ(tree(u"T.F = [T].[F]"), u"(= T.F T.F)"_s);
    EXPECT_EQ(tree(u"T!F + [Zwei Wörter]"), u"(+ T.F Zwei Wörter)"_s);
    EXPECT_EQ(tree(u"T.Select + T.Order"), u"(+ T.Select T.Order)"_s);
    EXPECT_EQ(tree(u"True = yes And No = off"), u"(and (= True True) (= False False))"_s);
    EXPECT_EQ(tree(u"Order + Name + Date + Left + Group + Position"),
              u"(+ (+ (+ (+ (+ Order Name) Date) Left) Group) Position)"_s);
    EXPECT_EQ(tree(u"Left(a, 1) & Now()"), u"(& (Left a 1) (Now))"_s);
    EXPECT_EQ(tree(u"Count(*)"), u"(Count*)"_s);
    EXPECT_EQ(tree(u"[True]"), u"True"_s);
}

TEST(ExpressionParser, OneNodeForAChain) {
    QString chain = u"a=0"_s;
    for (int i = 1; i < 2000; ++i)
        chain += u" Or a=%1"_s.arg(i);
    EXPECT_EQ(criterionError(chain), 0);
}

TEST(ExpressionParser, DepthIsLimited) {
    const auto nested = [](int depth) { return QString(depth, u'(') + u'1' + QString(depth, u')'); };
    EXPECT_EQ(criterionError(nested(200)), 0);
    EXPECT_EQ(criterionError(nested(300)), 3360);
    EXPECT_EQ(criterionError(nested(30000)), 3360);
    EXPECT_EQ(criterionError(u"Not "_s.repeated(10000) + u'1'), 3360);
    EXPECT_EQ(criterionError(u"-"_s.repeated(50000) + u'a'), 3360);
    EXPECT_EQ(criterionError(u'1' + u"+1"_s.repeated(20000)), 3360);
    EXPECT_EQ(criterionError(u'1' + u"+1"_s.repeated(200)), 0);
}

TEST(ExpressionParser, WhatIsNoCriterion) {
    for (const QStringView wrong : {u"",
                                    u" ",
                                    u"1=1) OR (1=1",
                                    u"a=1; DELETE FROM x",
                                    u"a=1;",
                                    u"a=1 UNION SELECT 1",
                                    u"a=",
                                    u"=1",
                                    u"a b",
                                    u"(a",
                                    u"a)",
                                    u"()",
                                    u"a In ()",
                                    u"a In 1",
                                    u"a In (SELECT 1)",
                                    u"(SELECT 1)",
                                    u"a Is 1",
                                    u"a Is Not",
                                    u"a Between 1",
                                    u"a Between 1 Or 2",
                                    u"a != b",
                                    u"a || b",
                                    u"a = = b",
                                    u"a /* x */",
                                    u"Count(DISTINCT a)",
                                    u"f(",
                                    u"f(a,)",
                                    u"f(,a)",
                                    u"a.",
                                    u"a.b.c",
                                    u".a",
                                    u"a And",
                                    u"Not",
                                    u"a Like",
                                    u"SELECT",
                                    u"Order By a",
                                    u"a, b",
                                    u"*",
                                    u"T.*",
                                    u"#WGFILTER#",
                                    u"EXISTS (SELECT 1)",
                                    u"a = ANY (SELECT 1)",
                                    u"1 2",
                                    u"'a' 'b'",
                                    u"[a] [b]",
                                    u"a COLLATE x",
                                    u"CASE WHEN a THEN b END",
                                    u"a -- b *"})
        EXPECT_EQ(criterionError(wrong), 3075) << wrong.toString().toStdString();
    EXPECT_EQ(criterionError(u"[Absender-Schlüssel"), 3126);
}

TEST(ExpressionParser, WhatIsOne) {
    for (const QStringView right :
         {u"[Absender-Schlüssel] IN(3,7)", u"[Absender-Schlüssel] ", u"[Absender-Schlüssel] Like '*'", u"True", u"5",
          u"IIf(a, b, c)", u"a = 'x; DELETE FROM y'", u"-- 5"})
        EXPECT_EQ(criterionError(right), 0) << right.toString().toStdString();
}

TEST(SelectParser, Clauses) {
    const SelectStatement select = selectOf(u"SELECT DISTINCT a, T.*, b AS x, * FROM T, [U V] AS u WHERE a=1 "
                                            u"GROUP BY a, b HAVING Count(*)>1 ORDER BY a DESC, Order ASC, Desc DESC;");
    EXPECT_TRUE(select.distinct);
    ASSERT_EQ(select.outputs.size(), 4U);
    EXPECT_EQ(select.outputs[1].starTable.toString(), u"T"_s);
    EXPECT_EQ(select.outputs[2].alias.toString(), u"x"_s);
    EXPECT_FALSE(select.outputs[3].expression);
    ASSERT_EQ(select.from.size(), 2U);
    EXPECT_EQ(std::get<TableSource>(select.from[1]->node).alias.toString(), u"u"_s);
    EXPECT_TRUE(select.where);
    EXPECT_EQ(select.groupBy.size(), 2U);
    EXPECT_TRUE(select.having);
    ASSERT_EQ(select.orderBy.size(), 3U);
    EXPECT_TRUE(select.orderBy[0].descending);
    EXPECT_FALSE(select.orderBy[1].descending);
    EXPECT_TRUE(select.orderBy[2].descending);
}

TEST(SelectParser, WordsOfTheGrammarAsNames) {
    const SelectStatement select = selectOf(u"SELECT Top, All, Order, Left AS Right FROM [Select] WHERE Top > All");
    ASSERT_EQ(select.outputs.size(), 4U);
    EXPECT_FALSE(select.top);
    EXPECT_EQ(select.outputs[3].alias.toString(), u"Right"_s);
    EXPECT_TRUE(selectOf(u"SELECT TOP 5 PERCENT a FROM t").top->percent);
    EXPECT_FALSE(selectOf(u"SELECT TOP 5 Percent FROM t").top->percent);
    EXPECT_EQ(selectOf(u"SELECT ALL a FROM t").outputs.size(), 1U);
}

TEST(SelectParser, NestedJoins) {
    const SelectStatement select =
        selectOf(u"SELECT * FROM (a LEFT OUTER JOIN b ON a.x=b.x) INNER JOIN (c RIGHT JOIN d ON c.y=d.y) ON a.x=c.x");
    const Join& join = std::get<Join>(select.from[0]->node);
    EXPECT_EQ(join.kind, JoinKind::Inner);
    EXPECT_EQ(std::get<Join>(join.left->node).kind, JoinKind::Left);
    EXPECT_EQ(std::get<Join>(join.right->node).kind, JoinKind::Right);
    const QString deep = u"("_s.repeated(5000) + u'a' + u")"_s.repeated(5000);
    EXPECT_EQ(errorOf([&] { selectOf(u"SELECT * FROM "_s + deep); }), 3360);
}
