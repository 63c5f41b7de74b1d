// Encrypted connections, and servers that are not who they say they are.
#include "dao/OpenedDatabase.h"
#include "dao/ServerAddress.h"
#include "support/TlsServer.h"

#include <QRegularExpression>

namespace dao {

namespace {

// An authority, a server's certificate of it, and an authority that nobody has asked.
const QString certificates = uR"(
new() { openssl req -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 3650 "$@"; }
new -x509 -subj /CN=Stelle -keyout authority.key -out authority.crt
new -x509 -subj /CN=Stelle -keyout other.key -out other.crt
new -subj /CN=server -keyout server.key -out server.csr
echo subjectAltName=DNS:localhost,IP:127.0.0.1 > names
openssl x509 -req -in server.csr -CA authority.crt -CAkey authority.key -CAcreateserial -days 3650 \
  -extfile names -out server.crt
)"_s;

const mkl::TlsServer& server() {
    static const mkl::TlsServer made(certificates, u"hostssl all mkl 127.0.0.1/32 trust\n"_s);
    return made;
}

QString url(const QString& parameters, const QString& host = u"127.0.0.1"_s) {
    return u"postgresql://mkl@%1:%2/postgres?%3"_s.arg(host).arg(server().port()).arg(parameters);
}

QString trusting(const QString& authority) {
    return u"&sslrootcert="_s + server().path(authority);
}

bool isEncrypted(const QString& address) {
    const auto workspace = DBEngine::CreateWorkspace();
    const auto database = workspace->OpenDatabase(address);
    const auto rows = database->queryNative(u"SELECT ssl::text FROM pg_stat_ssl WHERE pid = pg_backend_pid()"_s);
    EXPECT_EQ(rows[0][0] == u"true", database->isEncrypted()) << "what the server says of it";
    return database->isEncrypted();
}

struct Failure {
    Long number = 0;
    QString description;
};

Failure failureOf(const QString& address) {
    try {
        DBEngine::CreateWorkspace()->OpenDatabase(address);
    } catch (const mkl::RunTimeError& error) {
        return {error.number(), error.description()};
    }
    return {};
}

void expectNoTrust(const QString& address) {
    const Failure failure = failureOf(address);
    EXPECT_EQ(failure.number, 3151) << address.toStdString();
    EXPECT_TRUE(failure.description.contains(u"keine verschlüsselte Verbindung"_s))
        << failure.description.toStdString();
    EXPECT_TRUE(failure.description.contains(u"Zertifikat"_s));
    EXPECT_TRUE(failure.description.contains(serverAddress(address).shown));
}

} // namespace

TEST(PostgresTls, ADemandedEncryptionIsOne) {
    EXPECT_TRUE(isEncrypted(url(u"sslmode=require"_s)));
    EXPECT_TRUE(isEncrypted(url(u"sslmode=prefer"_s)));
}

TEST(PostgresTls, TheServerProvesWhoItIs) {
    const QString mode = u"sslmode=verify-full"_s;
    EXPECT_TRUE(isEncrypted(url(mode + trusting(u"authority.crt"_s))));
    EXPECT_TRUE(isEncrypted(url(mode + trusting(u"authority.crt"_s) + u"&hostaddr=127.0.0.1"_s, u"localhost"_s)));
}

TEST(PostgresTls, AnotherAuthorityIsNotTrusted) {
    for (const QString& mode : {u"sslmode=verify-full"_s, u"sslmode=verify-ca"_s})
        expectNoTrust(url(mode + trusting(u"other.crt"_s)));
    expectNoTrust(url(u"sslmode=verify-full"_s + trusting(u"gibtesnicht.crt"_s)));
}

TEST(PostgresTls, ACertificateOfAnotherNameIsNotTrusted) {
    const QString there = trusting(u"authority.crt"_s) + u"&hostaddr=127.0.0.1"_s;
    expectNoTrust(url(u"sslmode=verify-full"_s + there, u"stelle2"_s));
    EXPECT_TRUE(isEncrypted(url(u"sslmode=verify-ca"_s + there, u"stelle2"_s)));
}

TEST(PostgresTls, WhoRefusesEncryptionIsRefused) {
    const Failure failure = failureOf(url(u"sslmode=disable"_s));
    EXPECT_EQ(failure.number, 3029);
    EXPECT_EQ(failure.description, u"Der Server lässt den Benutzer 'mkl' nicht zu, jedenfalls nicht über eine "
                                   "unverschlüsselte Verbindung (sslmode=disable)."_s);
    // Encryption is not what is wrong here.
    const Failure nobody = failureOf(QString(url(u"sslmode=require"_s)).replace(u"mkl@"_s, u"niemand@"_s));
    EXPECT_EQ(nobody.number, 3029);
    EXPECT_EQ(nobody.description, u"Der Server lässt den Benutzer 'niemand' nicht zu."_s);
}

TEST(PostgresTls, ALostConnectionIsMadeAnewAsStrictly) {
    const auto workspace = DBEngine::CreateWorkspace();
    const auto database = workspace->OpenDatabase(url(u"sslmode=verify-full"_s + trusting(u"authority.crt"_s)));
    const auto ask = [&] { database->queryNative(u"SELECT 1"_s); };
    mkl::runOnServer(server().url("postgres"), "SELECT count(pg_terminate_backend(pid, 60000)) FROM pg_stat_ssl WHERE "
                                               "ssl AND pid <> pg_backend_pid()");
    EXPECT_EQ(errorOf(ask), 3043);
    EXPECT_EQ(errorOf(ask), 0);
    EXPECT_TRUE(database->isEncrypted());
}

TEST(PostgresTls, WithoutACertificateTheServerEncryptsNothing) {
    const mkl::PostgresServer plain({u"listen_addresses=127.0.0.1"_s, u"port=%1"_s.arg(mkl::freePort())});
    const QString there = QString(plain.urlOf("postgres")).replace(u"postgresql://"_s, u"postgresql://127.0.0.1"_s);
    const Failure failure =
        failureOf(QString(there).remove(QRegularExpression(u"&host=[^&]*"_s)) + u"&sslmode=require"_s);
    EXPECT_EQ(failure.number, 3151);
    EXPECT_TRUE(failure.description.contains(u"bietet er keine Verschlüsselung an"_s));
}

} // namespace dao
