// How many ways to the server a walk takes.
#include "dao/OpenedDatabase.h"
#include "dao/PlanCache.h"
#include "dao/Walk.h"

namespace dao {

namespace {

const QByteArray numbers = "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Eltern INTEGER); "
                           "INSERT INTO T SELECT n, n / 10 FROM generate_series(1, 1000) n";

void read(const OpenedDatabase& o, int first, int last) {
    for (int key = first; key <= last; ++key)
        EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Eltern = "_s + QString::number(key)).size(), key == 100 ? 1 : 10);
}

qint64 answered(const OpenedDatabase& o) {
    return o.database->planCache().readAhead().answered();
}

} // namespace

TEST(ReadAhead, AnswersAllButTheFirstStatementsOfAWalk) {
    const OpenedDatabase o(numbers);
    read(o, 1, 99);
    EXPECT_EQ(answered(o), 0);
    const Walk walk(*o.database);
    read(o, 1, 100);
    EXPECT_EQ(answered(o), 100 - ReadAhead::patience);
}

TEST(ReadAhead, RowsOfAWalkAreReadOnce) {
    const OpenedDatabase o(numbers);
    const Walk walk(*o.database);
    read(o, 1, 20);
    const qint64 before = answered(o);
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Nr = Nr WHERE Nr = 1"_s), 0);
    read(o, 1, 100);
    EXPECT_EQ(answered(o), before);
}

TEST(ReadAhead, TheRowsOfAKeyAreOfOneMoment) {
    const OpenedDatabase o(numbers);
    const Walk walk(*o.database);
    read(o, 1, 20);
    o.file.run("UPDATE T SET Eltern = 50 WHERE Eltern = 30");
    read(o, 30, 30);
    read(o, 50, 50);
}

} // namespace dao
