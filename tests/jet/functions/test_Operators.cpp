#include "jet/functions/Operators.h"
#include "support/Printing.h"

#include <limits>
#include <set>

using namespace jet;
using namespace Qt::StringLiterals;
using mkl::errorOf;
using mkl::Long;

namespace {

constexpr Long longMin = std::numeric_limits<Long>::min(), longMax = std::numeric_limits<Long>::max();
const Variant null;
const Variant yes = true, no = false;

Variant t(const char16_t* text) {
    return QString::fromUtf16(text);
}
Variant n(Long number) {
    return number;
}

using Binary = Variant (*)(const Variant&, const Variant&);

struct Row {
    Binary op;
    Variant a, b, result;
};
struct Failure {
    Binary op;
    Variant a, b;
    Long number;
};

void check(std::initializer_list<Row> rows) {
    int line = 0;
    for (const Row& row : rows)
        EXPECT_EQ(row.op(row.a, row.b), row.result) << "row " << line++;
}
void check(std::initializer_list<Failure> rows) {
    int line = 0;
    for (const Failure& row : rows)
        EXPECT_EQ(errorOf([&] { row.op(row.a, row.b); }), row.number) << "row " << line++;
}

} // namespace

TEST(Operators, concat) {
    check({
        Row{concat, t(u"a"), t(u"b"), t(u"ab")},
        Row{concat, null, t(u"b"), t(u"b")},
        Row{concat, t(u"a"), null, t(u"a")},
        Row{concat, null, null, null},
        Row{concat, n(1), n(2), t(u"12")},
        Row{concat, yes, t(u""), t(u"-1")},
        Row{concat, 1.5, t(u"x"), t(u"1.5x")},
        Row{concat, n(7), null, t(u"7")},
        Row{concat, Variant::date(37000), t(u""), t(u"19.04.2001")},
    });
}

TEST(Operators, addAndSubtract) {
    check({
        Row{add, n(1), n(2), n(3)},
        Row{add, t(u"1"), t(u"2"), t(u"12")},
        Row{add, n(1), t(u"2.5"), 3.5},
        Row{add, t(u"2"), n(1), 3.0},
        Row{add, null, t(u"abc"), null},
        Row{add, n(1), null, null},
        Row{add, yes, n(1), n(0)},
        Row{add, 0.5, n(1), 1.5},
        Row{add, Variant::currency(12500), n(1), Variant::currency(22500)},
        Row{add, Variant::currency(12500), 1.0, 2.25},
        Row{add, Variant::date(37000), n(1), Variant::date(37001)},
        Row{add, n(1), Variant::date(37000.5), Variant::date(37001.5)},
        Row{subtract, Variant::date(37001), Variant::date(37000), 1.0},
        Row{subtract, Variant::date(37001), n(1), Variant::date(37000)},
        Row{subtract, n(5), n(-3), n(8)},
        Row{subtract, t(u"5"), t(u"2"), 3.0},
        Row{subtract, Variant::currency(1), Variant::currency(2), Variant::currency(-1)},
        Row{subtract, null, n(1), null},
    });
    check({
        Failure{add, n(longMax), n(1), 6},
        Failure{add, n(longMin), yes, 6},
        Failure{subtract, n(longMin), n(1), 6},
        Failure{add, n(1), t(u"abc"), 3464},
        Failure{subtract, t(u"abc"), t(u"x"), 3464},
        Failure{add, 1.7e308, 1.7e308, 6},
        Failure{add, Variant::date(2958465), n(1), 6},
        Failure{add, Variant::currency(std::numeric_limits<qint64>::max()), Variant::currency(1), 6},
        Failure{add, n(1), QByteArray("x"), 3464},
    });
}

TEST(Operators, multiplyAndDivide) {
    check({
        Row{multiply, n(6), n(7), n(42)},
        Row{multiply, yes, n(7), n(-7)},
        Row{multiply, n(2), 1.5, 3.0},
        Row{multiply, t(u"2"), n(3), 6.0},
        Row{multiply, Variant::currency(12345), n(2), Variant::currency(24690)},
        Row{multiply, n(-2), Variant::currency(12345), Variant::currency(-24690)},
        Row{multiply, Variant::currency(15000), Variant::currency(15000), Variant::currency(22500)},
        Row{multiply, Variant::currency(15000), 2.0, 3.0},
        Row{multiply, null, n(0), null},
        Row{divide, n(10), n(4), 2.5},
        Row{divide, n(10), n(5), 2.0},
        Row{divide, null, n(0), null},
        Row{divide, n(0), n(3), 0.0},
    });
    check({
        Failure{multiply, n(65536), n(32768), 6},
        Failure{multiply, n(longMin), n(-1), 6},
        Failure{multiply, 1e200, 1e200, 6},
        Failure{multiply, Variant::currency(std::numeric_limits<qint64>::max()), n(2), 6},
        Failure{multiply, t(u"x"), n(2), 3464},
        Failure{divide, n(1), n(0), 11},
        Failure{divide, n(0), n(0), 6},
        Failure{divide, 1e300, 1e-300, 6},
    });
}

TEST(Operators, wholeDivision) {
    check({
        Row{intDivide, n(7), n(2), n(3)},
        Row{intDivide, n(-7), n(2), n(-3)},
        Row{intDivide, 7.5, n(2), n(4)}, // 7.5 rounds to 8
        Row{intDivide, 6.5, n(2), n(3)}, // 6.5 rounds to 6
        Row{intDivide, n(7), 2.5, n(3)},
        Row{intDivide, null, n(0), null},
        Row{modulo, n(7), n(3), n(1)},
        Row{modulo, n(-7), n(3), n(-1)},
        Row{modulo, n(7), n(-3), n(1)},
        Row{modulo, 12.5, n(5), n(2)},
        Row{modulo, n(longMin), n(-1), n(0)},
        Row{modulo, t(u"7"), n(4), n(3)},
    });
    check({
        Failure{intDivide, n(1), 0.4, 11},
        Failure{intDivide, n(longMin), n(-1), 6},
        Failure{modulo, n(5), n(0), 11},
        Failure{modulo, 3e9, n(7), 6},
        Failure{intDivide, t(u"x"), n(1), 3464},
    });
}

TEST(Operators, powerAndSign) {
    check({
        Row{power, n(2), n(10), 1024.0},
        Row{power, n(-2), n(3), -8.0},
        Row{power, n(4), 0.5, 2.0},
        Row{power, n(0), n(0), 1.0},
        Row{power, null, n(0), null},
    });
    check({
        Failure{power, n(-4), 0.5, 5},
        Failure{power, n(0), n(-1), 5},
        Failure{power, n(10), n(400), 6},
    });
    EXPECT_EQ(negate(n(5)), n(-5));
    EXPECT_EQ(negate(yes), n(1));
    EXPECT_EQ(negate(2.5), Variant(-2.5));
    EXPECT_EQ(negate(t(u"3")), Variant(-3.0));
    EXPECT_EQ(negate(Variant::currency(5)), Variant::currency(-5));
    EXPECT_EQ(negate(null), null);
    EXPECT_EQ(errorOf([] { negate(n(longMin)); }), 6);
    EXPECT_EQ(errorOf([] { negate(t(u"x")); }), 3464);
}

TEST(Operators, comparisons) {
    check({
        Row{equal, t(u"öl"), t(u"ÖL "), yes},
        Row{equal, t(u"Straße"), t(u"strasse"), yes},
        Row{equal, t(u"a"), t(u"ä"), no},
        Row{less, t(u"a"), t(u"ä"), yes},
        Row{less, t(u"ä"), t(u"b"), yes},
        Row{less, t(u"10"), t(u"9"), yes},
        Row{equal, t(u"3"), n(3), yes},
        Row{less, n(9), t(u"10"), yes},
        Row{equal, yes, n(-1), yes},
        Row{equal, yes, n(1), no},
        Row{equal, n(2), 2.0, yes},
        Row{equal, Variant::currency(25000), 2.5, yes},
        Row{less, Variant::currency(1), Variant::currency(2), yes},
        Row{equal, Variant::date(37000), n(37000), yes},
        Row{equal, Variant::date(37000), t(u"19.04.2001"), yes},
        Row{less, t(u"2001-04-18 23:59:59"), Variant::date(37000), yes},
        Row{notEqual, n(1), n(2), yes},
        Row{lessOrEqual, n(2), n(2), yes},
        Row{greater, n(2), n(2), no},
        Row{greaterOrEqual, n(2), n(2), yes},
        Row{equal, null, null, null},
        Row{less, n(1), null, null},
        Row{notEqual, null, t(u"x"), null},
        Row{equal, QByteArray("ab"), QByteArray("ab"), yes},
    });
    check({
        Failure{equal, t(u"x"), n(3), 3464},
        Failure{less, Variant::date(37000), t(u"x"), 3464},
        Failure{equal, QByteArray("a"), t(u"a"), 3464},
    });
}

TEST(Operators, betweenTakesItsBoundsInEitherOrder) {
    EXPECT_EQ(between(n(15), n(10), n(20)), yes);
    EXPECT_EQ(between(n(15), n(20), n(10)), yes);
    EXPECT_EQ(between(n(10), n(20), n(10)), yes);
    EXPECT_EQ(between(n(9), n(20), n(10)), no);
    EXPECT_EQ(between(n(21), n(10), n(20)), no);
    EXPECT_EQ(between(t(u"M"), t(u"z"), t(u"a")), yes);
    EXPECT_EQ(between(Variant::date(37000.5), Variant::date(36999), Variant::date(37000)), no);
    EXPECT_EQ(between(null, n(1), n(2)), null);
    EXPECT_EQ(between(n(1), null, n(2)), null);
    EXPECT_EQ(between(n(1), n(2), null), null);
}

TEST(Operators, like) {
    check({
        Row{like, t(u"Öl"), t(u"ö*"), yes},
        Row{like, n(123), t(u"1#3"), yes},
        Row{like, null, t(u"*"), null},
        Row{like, t(u"a"), null, null},
        Row{like, t(u""), t(u"*"), yes},
    });
    check({Failure{like, t(u"a"), t(u"[a"), 93}});
    EXPECT_EQ(like(null, t(u"[a")), null);
}

TEST(Operators, threeValuedLogic) {
    const Variant values[] = {no, null, yes};
    struct Table {
        Binary op;
        Variant results[3][3]; // left by row, right by column
    };
    const Table tables[] = {
        {logicalAnd, {{no, no, no}, {no, null, null}, {no, null, yes}}},
        {logicalOr, {{no, null, yes}, {null, null, yes}, {yes, yes, yes}}},
        {logicalXor, {{no, null, yes}, {null, null, null}, {yes, null, no}}},
        {logicalEqv, {{yes, null, no}, {null, null, null}, {no, null, yes}}},
        {logicalImp, {{yes, yes, yes}, {null, null, yes}, {no, null, yes}}},
    };
    for (const Table& table : tables)
        for (int a = 0; a < 3; ++a)
            for (int b = 0; b < 3; ++b)
                EXPECT_EQ(table.op(values[a], values[b]), table.results[a][b]) << (&table - tables) << ' ' << a << b;
    EXPECT_EQ(logicalNot(yes), no);
    EXPECT_EQ(logicalNot(no), yes);
    EXPECT_EQ(logicalNot(null), null);
}

TEST(Operators, anyNumberButZeroIsTrue) {
    EXPECT_EQ(truth(n(1)), yes);
    EXPECT_EQ(truth(0.4), yes);
    EXPECT_EQ(truth(t(u"0")), no);
    EXPECT_EQ(truth(null), null);
    EXPECT_EQ(logicalAnd(n(1), n(2)), yes); // logical, not by bits
    EXPECT_EQ(errorOf([] { truth(t(u"x")); }), 3464);
}

TEST(Operators, tableHoldsEachOperatorOnce) {
    std::set<std::string> names;
    for (const Operator& op : operators()) {
        EXPECT_TRUE(names.insert(op.nativeName).second) << op.nativeName;
        const std::vector<Variant> nulls(static_cast<size_t>(op.argumentCount));
        EXPECT_EQ(op.implementation(nulls), null) << op.nativeName;
    }
    for (const char* name : {"mkl_concat", "mkl_add", "mkl_between", "mkl_truth", "mkl_like"})
        EXPECT_TRUE(names.contains(name)) << name;
}

TEST(Operators, tableKeepsTheOrderOfOperands) {
    for (const Operator& op : operators())
        if (op.nativeName == std::string("mkl_subtract")) {
            const std::vector<Variant> operands{n(5), n(3)};
            EXPECT_EQ(op.implementation(operands), n(2));
        }
}
