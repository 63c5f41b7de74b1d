#include "base/DateTime.h"
#include "jet/FunctionCall.h"

using namespace Qt::StringLiterals;
using namespace values;
using mkl::Variant;

namespace {

struct Row {
    Variant value;
    QString pattern, result;
};

void check(const std::vector<Row>& rows) {
    for (const auto& [value, pattern, result] : rows)
        EXPECT_EQ(call(u"Format", {value, pattern}), Variant(result)) << describe(pattern, {value});
}

const Variant date = Variant::date(mkl::dateFromIso(u"2001-05-03 18:07:09").value());

} // namespace

TEST(Format, digits) {
    check({
        {n(7), u"000"_s, u"007"_s},
        {n(1234), u"000"_s, u"1234"_s},
        {n(0), u"000"_s, u"000"_s},
        {n(-7), u"000"_s, u"-007"_s},
        {t(u"7"), u"000"_s, u"007"_s},
        {1.5, u"0"_s, u"2"_s},
        {2.5, u"0"_s, u"3"_s}, // away from zero, unlike Round
        {-2.5, u"0"_s, u"-3"_s},
        {2.675, u"0.00"_s, u"2.68"_s},
        {0.5, u"#.##"_s, u".5"_s},
        {5.0, u"0.##"_s, u"5."_s},
        {12.5, u".00"_s, u"12.50"_s},
        {0.001, u"0.00"_s, u"0.00"_s},
        {-0.001, u"0.00"_s, u"0.00"_s},
        {0.05, u"0.00#"_s, u"0.05"_s},
        {0.0567, u"0.00#"_s, u"0.057"_s},
        {9.996, u"0.00"_s, u"10.00"_s},
        {n(0), u"#"_s, u""_s},
        {n(123456), u"000-000"_s, u"123-456"_s},
        {n(1234567), u"000-000"_s, u"1234-567"_s},
        {n(12), u"000-000"_s, u"000-012"_s},
        {n(12), u"###-###"_s, u"-12"_s},
        {n(5), u"0 \"Stück\""_s, u"5 Stück"_s},
        {n(5), u"\\#0"_s, u"#5"_s},
        {1e15, u"0"_s, u"1000000000000000"_s},
        {1e-300, u"0.0"_s, u"0.0"_s},
        {Variant::currency(9223372036854775807), u"0.0000"_s, u"922337203685477.5807"_s},
        {Variant::currency(12345), u"0.00"_s, u"1.23"_s},
        {Variant::currency(-5), u"0.0000"_s, u"-0.0005"_s},
        {true, u"0"_s, u"-1"_s},
    });
}

TEST(Format, groupsPercentExponents) {
    check({
        {1234567.891, u"#,##0.00"_s, u"1,234,567.89"_s},
        {n(999), u"#,##0"_s, u"999"_s},
        {n(1000), u"#,##0"_s, u"1,000"_s},
        {n(-1000), u"#,##0"_s, u"-1,000"_s},
        {n(12), u"0,000"_s, u"0,012"_s},
        {n(1234567), u"0,"_s, u"1235"_s},
        {n(1234567), u"0.0,,"_s, u"1234567.0,,"_s},
        {n(1234567), u"#,##0,"_s, u"1,235"_s},
        {0.256, u"0%"_s, u"26%"_s},
        {0.256, u"0.0%"_s, u"25.6%"_s},
        {12345.678, u"0.00E+00"_s, u"1.23E+04"_s},
        {0.00012, u"0.0E-00"_s, u"1.2E-04"_s},
        {12345.678, u"0.0e-0"_s, u"1.2e4"_s},
        {9.996, u"0.00E+00"_s, u"1.00E+01"_s},
        {n(0), u"0.00E+00"_s, u"0.00E+00"_s},
        {12345.0, u"00.0E+0"_s, u"12.3E+3"_s},
    });
}

TEST(Format, sections) {
    check({
        {n(5), u"0;(0);zero"_s, u"5"_s},
        {n(-5), u"0;(0);zero"_s, u"(5)"_s},
        {n(0), u"0;(0);\\z\\e\\r\\o"_s, u"zero"_s},
        {n(-5), u"0;;z"_s, u"-5"_s},
        {n(0), u"0;(0)"_s, u"0"_s},
        {null, u"0;(0);z;\"leer\""_s, u"leer"_s},
        {null, u"0"_s, u""_s},
        {n(5), u"0\";\"0"_s, u"0;5"_s},
    });
}

TEST(Format, dates) {
    check({
        {date, u"dd.mm.yy hh:nn:ss"_s, u"03.05.01 18:07:09"_s},
        {date, u"d.m.yyyy"_s, u"3.5.2001"_s},
        {date, u"DD.MM.YYYY"_s, u"03.05.2001"_s},
        {date, u"hh:mm:ss"_s, u"18:07:09"_s}, // minutes behind hours
        {date, u"mm/dd/yyyy"_s, u"05/03/2001"_s},
        {date, u"h:n:s"_s, u"18:7:9"_s},
        {date, u"yyyy-mm-dd"_s, u"2001-05-03"_s},
        {date, u"ddd, d. mmm yy"_s, u"Do, 3. Mai 01"_s},
        {date, u"dddd, d. mmmm yyyy"_s, u"Donnerstag, 3. Mai 2001"_s},
        {date, u"h:nn AM/PM"_s, u"6:07 PM"_s},
        {date, u"hh a/p"_s, u"06 p"_s},
        {Variant::date(0), u"h am/pm"_s, u"12 am"_s},
        {Variant::date(0.5), u"h AM/PM"_s, u"12 PM"_s},
        {date, u"q"_s, u"2"_s},
        {date, u"y"_s, u"123"_s},
        {date, u"w ww"_s, u"5 18"_s},
        {date, u"c"_s, u"03.05.2001 18:07:09"_s},
        {date, u"ddddd ttttt"_s, u"03.05.2001 18:07:09"_s},
        {date, u"\\d\"m\"d"_s, u"dm3"_s},
        {t(u"2001-05-03 18:07:09"), u"dd.mm.yyyy"_s, u"03.05.2001"_s},
        {t(u"3.5.2001"), u"yyyy"_s, u"2001"_s},
        {n(37000), u"dd.mm.yyyy"_s, u"19.04.2001"_s},
        {date, u"0"_s, u"37015"_s},
        {t(u"abc"), u"dd.mm.yyyy"_s, u"abc"_s},
    });
    EXPECT_EQ(call(u"Format", {date, t(u"w"), n(2)}), t(u"4"));
    EXPECT_EQ(call(u"Format", {date, t(u"ww"), n(2), n(2)}), t(u"18"));
    EXPECT_EQ(errorOfCall(u"Format", {date, t(u"w"), n(9)}), 5);
    EXPECT_EQ(errorOfCall(u"Format", {1e9, t(u"dd")}), 6);
}

TEST(Format, names) {
    check({
        {1234.5, u"fixed"_s, u"1234.50"_s},
        {1234.5, u"Standard"_s, u"1,234.50"_s},
        {1234.5, u"General Number"_s, u"1234.5"_s},
        {1234.5, u"Currency"_s, u"1,234.50 €"_s},
        {0.256, u"Percent"_s, u"25.60%"_s},
        {1234.5, u"Scientific"_s, u"1.23E+03"_s},
        {n(-1), u"Yes/No"_s, u"Ja"_s},
        {n(0), u"Yes/No"_s, u"Nein"_s},
        {true, u"True/False"_s, u"Wahr"_s},
        {false, u"on/off"_s, u"Aus"_s},
        {t(u"abc"), u"Yes/No"_s, u"abc"_s},
        {date, u"Short Date"_s, u"03.05.2001"_s},
        {date, u"Long Date"_s, u"Donnerstag, 3. Mai 2001"_s},
        {date, u"Medium Date"_s, u"03-Mai-01"_s},
        {date, u"General Date"_s, u"03.05.2001 18:07:09"_s},
        {date, u"Long Time"_s, u"18:07:09"_s},
        {date, u"Medium Time"_s, u"06:07 PM"_s},
        {date, u"Short Time"_s, u"18:07"_s},
    });
}

TEST(Format, texts) {
    check({
        {t(u"abc"), u"@@@@@"_s, u"  abc"_s},
        {t(u"abc"), u"!@@@@@"_s, u"abc  "_s},
        {t(u"abc"), u"&&&&&"_s, u"abc"_s},
        {t(u"abcd"), u"@@"_s, u"abcd"_s},
        {t(u"abcd"), u"!@-@"_s, u"a-bcd"_s},
        {t(u"abc"), u"@-@"_s, u"ab-c"_s},
        {t(u"aBc"), u">"_s, u"ABC"_s},
        {t(u"aBc"), u"<"_s, u"abc"_s},
        {t(u"ÄB"), u"<@@@"_s, u" äb"_s},
        {n(12), u"@@@"_s, u" 12"_s},
        {t(u""), u"@;\"leer\""_s, u"leer"_s},
        {null, u"@;\"leer\""_s, u"leer"_s},
        {t(u"abc"), u"0.00"_s, u"abc"_s},
    });
}

TEST(Format, withoutAPattern) {
    EXPECT_EQ(call(u"Format", {n(5)}), t(u"5"));
    EXPECT_EQ(call(u"Format", {date}), t(u"03.05.2001 18:07:09"));
    EXPECT_EQ(call(u"Format", {n(5), t(u"")}), t(u"5"));
    EXPECT_EQ(call(u"Format", {n(5), null}), t(u"5"));
    EXPECT_EQ(call(u"Format", {null}), t(u""));
    EXPECT_EQ(call(u"Format", {n(5), t(u"\"x")}), t(u"x"));
    EXPECT_EQ(call(u"Format", {n(5), t(u"0\\")}), t(u"5"));
}
