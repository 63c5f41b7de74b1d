// The dialect beside what the engine or Qt offer for the same: finding by a pattern, German order, parsing.
#include "bench/Pool.h"
#include "bench/Row.h"
#include "jet/syntax/Parser.h"

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int Runs = 5;
constexpr int Statements = 100'000;

// No article begins like that, so that every row is asked.
constexpr QStringView findCriterion = u"Artikelname Like 'zz*'";

/// All articles in memory, as a record set and as a list of names.
struct Names {
    explicit Names(const Pool& pool)
        : rows(pool.open()) {
        for (; !rows->Eof(); rows->MoveNext())
            list.append(rows->value(u"Artikelname").toText());
    }

    double findSeconds() const {
        return medianSeconds(Runs, [this] {
            rows->FindFirst(findCriterion);
            if (!rows->NoMatch()) qFatal("an article begins with zz");
        });
    }

    mkl::Ref<dao::Recordset> rows;
    QList<QString> list;
};

int countOf(const Pool& pool, const char* text) {
    const RawStatement statement(*pool.raw, text);
    statement.step();
    return statement.integer(0);
}

int countOf(const mkl::Ref<dao::Recordset>& rows) {
    return rows->value(0).toLong();
}

} // namespace

Result findRow() {
    const Pool pool;
    const Names names(pool);
    Result result;
    result.work = u"FindFirst Artikelname Like 'zz*' over 1,000,000 rows in memory"_s;
    result.unit = u"s"_s;
    result.goal = 3;
    result.ours = names.findSeconds();
    qsizetype found = 0;
    result.baselines = {{u"QString::startsWith"_s, medianSeconds(Runs, [&] {
                             for (const QString& name : names.list)
                                 found += name.startsWith(u"zz", Qt::CaseInsensitive);
                         })}};
    if (found > 0) qFatal("an article begins with zz");
    return result;
}

Result findScanRow() {
    const Pool pool;
    const Names names(pool);
    Result result;
    result.work = u"the same find"_s;
    result.unit = u"s"_s;
    result.goal = 1;
    result.ours = names.findSeconds();
    result.baselines = {{u"SQLite LIKE 'zz%'"_s, medianSeconds(Runs, [&] {
                             countOf(pool, "SELECT count(*) FROM ARTIKEL WHERE Artikelname LIKE 'zz%'");
                         })}};
    return result;
}

Result likeRow() {
    const Pool pool;
    Result result;
    result.work = u"Count(*) of Artikelname Like '*zz*' by the engine, 1,000,000 rows"_s;
    result.unit = u"s"_s;
    result.goal = 2;
    int ours = 0, raw = 0;
    result.ours = medianSeconds(Runs, [&] {
        ours = countOf(pool.database->OpenRecordset(u"SELECT Count(*) FROM ARTIKEL WHERE Artikelname Like '*zz*'"_s,
                                                    dao::dbOpenSnapshot));
    });
    result.baselines = {{u"SQLite LIKE '%zz%'"_s, medianSeconds(Runs, [&] {
                             raw = countOf(pool, "SELECT count(*) FROM ARTIKEL WHERE Artikelname LIKE '%zz%'");
                         })}};
    if (ours != raw) qFatal("the counts differ");
    return result;
}

Result orderRow() {
    const Pool pool;
    Result result;
    result.work = u"ORDER BY Artikelname in German order, 1,000,000 names read"_s;
    result.unit = u"s"_s;
    result.goal = 3;
    qint64 ours = 0, raw = 0;
    result.ours = medianSeconds(Runs, [&] {
        const auto rows = pool.database->OpenRecordset(u"SELECT Artikelname FROM ARTIKEL ORDER BY Artikelname"_s,
                                                       dao::dbOpenSnapshot);
        rows->MoveLast();
        ours = rows->RecordCount();
    });
    result.baselines = {{u"SQLite NOCASE"_s, medianSeconds(Runs, [&] {
                             const RawStatement statement(*pool.raw,
                                                          "SELECT Artikelname FROM ARTIKEL ORDER BY Artikelname "
                                                          "COLLATE NOCASE");
                             for (raw = 0; statement.step(); ++raw)
                                 statement.bytes(0);
                         })}};
    if (ours != raw) qFatal("the counts differ");
    return result;
}

Result parseRow() {
    const QString statements[] = {
        u"SELECT * FROM [ARTIKEL/KATEGORIEN] WHERE [Parent]=17 AND [Absender-Schlüssel] Like '*' ORDER BY [Order]"_s,
        u"SELECT [Artikel-Schlüssel], Artikelname, Aktiv FROM ARTIKEL WHERE Artikelname Like 'Schraube*' And Aktiv=True"_s,
        u"UPDATE [ARTIKEL/KATEGORIEN] SET [Order]=4 WHERE [Kategorie-Schlüssel]=1234"_s,
        u"SELECT Max([Artikel-Schlüssel]) AS M FROM ARTIKEL HAVING Right([Artikel-Schlüssel],1)=3"_s,
        u"DELETE FROM ARTKAT WHERE [Artikel-Schlüssel]=99 AND [Kategorie-Schlüssel] In (1, 2, 3)"_s,
    };
    Result result;
    result.work = u"parsing a typical statement: lexer, parser, tree"_s;
    result.unit = u"ns"_s;
    result.goal = 5000;
    const double seconds = medianSeconds(Runs, [&] {
        for (int i = 0; i < Statements; ++i) {
            jet::TokenStream tokens(statements[std::size_t(i) % std::size(statements)]);
            jet::parseStatement(tokens);
        }
    });
    result.ours = seconds / Statements * 1e9;
    return result;
}

} // namespace bench
