#include "apps/artikelkatalog/ServerOpener.h"

#include "apps/artikelkatalog/CatalogueName.h"
#include "apps/artikelkatalog/Failure.h"
#include "apps/artikelkatalog/KeyStore.h"
#include "apps/artikelkatalog/PasswordDialog.h"
#include "base/Texts.h"
#include "controls/Asker.h"
#include "controls/FormRunner.h"
#include "dao/ServerAddress.h"

#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

constexpr Long wrongPassword = 3031;
constexpr Long passwordNeeded = 3148;

bool isOfPassword(Long error) {
    return error == passwordNeeded || error == wrongPassword;
}

// A password is the user's on that server, whatever the database.
QString entryOf(const dao::ServerAddress& address) {
    return u"%1@%2:%3"_s.arg(address.user, address.host, address.port);
}

} // namespace

bool ServerOpener::open(const QString& url) {
    url_ = url;
    dao::ServerAddress address;
    const auto tell = [&] { showFailure(text(TextId::ProgramNotOpened, {shownName(url)})); };
    if (!succeeds([&] { address = dao::serverAddress(url); }, tell)) return false;
    entry_ = entryOf(address);
    return mayConnect(address) && openWithPassword(address);
}

bool ServerOpener::mayConnect(const dao::ServerAddress& address) const {
    if (!address.isElsewhere || !address.mayBeUnencrypted) return true;
    const TextId question = address.refusesEncryption ? TextId::ProgramServerPlain : TextId::ProgramServerMaybePlain;
    return asker().ask({.text = text(question, {address.host}), .flags = vbYesNo + vbExclamation + vbDefaultButton2}) ==
           vbYes;
}

// The key store is asked only where the server asks: it may want the user to unlock it.
bool ServerOpener::openWithPassword(const dao::ServerAddress& address) {
    Long error = attempt({});
    std::optional<Password> password = isOfPassword(error) ? keptPassword() : std::nullopt;
    if (password) error = attempt(password->text);
    while (isOfPassword(error)) {
        password = askedPassword(address, error == wrongPassword);
        if (!password) return false;
        error = attempt(password->text);
    }
    if (error != 0) return false;
    if (password) keep(*password);
    return true;
}

std::optional<ServerOpener::Password> ServerOpener::keptPassword() {
    const std::optional<QString> found = keyStore().find(entry_);
    hasStore_ = found.has_value();
    isRemembered_ = found && !found->isEmpty();
    if (!isRemembered_) return {};
    return Password{.text = *found, .isKept = true};
}

std::optional<ServerOpener::Password> ServerOpener::askedPassword(const dao::ServerAddress& address,
                                                                  bool isWrong) const {
    PasswordDialog dialog({.catalogue = shownName(url_),
                           .user = address.user,
                           .isWrong = isWrong,
                           .canRemember = hasStore_,
                           .isRemembered = isRemembered_},
                          &window_);
    if (formRunner().run(dialog) != QDialog::Accepted) return {};
    return Password{.text = dialog.Password(), .remember = dialog.Remember()};
}

Long ServerOpener::attempt(const QString& password) {
    Long number = 0;
    const auto tell = [&] {
        number = currentError().Number();
        QGuiApplication::restoreOverrideCursor();
        if (!isOfPassword(number)) showFailure(text(TextId::ProgramNotOpened, {shownName(url_)}));
    };
    QGuiApplication::setOverrideCursor(Qt::WaitCursor); // a server that is not there takes its time
    const auto connect = [&] {
        session_.open(url_, {.password = password});
        QGuiApplication::restoreOverrideCursor();
    };
    succeeds(connect, tell);
    return number;
}

void ServerOpener::keep(const Password& password) const {
    if (password.isKept || !hasStore_) return;
    if (password.remember) {
        if (!keyStore().keep(entry_, password.text))
            asker().ask({.text = text(TextId::ProgramPasswordNotStored), .flags = vbExclamation});
    } else if (isRemembered_) {
        keyStore().forget(entry_);
    }
}

} // namespace mkl
