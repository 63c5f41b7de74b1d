// Passwords and warnings of the tool.
#include "EmptyDatabase.h"
#include "Tool.h"
#include "apps/mklart/ServerAccess.h"
#include "base/RunTimeError.h"
#include "support/PasswordDemanded.h"
#include "support/Printing.h"

#include <QProcess>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <unistd.h>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

/// A user whom the server asks for a password.
class ServerAccess : public testing::Test {
protected:
    ServerAccess() {
        database.native("CREATE ROLE " + user.toLatin1() + " LOGIN SUPERUSER PASSWORD 'Geheim-1'");
        demanded.emplace(database.url(), user.toLatin1());
    }
    ~ServerAccess() override {
        demanded.reset();
        database.native("DROP OWNED BY " + user.toLatin1() + "; DROP ROLE " + user.toLatin1());
    }

    /// Answers one after the other; nothing where there are no more.
    PasswordQuestion answering(const QStringList& answers) {
        prompts.clear();
        return [this, answers](const QString& prompt) -> std::optional<QString> {
            prompts.append(prompt);
            if (prompts.size() > answers.size()) return {};
            return answers[prompts.size() - 1];
        };
    }
    Long errorOf(const QStringList& answers) {
        try {
            accessTo(url, {}, answering(answers));
        } catch (const RunTimeError& error) {
            EXPECT_FALSE(error.description().contains(u"Geheim"));
            return error.number();
        }
        return 0;
    }

    const EmptyDatabase database;
    // Of each test its own: what was right once is not asked again.
    const QString user = u"anna%1"_s.arg(testing::UnitTest::GetInstance()->current_test_info()->line());
    const QString url = database.urlFor(user);
    std::optional<PasswordDemanded> demanded;
    QStringList prompts;
    Tool tool;
};

/// The terminal of somebody who types.
class Terminal {
public:
    Terminal()
        : end_(posix_openpt(O_RDWR | O_NOCTTY)) {
        EXPECT_TRUE(grantpt(end_) == 0 && unlockpt(end_) == 0);
        name_ = QString::fromLatin1(ptsname(end_));
        keptOpen_ = open(name_.toLatin1().constData(), O_RDWR | O_NOCTTY);
    }
    ~Terminal() {
        close(keptOpen_);
        close(end_);
    }
    Q_DISABLE_COPY_MOVE(Terminal)

    const QString& name() const { return name_; }
    void type(const QByteArray& text) const { EXPECT_EQ(write(end_, text.constData(), text.size()), text.size()); }
    /// What the terminal shows up to that text, or all that it shows within some seconds.
    QByteArray shownUpTo(const QByteArray& last) const {
        QByteArray all;
        for (pollfd waiting{end_, POLLIN, 0}; !all.contains(last) && poll(&waiting, 1, 10'000) > 0;) {
            QByteArray text(1000, '\0');
            text.truncate(std::max<qsizetype>(0, read(end_, text.data(), text.size())));
            all += text;
        }
        return all;
    }

private:
    int end_;
    int keptOpen_ = -1;
    QString name_;
};

} // namespace

TEST_F(ServerAccess, asksOnceForAllDatabasesOfAUser) {
    EXPECT_EQ(accessTo(url, {}, answering({u"Geheim-1"_s})).password, u"Geheim-1"_s);
    ASSERT_EQ(prompts.size(), 1);
    EXPECT_TRUE(prompts[0].startsWith(u"Kennwort des Benutzers '%1' für postgresql://"_s.arg(user)));
    EXPECT_EQ(accessTo(url, {.readOnly = true}, answering({})).password, u"Geheim-1"_s);
    EXPECT_TRUE(prompts.isEmpty());
}

TEST_F(ServerAccess, asksAgainAfterAWrongOneButNotForEver) {
    EXPECT_EQ(errorOf({u"Geheim-2"_s, u"Geheim-3"_s, u"Geheim-4"_s, u"Geheim-1"_s}), 3031);
    EXPECT_EQ(prompts.size(), 3);
    EXPECT_EQ(errorOf({u"Geheim-2"_s, u"Geheim-1"_s}), 0);
}

TEST_F(ServerAccess, whoGivesNoneIsNotLetIn) {
    EXPECT_EQ(errorOf({}), 3148);
    EXPECT_EQ(errorOf({QString()}), 3148);
    EXPECT_EQ(prompts.size(), 1);
}

TEST_F(ServerAccess, asksNobodyWhereNoneIsNeeded) {
    EXPECT_EQ(accessTo(database.url(), {}, answering({})).password, QString());
    EXPECT_EQ(accessTo(u"/keine/Datei"_s, {.readOnly = true}, answering({})).readOnly, true);
    EXPECT_TRUE(prompts.isEmpty());
}

TEST_F(ServerAccess, withoutATerminalItSaysWhereAPasswordBelongs) {
    for (const QStringList& arguments :
         {QStringList{u"new"_s, url}, {u"demo"_s, url}, {u"check"_s, url}, {u"sql"_s, url, u"SELECT 1"_s}}) {
        const ToolResult result = tool.run(arguments, "Geheim-1\n");
        EXPECT_EQ(result.status, 1);
        EXPECT_TRUE(result.errors.contains(u"PGPASSWORD") && result.errors.contains(u"~/.pgpass"))
            << result.errors.toStdString();
        EXPECT_TRUE(result.errors.contains(user));
    }
}

TEST_F(ServerAccess, takesThePasswordOfTheEnvironmentForEveryCommand) {
    tool.setVariable(u"PGPASSWORD"_s, u"Geheim-1"_s);
    EXPECT_EQ(tool.run({u"demo"_s, url, u"--articles=3"_s}).status, 0);
    EXPECT_EQ(tool.run({u"copy"_s, url, u"a.sqlite"_s}).status, 0);
    tool.setVariable(u"PGPASSWORD"_s, u"Geheim-2"_s);
    const ToolResult wrong = tool.run({u"check"_s, url});
    EXPECT_EQ(wrong.status, 1);
    EXPECT_TRUE(wrong.errors.contains(u"ist falsch")) << wrong.errors.toStdString();
    EXPECT_FALSE(wrong.errors.contains(u"Geheim"));
}

TEST_F(ServerAccess, theTerminalDoesNotShowWhatIsTyped) {
    const Terminal terminal;
    QProcess process;
    process.setStandardInputFile(terminal.name());
    process.start(QStringLiteral(MKL_BIN_DIR "/mklart"), {u"new"_s, url, u"--language=de"_s});
    QByteArray errors;
    process.setReadChannel(QProcess::StandardError);
    while (!errors.contains(": ") && process.waitForReadyRead(30'000))
        errors += process.readAllStandardError();
    terminal.type("Geheim-1\n");
    EXPECT_TRUE(process.waitForFinished(60'000));
    errors += process.readAllStandardError();
    EXPECT_EQ(process.exitCode(), 0) << errors.constData();
    EXPECT_TRUE(errors.startsWith("Kennwort des Benutzers")) << errors.constData();
    terminal.type("sichtbar\n");
    const QByteArray shown = terminal.shownUpTo("sichtbar");
    EXPECT_TRUE(shown.contains("sichtbar"));
    EXPECT_FALSE(shown.contains("Geheim")) << shown.constData();
}

TEST(ServerWarning, beforeAConnectionToAnotherMachineThatMayBeUnencrypted) {
    Tool tool;
    const auto errors = [&](const QString& address) { return tool.run({u"check"_s, address}).errors; };
    const QString elsewhere = u"postgresql://anna@127.0.0.1.invalid:1/katalog"_s;
    EXPECT_TRUE(errors(elsewhere).startsWith(u"Warnung: Die Verbindung zu '127.0.0.1.invalid' bleibt unverschlüsselt"));
    EXPECT_TRUE(errors(elsewhere + u"?sslmode=disable"_s).contains(u"wird nicht verschlüsselt"));
    EXPECT_FALSE(errors(elsewhere + u"?sslmode=require"_s).contains(u"Warnung"));
    EXPECT_FALSE(errors(u"postgresql://anna@127.0.0.1:1/katalog"_s).contains(u"Warnung"));
    tool.setVariable(u"PGSSLMODE"_s, u"disable"_s);
    EXPECT_TRUE(errors(elsewhere).contains(u"wird nicht verschlüsselt"));
    EXPECT_FALSE(errors(elsewhere + u"?sslmode=require"_s).contains(u"Warnung"));
}
