#include "jet/FunctionCall.h"

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;
using namespace values;
using mkl::Long;
using mkl::Variant;

TEST(NumberFunctions, roundingKeepsTheType) {
    checkResults({
        {u"Int", {2.7}, 2.0},
        {u"Int", {-2.1}, -3.0},
        {u"Int", {n(5)}, n(5)},
        {u"Int", {t(u"2.7")}, 2.0},
        {u"Int", {Variant::currency(-15000)}, Variant::currency(-20000)},
        {u"Int", {Variant::date(37000.75)}, Variant::date(37000)},
        {u"Int", {true}, n(-1)},
        {u"Fix", {-2.7}, -2.0},
        {u"Fix", {2.7}, 2.0},
        {u"Fix", {Variant::currency(-15000)}, Variant::currency(-10000)},
        {u"Round", {2.5}, 2.0},
        {u"Round", {3.5}, 4.0},
        {u"Round", {-2.5}, -2.0},
        {u"Round", {0.125, n(2)}, 0.12},
        {u"Round", {1.2345, n(3)}, 1.234},
        {u"Round", {n(7), n(2)}, n(7)},
        {u"Round", {1e300, n(5)}, 1e300},
        {u"Round", {Variant::currency(12345), n(2)}, Variant::currency(12300)},
        {u"Abs", {-2.5}, 2.5},
        {u"Abs", {n(-3)}, n(3)},
        {u"Abs", {true}, n(1)},
        {u"Abs", {Variant::currency(-5)}, Variant::currency(5)},
        {u"Sgn", {-0.5}, n(-1)},
        {u"Sgn", {n(0)}, n(0)},
        {u"Sgn", {t(u"12")}, n(1)},
    });
    checkErrors({
        {u"Abs", {n(std::numeric_limits<Long>::min())}, 6},
        {u"Abs", {Variant::currency(std::numeric_limits<qint64>::min())}, 6},
        {u"Abs", {t(u"abc")}, 13},
        {u"Round", {2.5, n(-1)}, 5},
        {u"Round", {2.5, n(23)}, 5},
    });
}

TEST(NumberFunctions, analysis) {
    EXPECT_DOUBLE_EQ(call(u"Atn", {1.0}).toDouble(), std::atan(1.0));
    EXPECT_DOUBLE_EQ(call(u"Cos", {0.0}).toDouble(), 1.0);
    EXPECT_DOUBLE_EQ(call(u"Sin", {1.0}).toDouble(), std::sin(1.0));
    EXPECT_DOUBLE_EQ(call(u"Tan", {1.0}).toDouble(), std::tan(1.0));
    EXPECT_DOUBLE_EQ(call(u"Exp", {1.0}).toDouble(), std::exp(1.0));
    EXPECT_DOUBLE_EQ(call(u"Log", {n(10)}).toDouble(), std::log(10.0));
    EXPECT_DOUBLE_EQ(call(u"Sqr", {n(16)}).toDouble(), 4.0);
    checkErrors({
        {u"Sqr", {n(-1)}, 5},
        {u"Log", {n(0)}, 5},
        {u"Log", {n(-1)}, 5},
        {u"Exp", {n(1000)}, 6},
        {u"Sin", {t(u"x")}, 13},
    });
}

TEST(NumberFunctions, hexAndOct) {
    checkResults({
        {u"Hex", {n(255)}, t(u"FF")},
        {u"Hex", {n(-1)}, t(u"FFFFFFFF")},
        {u"Hex", {n(0)}, t(u"0")},
        {u"Hex", {15.5}, t(u"10")},
        {u"Oct", {n(8)}, t(u"10")},
        {u"Oct", {n(-1)}, t(u"37777777777")},
    });
    checkErrors({{u"Hex", {3e9}, 6}, {u"Oct", {t(u"x")}, 13}});
}

TEST(NumberFunctions, partition) {
    checkResults({
        {u"Partition", {n(3), n(0), n(100), n(10)}, t(u"  0:  9")},
        {u"Partition", {n(100), n(0), n(100), n(10)}, t(u"100:100")},
        {u"Partition", {n(-3), n(0), n(100), n(10)}, t(u"   : -1")},
        {u"Partition", {n(500), n(0), n(100), n(10)}, t(u"101:   ")},
        {u"Partition", {n(20), n(1), n(99), n(5)}, t(u" 16: 20")},
        {u"Partition", {null, n(1), n(99), n(5)}, null},
    });
    checkErrors({
        {u"Partition", {n(1), n(-1), n(9), n(5)}, 5},
        {u"Partition", {n(1), n(9), n(9), n(5)}, 5},
        {u"Partition", {n(1), n(1), n(9), n(0)}, 5},
    });
}

TEST(NumberFunctions, randomNumbersRepeatFromTheirStart) {
    const Variant first = call(u"Rnd", {n(-5)}), second = call(u"Rnd", {});
    EXPECT_EQ(call(u"Rnd", {n(0)}), second);
    EXPECT_NE(first, second);
    EXPECT_EQ(call(u"Rnd", {n(-5)}), first);
    EXPECT_EQ(call(u"Rnd", {n(1)}), second);
    for (int i = 0; i < 1000; ++i) {
        const double number = call(u"Rnd", {}).toDouble();
        ASSERT_TRUE(number >= 0.0 && number < 1.0);
    }
}
