// Statements that the server answers by itself: no table comes to the program for them.
#include "dao/FaultPoints.h"
#include "dao/OpenedDatabase.h"
#include "support/StandingClock.h"

namespace dao {

namespace {

/// The statements that the action sends, without looks at the definitions of tables.
template<class Action>
QByteArrayList sentBy(Action&& action) {
    QByteArrayList sent;
    FaultPoints::setObserver([&](QByteArrayView native) {
        if (!native.contains("pg_class")) sent.append(native.toByteArray());
    });
    action();
    FaultPoints::setObserver({});
    return sent;
}

const char* const articles = "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT, Zeit DATETIME);"
                             "CREATE TABLE Teil (Nr INTEGER PRIMARY KEY, T INTEGER);"
                             "INSERT INTO T VALUES (1, 'eins', NULL), (2, 'Eins', NULL);"
                             "INSERT INTO Teil VALUES (1, 1), (2, 1), (3, 2);";

} // namespace

TEST(PostgresStatements, TheTimeIsTheClients) {
    const OpenedDatabase o(articles);
    const mkl::StandingClock clock(46'000.75);
    const QByteArrayList sent = sentBy([&] {
        o.database->Execute(u"INSERT INTO T (Nr, Name, Zeit) SELECT 3, Name, Now() FROM T WHERE Nr = 1"_s,
                            dbFailOnError);
    });
    for (const QByteArray& native : sent)
        EXPECT_FALSE(native.startsWith("SELECT \"")) << native.constData(); // the rows of the table
    EXPECT_EQ(o.one(u"SELECT Zeit FROM T WHERE Nr = 3"_s), Variant::date(46'000.75));
    EXPECT_EQ(o.one(u"SELECT Count(*) FROM T WHERE Zeit = Now()"_s), Variant(1));
    EXPECT_EQ(o.one(u"SELECT Count(*) FROM T WHERE Zeit = Date() + Time()"_s), Variant(1));
    EXPECT_EQ(o.one(u"SELECT Date() FROM T WHERE Nr = 3"_s), Variant::date(46'000));
    EXPECT_EQ(o.one(u"SELECT Time() FROM T WHERE Nr = 3"_s), Variant::date(0.75));
}

TEST(PostgresStatements, TheTimeStandsInATransactionToo) {
    const OpenedDatabase o(articles);
    const mkl::StandingClock clock(46'000.75);
    o.workspace->BeginTrans();
    o.database->Execute(u"UPDATE T SET Zeit = Now() WHERE Nr = 1"_s, dbFailOnError);
    o.workspace->CommitTrans();
    EXPECT_EQ(o.one(u"SELECT Zeit FROM T WHERE Nr = 1"_s), Variant::date(46'000.75));
}

TEST(PostgresStatements, RepeatsAreFoundByTheKeyOfARow) {
    const OpenedDatabase o(articles);
    Ref<Recordset> rows;
    const QByteArrayList sent = sentBy([&] {
        rows = o.open(u"SELECT DISTINCT T.Nr, T.Name FROM T INNER JOIN Teil ON T.Nr = Teil.T ORDER BY T.Nr"_s,
                      dbOpenSnapshot);
        rows->MoveLast();
    });
    EXPECT_EQ(sent.size(), 1) << sent.join('\n').constData();
    EXPECT_EQ(rows->RecordCount(), 2);
    EXPECT_EQ(rows->value(1), Variant(u"Eins"_s));
    // Without the key texts repeat each other whatever their case.
    EXPECT_EQ(o.one(u"SELECT Count(*) FROM (SELECT DISTINCT Name FROM T) AS Q"_s), Variant(1));
}

TEST(PostgresStatements, ARowThatIsAsItWasSeenIsChangedByOneStatement) {
    const OpenedDatabase o(articles);
    const auto rename = [&](const QString& name) {
        return sentBy([&] {
            const Ref<Recordset> rows = o.open(u"SELECT Nr, Name FROM T WHERE Nr = 1"_s, dbOpenDynaset);
            rows->Edit();
            rows->setValue(u"Name", name);
            rows->Update();
        });
    };
    const QByteArrayList sent = rename(u"neu"_s);
    const auto isUpdate = [](const QByteArray& native) { return native.startsWith("UPDATE "); };
    ASSERT_FALSE(sent.isEmpty());
    EXPECT_EQ(std::ranges::count_if(sent, isUpdate), 1) << sent.join('\n').constData();
    EXPECT_TRUE(sent.last().contains("IS NOT DISTINCT FROM")) << sent.last().constData();
    EXPECT_EQ(o.one(u"SELECT Name FROM T WHERE Nr = 1"_s), Variant(u"neu"_s));
}

TEST(PostgresStatements, NumbersJoinTexts) {
    const OpenedDatabase o(articles);
    QByteArrayList sent = sentBy([&] {
        EXPECT_EQ(o.one(u"SELECT Nr & '-' & Name & Nr FROM T WHERE Nr = 1"_s), Variant(u"1-eins1"_s));
        EXPECT_EQ(o.one(u"SELECT Nr & Nr FROM T WHERE Nr = 2"_s), Variant(u"22"_s));
    });
    EXPECT_EQ(sent.size(), 2) << sent.join('\n').constData();
}

} // namespace dao
