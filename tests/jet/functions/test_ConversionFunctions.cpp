#include "jet/FunctionCall.h"

using namespace Qt::StringLiterals;
using namespace values;
using mkl::Variant;

TEST(ConversionFunctions, wholeNumbers) {
    checkResults({
        {u"CLng", {2.5}, n(2)},
        {u"CLng", {3.5}, n(4)},
        {u"CLng", {-0.5}, n(0)},
        {u"CLng", {t(u" 12 ")}, n(12)},
        {u"CLng", {true}, n(-1)},
        {u"CLng", {t(u"&HFF")}, n(255)},
        {u"CInt", {2.5}, n(2)},
        {u"CInt", {n(-32768)}, n(-32768)},
        {u"CByte", {254.5}, n(254)},
    });
    checkErrors({
        {u"CLng", {t(u"abc")}, 13},
        {u"CLng", {t(u"")}, 13},
        {u"CLng", {2147483647.5}, 6},
        {u"CInt", {n(32768)}, 6},
        {u"CByte", {n(256)}, 6},
        {u"CByte", {n(-1)}, 6},
    });
}

TEST(ConversionFunctions, otherTypes) {
    checkResults({
        {u"CDbl", {t(u"1.5")}, 1.5},
        {u"CDbl", {Variant::date(37000.5)}, 37000.5},
        {u"CSng", {0.1}, static_cast<double>(0.1F)},
        {u"CCur", {1.23456}, Variant::currency(12346)},
        {u"CCur", {t(u"2.5")}, Variant::currency(25000)},
        {u"CBool", {n(5)}, true},
        {u"CBool", {t(u"0")}, false},
        {u"CBool", {t(u" true")}, true},
        {u"CBool", {t(u"False")}, false},
        {u"CStr", {n(5)}, t(u"5")},
        {u"CStr", {true}, t(u"-1")},
        {u"CStr", {Variant::date(37000)}, t(u"19.04.2001")},
        {u"CVar", {n(5)}, n(5)},
        {u"CVar", {null}, null},
        {u"CDate", {n(37000)}, Variant::date(37000)},
        {u"CDate", {t(u"19.04.2001 18:00")}, Variant::date(37000.75)},
        {u"CDate", {t(u"2001-04-19")}, Variant::date(37000)},
        {u"CDate", {t(u"4/19/2001")}, Variant::date(37000)},
        {u"CDate", {t(u"19/4/2001")}, Variant::date(37000)},
        {u"CDate", {t(u"19.4.01")}, Variant::date(37000)},
        {u"CDate", {t(u"6:00 PM")}, Variant::date(0.75)},
    });
    checkErrors({
        {u"CSng", {1e39}, 6},
        {u"CCur", {1e16}, 6},
        {u"CBool", {t(u"x")}, 13},
        {u"CDate", {t(u"x")}, 13},
        {u"CDate", {t(u"29.02.2001")}, 13},
        {u"CDate", {t(u"1.13.2001")}, 13},
        {u"CDate", {t(u"1.1.2001x")}, 13},
        {u"CDate", {t(u"1.1.201")}, 13},
        {u"CDate", {1e9}, 6},
        {u"CDbl", {t(u"1,5")}, 13},
    });
}

TEST(ConversionFunctions, questions) {
    checkResults({
        {u"IsNull", {null}, true},
        {u"IsNull", {t(u"")}, false},
        {u"IsNumeric", {n(1)}, true},
        {u"IsNumeric", {true}, true},
        {u"IsNumeric", {t(u" 1.5e3 ")}, true},
        {u"IsNumeric", {t(u"1x")}, false},
        {u"IsNumeric", {t(u"")}, false},
        {u"IsNumeric", {null}, false},
        {u"IsNumeric", {Variant::date(1)}, false},
        {u"IsDate", {Variant::date(1)}, true},
        {u"IsDate", {t(u"31.12.2001")}, true},
        {u"IsDate", {t(u"31.11.2001")}, false},
        {u"IsDate", {t(u"18:30")}, true},
        {u"IsDate", {n(1)}, false},
        {u"IsDate", {null}, false},
        {u"Nz", {null}, t(u"")},
        {u"Nz", {null, n(7)}, n(7)},
        {u"Nz", {n(1), n(7)}, n(1)},
    });
}

TEST(ConversionFunctions, strAndVal) {
    checkResults({
        {u"Str", {n(5)}, t(u" 5")},
        {u"Str", {n(-5)}, t(u"-5")},
        {u"Str", {0.5}, t(u" .5")},
        {u"Str", {-0.25}, t(u"-.25")},
        {u"Str", {t(u"7.0")}, t(u" 7")},
        {u"Str", {Variant::currency(12500)}, t(u" 1.25")},
        {u"Str", {n(0)}, t(u" 0")},
        {u"Str", {null}, null},
        {u"Val", {t(u"12abc")}, 12.0},
        {u"Val", {t(u" 1 2 3 ")}, 123.0},
        {u"Val", {t(u"-1.5e2x")}, -150.0},
        {u"Val", {t(u"1d2")}, 100.0},
        {u"Val", {t(u"1e")}, 1.0},
        {u"Val", {t(u"1,5")}, 1.0},
        {u"Val", {t(u".5.5")}, 0.5},
        {u"Val", {t(u"")}, 0.0},
        {u"Val", {t(u"abc")}, 0.0},
        {u"Val", {t(u"+-1")}, 0.0},
        {u"Val", {t(u"&HFF")}, 255.0},
        {u"Val", {t(u"&hFFFF")}, -1.0},
        {u"Val", {t(u"&O17")}, 15.0},
        {u"Val", {t(u"&")}, 0.0},
        {u"Val", {n(5)}, 5.0},
        {u"Val", {t(u"١")}, 0.0},
    });
    checkErrors({{u"Str", {t(u"abc")}, 13}, {u"Val", {t(u"1e999")}, 6}});
}
