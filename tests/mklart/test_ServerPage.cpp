// What docs/server.md tells administrators to do is done here, line by line, on a server of its own.
#include "base/RunTimeError.h"
#include "dao/Workspace.h"
#include "support/DocsPage.h"
#include "support/Printing.h"
#include "support/RelayedLine.h"
#include "support/TlsServer.h"

#include <QFile>
#include <QRegularExpression>
#include <stdexcept>
#include <unistd.h>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

/// The blocks of commands and settings below that heading.
QStringList blocksOf(const QString& heading) {
    return codeBlocksOf(u"server.md"_s, heading);
}

// The addresses of an office are none of this machine.
QString onThisMachine(const QString& rules) {
    return QString(rules).replace(u" 192.168."_s, u" 127.7."_s);
}

const QByteArray office = "127.7.1.5", otherSite = "127.7.2.5", elsewhere = "127.8.0.1";
const QStringList roles{u"mkl_owner"_s, u"mkl_clerk"_s, u"mkl_reader"_s, u"mkl_replication"_s};

QString passwordOf(const QString& role) {
    return u"Geheim von "_s + role;
}

/// Set up once, as the page says.
class Installation {
public:
    Installation()
        : server(access_[0], onThisMachine(access_[2]))
        , office(server.port(), ::office)
        , otherSite(server.port(), ::otherSite) {
        runShell(server.path({}), u"umask 077; : > passwords"_s);
        QFile file(server.path(u"passwords"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        for (const QString& role : roles)
            file.write(u"*:*:*:%1:%2\n"_s.arg(role, passwordOf(role)).toUtf8());
        file.close();
        run(u"mklart demo alt.sqlite --articles=20"_s);
        runOnServer(server.url("postgres"), "CREATE ROLE postgres SUPERUSER LOGIN");
        runAll(blocksOf(u"Ein Server"_s).value(1));
        run(u"psql -d katalog -c \"\\password mkl_replication\""_s);
    }

    /// A line of the page; it is told the password where it asks for one.
    QByteArray run(const QString& line, const QStringList& variables = {}) {
        static const QRegularExpression asking(u"password (mkl_\\w+)"_s);
        const QByteArray typed = passwordOf(asking.match(line).captured(1)).toUtf8() + '\n';
        const QStringList settings =
            QStringList{u"PATH="_s + QStringLiteral(MKL_BIN_DIR ":/usr/lib/postgresql/15/bin:$PATH"),
                        u"PGHOST="_s + QString(server.url({})).section(u"host="_s, 1).section(u'&', 0, 0),
                        u"PGPORT=%1"_s.arg(server.port()), u"PGUSER=mkl"_s, u"PGPASSFILE=$PWD/passwords"_s} +
            variables;
        return runShell(server.path({}),
                        u"ln -sfn " MKL_SOURCE_DIR "/scripts scripts; export %1; %2"_s.arg(settings.join(u' '), line),
                        typed + typed);
    }
    void runAll(const QString& block) {
        for (const QString& line : block.split(u'\n', Qt::SkipEmptyParts))
            run(line);
    }
    QString url(const RelayedLine& line, const QString& role, const QString& mode) const {
        return u"postgresql://%1@stelle1:%2/katalog?hostaddr=127.0.0.1&sslmode=%3&sslrootcert=%4"_s.arg(role)
            .arg(line.port())
            .arg(mode, server.path(u"server.crt"_s));
    }
    QByteArray native(const QByteArray& statement) const { return runOnServer(server.url("katalog"), statement); }

private:
    const QStringList access_ = blocksOf(u"Wer herein darf, und Verschlüsselung"_s);

public:
    TlsServer server;
    RelayedLine office, otherSite;
};

class ServerPage : public testing::Test {
protected:
    static void SetUpTestSuite() { installed_ = std::make_unique<Installation>(); }
    static void TearDownTestSuite() { installed_.reset(); }
    static Installation& installed() { return *installed_; }

    static Long errorOfOpening(const QString& url, const QString& password) {
        return errorOf([&] {
            const auto workspace = dao::DBEngine::CreateWorkspace();
            EXPECT_TRUE(workspace->OpenDatabase(url, {.password = password})->isEncrypted());
        });
    }

private:
    static inline std::unique_ptr<Installation> installed_;
};

} // namespace

TEST_F(ServerPage, thePasswordsAreKeptAsTheRulesDemandThem) {
    EXPECT_EQ(installed().native("SELECT count(*) FROM pg_authid WHERE rolname LIKE 'mkl\\_%' AND rolpassword LIKE "
                                 "'SCRAM-SHA-256$%'"),
              "4");
    EXPECT_EQ(installed().native("SELECT count(*) FROM pg_hba_file_rules WHERE error IS NOT NULL"), "0");
    EXPECT_EQ(installed().native("SELECT count(*) FROM pg_hba_file_rules"), "5"); // one is of the test
    EXPECT_EQ(installed().native("SHOW ssl"), "on");
    EXPECT_EQ(installed().native("SELECT count(*) FROM \"ARTIKEL\""), "20");
}

TEST_F(ServerPage, eachRoleComesInOverAnEncryptedLineWithItsPassword) {
    for (const QString& role : roles) {
        const bool isReplication = role == u"mkl_replication";
        const QString url =
            installed().url(isReplication ? installed().otherSite : installed().office, role, u"verify-full"_s);
        EXPECT_EQ(errorOfOpening(url, passwordOf(role)), 0) << role.toStdString();
        EXPECT_EQ(errorOfOpening(url, u"falsch"_s), 3031) << role.toStdString();
        EXPECT_EQ(errorOfOpening(url, {}), 3148) << role.toStdString();
    }
}

TEST_F(ServerPage, nobodyComesInUnencryptedFromOutside) {
    for (const QString& role : roles) {
        const QString url = installed().url(installed().otherSite, role, u"disable"_s);
        EXPECT_EQ(errorOfOpening(url, passwordOf(role)), 3029) << role.toStdString();
    }
}

TEST_F(ServerPage, otherSitesAndStrangersComeInNowhereElse) {
    const RelayedLine stranger(installed().server.port(), elsewhere);
    for (const QString& role : roles)
        EXPECT_EQ(errorOfOpening(installed().url(stranger, role, u"require"_s), passwordOf(role)), 3029);
    const QString replication = roles.last();
    EXPECT_EQ(errorOfOpening(installed().url(installed().office, replication, u"require"_s), passwordOf(replication)),
              3029);
    EXPECT_EQ(errorOfOpening(installed().url(installed().office, u"mkl"_s, u"require"_s), {}), 3029);
}

TEST_F(ServerPage, theCertificateIsThatOfTheServer) {
    const QString line = blocksOf(u"Wer herein darf, und Verschlüsselung"_s).value(3);
    const QStringList there{u"PGHOSTADDR=127.0.0.1"_s, u"PGPORT=%1"_s.arg(installed().office.port())};
    EXPECT_TRUE(line.startsWith(u"mklart check "_s)) << line.toStdString();
    const QByteArray said = installed().run(line, there);
    EXPECT_FALSE(said.contains("Warn")) << said.constData();
    EXPECT_THROW(installed().run(QString(line).replace(u"stelle1"_s, u"stelle2"_s), there), std::runtime_error);
}

TEST_F(ServerPage, aBackupTakesThePlaceOfTheCatalogue) {
    const QStringList blocks = blocksOf(u"Sichern und zurückholen"_s);
    const QString rename =
        u"mklart sql postgresql://mkl_clerk@127.0.0.1/katalog \"UPDATE ARTIKEL SET Artikelname='%1'\""_s;
    const QByteArray names = "SELECT string_agg(DISTINCT \"Artikelname\", ',') FROM \"ARTIKEL\"";
    installed().run(rename.arg(u"gesichert"_s));
    installed().runAll(blocks.value(0));
    installed().run(rename.arg(u"danach"_s));
    installed().runAll(blocks.value(1));
    EXPECT_EQ(installed().native(names), "gesichert");
    installed().run(rename.arg(u"weiter"_s)); // the clerk still may
    EXPECT_EQ(installed().native(names), "weiter");
    EXPECT_EQ(runOnServer(installed().server.url("katalog_alt"), names), "danach");
    EXPECT_THROW(installed().run(QString(rename).replace(u"mkl_clerk"_s, u"mkl_reader"_s).arg(u"nie"_s)),
                 std::runtime_error);
}

TEST_F(ServerPage, aSoundCatalogueIsCheckedAndLeftAsItIs) {
    EXPECT_NO_THROW(installed().runAll(blocksOf(u"Nach einer Unterbrechung"_s).value(0)));
}

TEST_F(ServerPage, theOwnerOpensWithANewVersionFirst) {
    installed().native("COMMENT ON SCHEMA mkl IS '1'");
    const QString clerk = u"mklart check postgresql://mkl_clerk@127.0.0.1/katalog"_s;
    EXPECT_THROW(installed().run(clerk), std::runtime_error);
    installed().runAll(blocksOf(u"Eine neue Fassung des Programms"_s).value(0));
    EXPECT_NO_THROW(installed().run(clerk));
}

TEST_F(ServerPage, onlyTheAdministratorOfTheMachineNeedsNoPassword) {
    if (geteuid() != 0) GTEST_SKIP() << "becomes another user of this machine";
    const QString asking = u"psql -U postgres -d katalog -c 'SELECT 1'"_s;
    EXPECT_NO_THROW(installed().run(u"cd /; setpriv --reuid=postgres --regid=postgres --clear-groups "_s + asking));
    EXPECT_THROW(installed().run(asking), std::runtime_error);
}
