#include "CollectedRows.h"
#include "catalogue/RowStream.h"
#include "support/Printing.h"

#include <QBuffer>
#include <limits>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

const QList<Variant> oneOfEach = {Variant(),
                                  Variant(true),
                                  Variant(std::numeric_limits<Long>::min()),
                                  Variant(0.1),
                                  Variant::currency(std::numeric_limits<qint64>::max()),
                                  Variant::date(-1.75),
                                  Variant(QString::fromUtf16(u"ä\0 😀", 5)),
                                  Variant(u""_s)};

QByteArray streamOf(const std::function<void(RowStreamWriter&)>& write) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    RowStreamWriter writer(buffer);
    write(writer);
    return buffer.data();
}

QByteArray wholeStream(int rows) {
    return streamOf([&](RowStreamWriter& writer) {
        writer.passOverTable(u"Kunden"_s);
        writer.beginTable(1, {0, 1, 2, 3, 4, 5, 0, 1}, rows);
        for (int i = 0; i < rows; ++i)
            writer.row(oneOfEach);
        writer.endTable();
        writer.finish();
    });
}

/// Gives up as a CollectedRows would not: values of any type in any column.
class FirstRow final : public RowSink {
public:
    void passOverTable(const QString& table) override { passedOver = table; }
    void passOverColumn(const QString&, const QString&) override {}
    void beginTable(int, const QList<int>&, qint64 expectedRows) override { expected = expectedRows; }
    void row(std::span<const Variant> values) override {
        first = QList<Variant>(values.begin(), values.end());
        ++rows;
    }
    void endTable() override {}

    QString passedOver;
    QList<Variant> first;
    qint64 expected = 0, rows = 0;
};

} // namespace

TEST(RowStream, valuesComeBackExactly) {
    FirstRow sink;
    RowStreamReader reader(sink);
    reader.take(wholeStream(1));
    EXPECT_TRUE(reader.isComplete());
    EXPECT_EQ(sink.first, oneOfEach);
    EXPECT_EQ(sink.passedOver, u"Kunden"_s);
}

TEST(RowStream, bytesMayComeInAnyPieces) {
    const QByteArray stream = wholeStream(3000);
    for (const qsizetype piece : {1, 7, 4096, 100000}) {
        FirstRow sink;
        RowStreamReader reader(sink);
        for (qsizetype at = 0; at < stream.size(); at += piece)
            reader.take(stream.mid(at, piece));
        EXPECT_TRUE(reader.isComplete());
        EXPECT_EQ(sink.rows, 3000);
    }
}

TEST(RowStream, theErrorOfTheSourceArrives) {
    FirstRow sink;
    RowStreamReader reader(sink);
    const QByteArray stream = streamOf([](RowStreamWriter& writer) { writer.fail(3011, u"Es fehlt etwas."_s); });
    try {
        reader.take(stream);
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 3011);
        EXPECT_EQ(error.description(), u"Es fehlt etwas."_s);
    }
}

TEST(RowStream, aStreamThatBreaksOffIsNotComplete) {
    const QByteArray stream = wholeStream(2);
    for (qsizetype length = 0; length < stream.size(); ++length) {
        FirstRow sink;
        RowStreamReader reader(sink);
        reader.take(stream.first(length));
        ASSERT_FALSE(reader.isComplete()) << length;
    }
}

TEST(RowStream, brokenBytesAreAnErrorOrOtherRowsButNeverMore) {
    const QByteArray stream = wholeStream(2);
    for (qsizetype at = 0; at < stream.size(); ++at) {
        QByteArray broken = stream;
        broken[at] = char(broken[at] ^ 0x41);
        FirstRow sink;
        RowStreamReader reader(sink);
        const Long error = errorOf([&] { reader.take(broken); });
        ASSERT_TRUE(error == 0 || error == 3049) << at;
    }
}
