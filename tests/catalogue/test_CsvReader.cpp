#include "catalogue/CsvReader.h"
#include "support/Printing.h"

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

/// The fields of all lines: a text in quotes, Null as "-".
QStringList linesOf(const QByteArray& bytes) {
    CsvReader reader(u"probe.csv"_s, bytes);
    QStringList lines;
    QList<CsvField> fields;
    while (reader.next(fields)) {
        QStringList line;
        for (const CsvField& field : std::as_const(fields))
            line.append(field.isNull() ? u"-"_s : field.quoted ? u'<' + field.text + u'>' : field.text);
        lines.append(line.join(u' '));
    }
    return lines;
}

} // namespace

TEST(CsvReader, anEmptyFieldIsNullAndQuotesAreTheEmptyText) {
    EXPECT_EQ(linesOf("1,,\"\"\n"), QStringList{u"1 - <>"_s});
    EXPECT_EQ(linesOf("\n"), QStringList{u"-"_s});
}

TEST(CsvReader, aTextHoldsCommasQuotesAndLineEnds) {
    EXPECT_EQ(linesOf("\"a,b\",\"4\"\" Rohr\",\"x\ny\"\n2\n"), (QStringList{u"<a,b> <4\" Rohr> <x\ny>"_s, u"2"_s}));
}

TEST(CsvReader, lineEndsAndMarkOfOtherProgramsAreUnderstood) {
    EXPECT_EQ(linesOf("\xEF\xBB\xBF\"a\",1\r\n\"b\",2\r\n"), (QStringList{u"<a> 1"_s, u"<b> 2"_s}));
}

TEST(CsvReader, damageIsAnErrorThatNamesTheLine) {
    for (const QByteArray bytes : {"1\n\"a", "1\n\"a\"b\n", "1\na\"b\n", "1\n2", "1\n2,", "1\n\"\xFF\"\n", "1\n\"a\""})
        EXPECT_EQ(errorOf([&] { linesOf(bytes); }), 3049) << bytes.toStdString();
    try {
        linesOf("\"x\ny\"\n\"a");
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(error.description().contains(u"Zeile 3")) << error.what();
        EXPECT_TRUE(error.description().contains(u"probe.csv")) << error.what();
    }
}
