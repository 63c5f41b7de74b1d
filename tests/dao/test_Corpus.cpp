// Runs tests/corpus/*.sqltest; CorpusFile.h tells their format.
#include "CorpusFile.h"
#include "base/DateTime.h"
#include "dao/OpenedDatabase.h"

#include <QDir>
#include <algorithm>

namespace dao {

namespace {

QString shown(const Variant& value) {
    switch (value.type()) {
    case Variant::Type::Null: return u"Null"_s;
    case Variant::Type::Text: return u'\'' + value.toText() + u'\'';
    case Variant::Type::Double: return QString::number(value.toDouble(), 'g', 14);
    case Variant::Type::Date: {
        const QString iso = mkl::isoFromDate(value.toDate());
        return iso.endsWith(u" 00:00:00"_s) ? iso.left(10) : iso;
    }
    case Variant::Type::Boolean: return value.toBoolean() ? u"-1"_s : u"0"_s;
    default: return value.toText();
    }
}

/// What came of one statement.
struct Outcome {
    mkl::Long error = 0;
    QString description;
    QString token;
    QStringList names;
    QStringList rows;
    Long affected = 0;
};

template<class Call>
void recorded(Outcome& outcome, Call&& call) {
    try {
        call();
    } catch (const mkl::RunTimeError& error) {
        outcome.error = error.number();
        outcome.description = error.description();
        if (error.place()) outcome.token = error.place()->token;
    }
}

QString rowOf(const Recordset& rows) {
    QStringList values;
    for (int field = 0; field < rows.FieldCount(); ++field)
        values.append(shown(rows.value(field)));
    return values.join(u" | "_s);
}

void readAll(const OpenedDatabase& o, const QString& text, Long type, Outcome& outcome) {
    const auto rows = o.open(text, type);
    for (int field = 0; field < rows->FieldCount(); ++field)
        outcome.names.append(rows->Fields(field).Name());
    for (; !rows->Eof(); rows->MoveNext())
        outcome.rows.append(rowOf(*rows));
}

void findAll(const OpenedDatabase& o, const CorpusCase& entry, Outcome& outcome) {
    const auto rows = o.open(entry.source);
    for (rows->FindFirst(entry.text); !rows->NoMatch(); rows->FindNext(entry.text))
        outcome.rows.append(rowOf(*rows));
}

void execute(const OpenedDatabase& o, const CorpusCase& entry, Outcome& outcome) {
    o.workspace->BeginTrans();
    recorded(outcome, [&] {
        o.database->Execute(entry.text, entry.kind == CorpusKind::StrictAction ? dbFailOnError : 0);
        outcome.affected = o.database->RecordsAffected();
    });
    Outcome after;
    if (!entry.after.isEmpty()) recorded(after, [&] { readAll(o, entry.after, dbOpenSnapshot, after); });
    EXPECT_EQ(after.error, 0) << entry.place.toStdString() << ": " << after.description.toStdString();
    outcome.rows = after.rows;
    outcome.names = after.names;
    o.workspace->Rollback();
}

void compare(const CorpusCase& entry, const Outcome& outcome, const char* how) {
    SCOPED_TRACE(entry.place.toStdString() + ' ' + how + ": " + entry.text.left(300).toStdString() + "\n  " +
                 outcome.description.toStdString());
    EXPECT_EQ(outcome.error, entry.error.value_or(0));
    if (!entry.token.isEmpty()) {
        EXPECT_EQ(outcome.token, entry.token);
    }
    if (entry.affected) {
        EXPECT_EQ(outcome.affected, *entry.affected);
    }
    if (!entry.names.isEmpty()) {
        EXPECT_EQ(outcome.names, entry.names);
    }
    if (!entry.expectsRows) return;
    const QString query = entry.after.isEmpty() ? entry.text : entry.after;
    QStringList wanted = entry.rows, got = outcome.rows;
    if (!query.contains(u"ORDER BY"_s, Qt::CaseInsensitive)) {
        wanted.sort();
        got.sort();
    }
    EXPECT_EQ(got, wanted);
}

void run(const OpenedDatabase& o, const CorpusCase& entry) {
    const bool expectsNothing = !entry.error && !entry.expectsRows && !entry.affected;
    EXPECT_FALSE(expectsNothing) << entry.place.toStdString() << ": nothing is expected";
    Outcome outcome;
    switch (entry.kind) {
    case CorpusKind::Query:
        for (const auto& [type, how] :
             {std::pair(dbOpenSnapshot, "as snapshot"), std::pair(dbOpenDynaset, "as dynaset"),
              std::pair(dbOpenForwardOnly, "forward-only")}) {
            Outcome read;
            recorded(read, [&] { readAll(o, entry.text, type, read); });
            compare(entry, read, how);
        }
        return;
    case CorpusKind::Find: recorded(outcome, [&] { findAll(o, entry, outcome); }); break;
    default: execute(o, entry, outcome);
    }
    compare(entry, outcome, "");
}

QList<CorpusFile> corpus() {
    const QDir folder(QStringLiteral(MKL_SOURCE_DIR "/tests/corpus"));
    QList<CorpusFile> files;
    for (const QString& name : folder.entryList({u"*.sqltest"_s}, QDir::Files, QDir::Name))
        files.append(CorpusFile::read(folder.filePath(name)));
    return files;
}

} // namespace

TEST(Corpus, EachStatementGivesWhatItMust) {
    int count = 0, refused = 0;
    for (const CorpusFile& file : corpus()) {
        const OpenedDatabase o(file.native());
        for (const CorpusCase& entry : file.cases) {
            run(o, entry);
            ++count;
            refused += entry.error ? 1 : 0;
        }
    }
    RecordProperty("statements", count);
    std::printf("%d statements, %d of them to be refused\n", count, refused);
    EXPECT_GE(count, 450);
    EXPECT_GE(3 * refused, count);
}

} // namespace dao
