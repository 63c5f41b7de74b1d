// Walks give the rows that the statements give without them, on each engine, and what was changed meanwhile.
#include "dao/Walk.h"

#include "dao/OpenedDatabase.h"
#include "dao/PlanCache.h"

#include <algorithm>

namespace dao {

namespace {

// The roots 1 to 20, each with as many children as the remainder of its number by 4.
QByteArray forest() {
    QByteArray text = "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Eltern INTEGER, Platz INTEGER, Name TEXT);";
    for (int node = 1; node <= 20; ++node) {
        const QByteArray number = QByteArray::number(node);
        text += "INSERT INTO T VALUES (" + number + ", NULL, " + number + ", 'Wurzel');";
        for (int child = node % 4; child > 0; --child)
            text += "INSERT INTO T VALUES (" + QByteArray::number(1000 + 10 * node + child) + ", " + number + ", " +
                    QByteArray::number(child) + ", 'Ä" + QByteArray::number(child) + "');";
    }
    return text;
}

QString childrenOf(int node) {
    return u"SELECT Name, Nr FROM T WHERE Eltern = "_s + QString::number(node) + u" ORDER BY Platz"_s;
}

QStringList walkAll(const OpenedDatabase& o) {
    QStringList found;
    for (int node = 1; node <= 25; ++node)
        found.append(QString::number(node) + u": "_s + o.all(childrenOf(node)).join(u' '));
    return found;
}

} // namespace

TEST(Walk, GivesTheSameRows) {
    const OpenedDatabase o(forest());
    const QStringList expected = walkAll(o);
    EXPECT_EQ(expected[2], u"3: Ä1 Ä2 Ä3");
    const Walk walk(*o.database);
    EXPECT_EQ(walkAll(o), expected);
    EXPECT_EQ(walkAll(o), expected);
}

TEST(Walk, ShowsWhatThisConnectionChanges) {
    const OpenedDatabase o(forest());
    const Walk walk(*o.database);
    walkAll(o);
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Name = 'neu' WHERE Nr = 1011"_s), 0);
    EXPECT_EQ(o.all(childrenOf(1)), (QStringList{u"neu"_s}));
    o.workspace->BeginTrans();
    o.database->Execute(u"DELETE FROM T WHERE Nr = 1011"_s, dbFailOnError);
    EXPECT_EQ(o.all(childrenOf(1)), QStringList());
    o.workspace->Rollback();
    EXPECT_EQ(o.all(childrenOf(1)), (QStringList{u"neu"_s}));
}

TEST(Walk, FailuresStayWithTheirStatements) {
    const OpenedDatabase o(forest() + "INSERT INTO T VALUES (2000, 21, 0, 'x');");
    const Walk walk(*o.database);
    const auto quotients = [](int node) {
        return u"SELECT 1 / Platz FROM T WHERE Eltern = "_s + QString::number(node);
    };
    for (int node = 1; node <= 25; ++node)
        EXPECT_EQ(o.errorOfQuery(quotients(node)), node == 21 ? 11 : 0) << node;
}

TEST(Walk, EndsWithTheOutermostOne) {
    const OpenedDatabase o(forest());
    {
        const Walk walk(*o.database);
        const Walk inner(*o.database);
        walkAll(o);
    }
    o.file.run("UPDATE T SET Name = 'neu' WHERE Nr = 1011");
    EXPECT_EQ(o.all(childrenOf(1)), (QStringList{u"neu"_s}));
}

TEST(Walk, SeesTablesThatOthersMakeAnew) {
    const OpenedDatabase o(forest());
    const QString sql = u"SELECT * FROM T WHERE Eltern = "_s;
    Walk walk(*o.database);
    for (int node = 1; node <= 20; ++node)
        o.open(sql + QString::number(node));
    o.file.run("ALTER TABLE T ADD COLUMN Farbe TEXT");
    EXPECT_EQ(o.database->tableNames().size(), 1);
    EXPECT_EQ(o.open(sql + u'1')->FieldCount(), 5);
}

} // namespace dao
