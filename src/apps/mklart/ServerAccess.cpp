#include "apps/mklart/ServerAccess.h"

#include "apps/mklart/Console.h"
#include "base/RunTimeError.h"
#include "base/Texts.h"
#include "catalogue/VisibleText.h"
#include "dao/ServerAddress.h"

#include <QHash>
#include <QSet>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long wrongPassword = 3031;
constexpr Long passwordNeeded = 3148;
constexpr int attempts = 3;

/// A password is the user's on that server, whatever the database.
QString entryOf(const dao::ServerAddress& address) {
    return u"%1@%2:%3"_s.arg(address.user, address.host, address.port);
}

/// The passwords that were right, in memory alone.
QString& knownPassword(const QString& entry) {
    static QHash<QString, QString> known;
    return known[entry];
}

void warnOfReaders(const dao::ServerAddress& address) {
    static QSet<QString> warned;
    if (!address.isElsewhere || !address.mayBeUnencrypted || warned.contains(address.host)) return;
    warned.insert(address.host);
    const TextId warning = address.refusesEncryption ? TextId::ToolServerPlain : TextId::ToolServerMaybePlain;
    complain(text(warning, {visibleText(address.host)}));
}

/// Whether the server lets us in; false where it wants another password.
bool isLetIn(const QString& name, const dao::OpenOptions& options) {
    try {
        dao::DBEngine::CreateWorkspace()->OpenDatabase(name, options);
    } catch (const RunTimeError& error) {
        if (error.number() == wrongPassword || error.number() == passwordNeeded) return false;
        throw;
    }
    return true;
}

[[noreturn]] void refuseWithoutPassword(const QString& name, const dao::ServerAddress& address,
                                        const dao::OpenOptions& options) {
    // A wrong one from the environment is told as such.
    try {
        dao::DBEngine::CreateWorkspace()->OpenDatabase(name, options);
    } catch (const RunTimeError& error) {
        if (error.number() != passwordNeeded) throw;
    }
    throw RunTimeError(passwordNeeded, text(TextId::ToolPasswordNoTerminal, {visibleText(address.user)}));
}

} // namespace

dao::OpenOptions accessTo(const QString& name, const dao::OpenOptions& options, const PasswordQuestion& question) {
    if (!dao::DBEngine::isServer(name)) return options;
    const dao::ServerAddress address = dao::serverAddress(name);
    warnOfReaders(address);
    dao::OpenOptions access = options;
    access.password = knownPassword(entryOf(address));
    if (isLetIn(name, access)) return access;
    if (!question) refuseWithoutPassword(name, address, access);
    const QString prompt = text(TextId::ToolPasswordPrompt, {visibleText(address.user), visibleText(address.shown)});
    for (int attempt = 1; attempt <= attempts; ++attempt) {
        const std::optional<QString> password = question(prompt);
        if (!password || password->isEmpty()) throwError(passwordNeeded, {address.user});
        access.password = *password;
        if (!isLetIn(name, access)) continue;
        knownPassword(entryOf(address)) = *password;
        return access;
    }
    throwError(wrongPassword, {address.user});
}

} // namespace mkl
