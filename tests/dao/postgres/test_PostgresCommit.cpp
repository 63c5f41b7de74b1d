// The answer to a COMMIT gets lost: what the server has done is found out, told, and never done twice.
#include "base/Texts.h"
#include "dao/OpenedDatabase.h"
#include "support/PostgresServer.h"
#include "support/RelayedLine.h"

#include <QUrl>
#include <QUrlQuery>

namespace dao {

namespace {

using mkl::RelayedLine;
using Cut = mkl::RelayedLine::Cut;

const QByteArray commit("COMMIT\0", 7), newcomer = "SELECT count(*) FROM \"T\" WHERE \"Nr\" = 4";

/// Three rows, reached by a line that breaks.
class PostgresCommit : public testing::Test {
protected:
    explicit PostgresCommit(int patience = 10'000)
        : database(workspace->OpenDatabase(url(), {.busyTimeoutMilliseconds = patience})) {}

    QString url() const {
        return u"postgresql://mkl@127.0.0.1:%1%2?sslmode=disable&gssencmode=disable"_s.arg(line.port())
            .arg(QUrl(file.path()).path());
    }
    void insert() const { database->Execute(u"INSERT INTO T VALUES (4, 'vier')"_s, dbFailOnError); }
    QByteArray stored() const { return file.one(newcomer); }
    Long count() const {
        return database->OpenRecordset(u"SELECT Count(*) FROM T"_s, dbOpenSnapshot)->value(0).toLong();
    }
    struct Failure {
        Long number = 0;
        QString description;
    };
    Failure failureOfCommit() const {
        try {
            workspace->CommitTrans();
        } catch (const mkl::RunTimeError& error) {
            return {error.number(), error.description()};
        }
        return {};
    }

    const TempDatabase file{threeRows()};
    RelayedLine line{QUrlQuery(QUrl(file.path())).queryItemValue(u"host"_s).toUtf8()};
    const Ref<Workspace> workspace = DBEngine::CreateWorkspace();
    const Ref<Database> database;
};

class PostgresCommitWithoutPatience : public PostgresCommit {
protected:
    PostgresCommitWithoutPatience()
        : PostgresCommit(300) {}
};

} // namespace

TEST_F(PostgresCommit, IsDoneWhereOnlyItsAnswerIsLost) {
    workspace->BeginTrans();
    insert();
    line.cutAt(commit, Cut::BeforeTheAnswerArrives);
    EXPECT_EQ(failureOfCommit().number, 0);
    EXPECT_TRUE(line.isCut());
    EXPECT_EQ(workspace->transactionDepth(), 0);
    EXPECT_FALSE(database->isLost());
    EXPECT_EQ(stored(), "1");
    EXPECT_EQ(count(), 4);
}

TEST_F(PostgresCommit, IsDoneWhereTheServerIsAwayForAWhileAfterwards) {
    workspace->BeginTrans();
    insert();
    line.cutAt(commit, Cut::BeforeTheAnswerArrives, 3);
    EXPECT_EQ(failureOfCommit().number, 0);
    EXPECT_EQ(count(), 4);
}

TEST_F(PostgresCommit, OfASingleActionIsNotDoneTwice) {
    const QString moved = u"UPDATE T SET Nr = Nr + 10"_s;
    line.cutAt(commit, Cut::BeforeTheAnswerArrives);
    EXPECT_EQ(errorOf([&] { database->Execute(moved, dbFailOnError); }), 0);
    EXPECT_TRUE(line.isCut());
    EXPECT_EQ(file.one("SELECT min(\"Nr\") FROM \"T\""), "11");
    EXPECT_EQ(database->RecordsAffected(), 3);
}

TEST_F(PostgresCommit, IsKnownToBeUndoneWhereTheServerNeverHeardOfIt) {
    workspace->BeginTrans();
    insert();
    line.cutAt(commit, Cut::BeforeTheServerHears);
    const Failure failure = failureOfCommit();
    EXPECT_TRUE(line.isCut());
    EXPECT_EQ(failure.number, 3043);
    EXPECT_TRUE(failure.description.startsWith(u"Die Verbindung zum Server ist unterbrochen: "_s))
        << failure.description.toStdString();
    EXPECT_EQ(errorOf([&] { insert(); }), 3246);
    workspace->Rollback();
    EXPECT_EQ(stored(), "0");
    workspace->BeginTrans();
    insert();
    EXPECT_EQ(failureOfCommit().number, 0);
    EXPECT_EQ(count(), 4);
}

TEST_F(PostgresCommitWithoutPatience, IsNotKnownWhereTheServerStaysAway) {
    for (const Cut cut : {Cut::BeforeTheAnswerArrives, Cut::BeforeTheServerHears}) {
        file.run("DELETE FROM T WHERE Nr = 4");
        workspace->BeginTrans();
        insert();
        line.cutAt(commit, cut, RelayedLine::forGood);
        const Failure failure = failureOfCommit();
        EXPECT_EQ(failure.number, 3043);
        EXPECT_EQ(failure.description, mkl::text(mkl::TextId::CommitUnknown));
        EXPECT_EQ(errorOf([&] { insert(); }), 3246); // nothing is done behind it until somebody has looked
        workspace->Rollback();
        EXPECT_EQ(errorOf([&] { count(); }), 3043);
        line.mend();
        EXPECT_EQ(count(), cut == Cut::BeforeTheAnswerArrives ? 4 : 3);
        EXPECT_EQ(stored(), cut == Cut::BeforeTheAnswerArrives ? "1" : "0");
    }
}

} // namespace dao
