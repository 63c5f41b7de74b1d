// Dates of a machine whose clock is far off: stored, shown, sorted and compared like any other.
#include "base/DateTime.h"
#include "dao/OpenedDatabase.h"
#include "support/StandingClock.h"

namespace dao {

namespace {

const QStringList dates{u"0100-01-01 00:00:00"_s, u"1899-12-29 18:00:00"_s, u"1899-12-30 00:00:00"_s,
                        u"1970-01-01 00:00:00"_s, u"2026-11-22 12:00:00"_s, u"2038-01-19 03:14:08"_s,
                        u"2100-02-28 23:59:59"_s, u"9999-12-31 23:59:59"_s};

double dateOf(const QString& iso) {
    return *mkl::dateFromIso(iso);
}

/// One row for each, the last one first; each has the date of the clock that stood there.
class FarDates : public testing::Test {
protected:
    FarDates() {
        const auto table = o.open(u"T"_s, dbOpenTable);
        for (qsizetype place = dates.size() - 1; place >= 0; --place) {
            const mkl::StandingClock clock(dateOf(dates[place]));
            table->AddNew();
            table->setValue(u"Nr", static_cast<Long>(place));
            table->setValue(u"Changed", Variant::date(mkl::clock().now()));
            table->Update();
        }
    }

    const OpenedDatabase o{"CREATE TABLE T (Nr INTEGER PRIMARY KEY, Changed DATETIME)"};
};

} // namespace

TEST_F(FarDates, AreReadAsTheyWereStored) {
    for (const Long type : {dbOpenSnapshot, dbOpenDynaset, dbOpenForwardOnly}) {
        const auto rows = o.open(u"SELECT Changed FROM T ORDER BY Nr"_s, type);
        for (const QString& date : dates) {
            EXPECT_EQ(rows->value(0), Variant::date(dateOf(date))) << date.toStdString();
            rows->MoveNext();
        }
    }
}

TEST_F(FarDates, SortInTheirOrder) {
    const QStringList upwards{u"0"_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s, u"7"_s};
    EXPECT_EQ(o.all(u"SELECT Nr FROM T ORDER BY Changed"_s), upwards);
    const auto rows = o.open(u"SELECT * FROM T"_s);
    rows->setSort(u"Changed"_s); // in memory
    EXPECT_EQ(OpenedDatabase::walk(rows->OpenRecordset()), upwards);
    EXPECT_EQ(o.one(u"SELECT Max(Changed) FROM T"_s), Variant::date(dateOf(dates.last())));
    EXPECT_EQ(o.one(u"SELECT Min(Changed) FROM T"_s), Variant::date(dateOf(dates.first())));
}

TEST_F(FarDates, CompareWithTheClockOfTheProgram) {
    for (qsizetype place = 0; place < dates.size(); ++place) {
        const mkl::StandingClock clock(dateOf(dates[place]));
        EXPECT_EQ(o.one(u"SELECT Count(*) FROM T WHERE Changed < Now()"_s), Variant(static_cast<Long>(place)));
        EXPECT_EQ(o.one(u"SELECT Nr FROM T WHERE Changed = Now()"_s), Variant(static_cast<Long>(place)));
    }
    EXPECT_EQ(o.all(u"SELECT Nr FROM T WHERE Changed > #2026-11-22 12:00# ORDER BY Nr"_s),
              (QStringList{u"5"_s, u"6"_s, u"7"_s}));
}

TEST_F(FarDates, AreChangedByRowsAndByStatements) {
    const mkl::StandingClock clock(dateOf(dates.last()));
    EXPECT_EQ(o.errorOfExecute(u"UPDATE T SET Changed = Now() WHERE Nr < 3"_s), 0);
    const auto rows = o.open(u"SELECT * FROM T WHERE Nr = 3"_s, dbOpenDynaset);
    rows->Edit();
    rows->setValue(u"Changed", Variant::date(mkl::clock().now()));
    rows->Update();
    EXPECT_EQ(o.one(u"SELECT Count(*) FROM T WHERE Changed = #12/31/9999 23:59:59#"_s), Variant(5));
}

} // namespace dao
