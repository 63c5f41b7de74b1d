#include "Tool.h"
#include "support/Printing.h"

#include <QFile>
#include <QJsonObject>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

class Replica : public testing::Test {
protected:
    Replica() { EXPECT_EQ(tool.run({u"new"_s, file}).status, 0); }

    ToolResult status() const { return tool.run({u"replica"_s, u"status"_s, file}); }
    ToolResult set(const QString& digit) const { return tool.run({u"replica"_s, u"digit"_s, file, digit}); }
    /// Puts bytes into the header of the file.
    void write(qint64 place, const QByteArray& bytes) const {
        QFile database(tool.path(file));
        ASSERT_TRUE(database.open(QIODevice::ReadWrite) && database.seek(place));
        database.write(bytes);
    }
    /// A number as a program of other people may keep one there.
    void keepForeignNumber() const { write(60, QByteArray::fromHex("00001267")); } // 4711
    /// A file of a later format, which this engine reads and never writes.
    void makeReadOnly() const { write(18, QByteArray(1, 3)); }

    const QString file = u"Filiale.sqlite"_s;
    Tool tool;
};

} // namespace

TEST_F(Replica, aNewCatalogueHasDigit0) {
    EXPECT_EQ(status().output, u"Replik-Ziffer: 0\n"_s);
    EXPECT_EQ(status().status, 0);
}

TEST_F(Replica, setsAndShowsEachDigit) {
    for (int digit = 0; digit <= 9; ++digit) {
        const ToolResult result = set(QString::number(digit));
        EXPECT_EQ(result.status, 0) << result.errors.toStdString();
        EXPECT_EQ(result.output, u"Replik-Ziffer: %1\n"_s.arg(digit));
        EXPECT_EQ(status().output, result.output);
    }
}

TEST_F(Replica, asJsonAndInEnglish) {
    const ToolResult result = tool.run({u"replica"_s, u"digit"_s, file, u"7"_s, u"--json"_s});
    EXPECT_EQ(result.json()[u"replicaDigit"_s], 7);
    const QJsonObject shown = tool.run({u"replica"_s, u"status"_s, file, u"--json"_s}).json();
    EXPECT_EQ(shown[u"replicaDigit"_s], 7);
    EXPECT_EQ(shown[u"file"_s], file);
    EXPECT_EQ(shown[u"updatable"_s], true);
    EXPECT_EQ(tool.runIn(u"en_GB.UTF-8"_s, {u"replica"_s, u"status"_s, file}).output, u"replica digit: 7\n"_s);
}

TEST_F(Replica, infoShowsTheDigitToo) {
    set(u"4"_s);
    EXPECT_TRUE(tool.run({u"info"_s, file}).output.endsWith(u"Replik-Ziffer: 4\n"_s));
    EXPECT_EQ(tool.run({u"info"_s, file, u"--json"_s}).json()[u"replicaDigit"_s], 4);
}

TEST_F(Replica, aCopyKeepsTheDigitUntilItGetsItsOwn) {
    set(u"3"_s);
    ASSERT_TRUE(QFile::copy(tool.path(file), tool.path(u"Kopie.sqlite"_s)));
    EXPECT_EQ(tool.run({u"replica"_s, u"status"_s, u"Kopie.sqlite"_s}).output, u"Replik-Ziffer: 3\n"_s);
    EXPECT_EQ(tool.run({u"replica"_s, u"digit"_s, u"Kopie.sqlite"_s, u"5"_s}).status, 0);
    EXPECT_EQ(status().output, u"Replik-Ziffer: 3\n"_s);
}

TEST_F(Replica, aForeignNumberIsToldAndCanBeMended) {
    keepForeignNumber();
    const ToolResult shown = status();
    EXPECT_EQ(shown.status, 1);
    EXPECT_EQ(shown.output, QString());
    EXPECT_TRUE(shown.errors.contains(u"4711")) << shown.errors.toStdString();
    EXPECT_TRUE(shown.errors.contains(u"0 bis 9"));
    EXPECT_TRUE(tool.run({u"info"_s, file}).output.contains(u"Replik-Ziffer: keine"));
    EXPECT_TRUE(tool.run({u"info"_s, file, u"--json"_s}).json()[u"replicaDigit"_s].isNull());
    EXPECT_EQ(set(u"2"_s).status, 0);
    EXPECT_EQ(status().output, u"Replik-Ziffer: 2\n"_s);
}

TEST_F(Replica, aReadOnlyFileIsRefusedInWords) {
    makeReadOnly();
    const ToolResult result = set(u"3"_s);
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.errors.contains(u"schreibgeschützt")) << result.errors.toStdString();
    EXPECT_EQ(status().output, u"Replik-Ziffer: 0\n"_s);
    EXPECT_EQ(tool.run({u"replica"_s, u"status"_s, file, u"--json"_s}).json()[u"updatable"_s], false);
}
