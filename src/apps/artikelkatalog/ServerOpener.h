#pragma once
#include "apps/artikelkatalog/CatalogueSession.h"

#include <QString>
#include <optional>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace dao {
struct ServerAddress;
}

namespace mkl {

/// The way to a catalogue on a server, with the questions to the user: an unencrypted line, a password. A password
/// stands in the platform's key store where the user wants it, in memory, and nowhere else.
class ServerOpener {
public:
    /// The dialogs belong to that window.
    ServerOpener(CatalogueSession& session, QWidget& window)
        : session_(session)
        , window_(window) {}

    /// False if the catalogue is not open, which the user was told unless he gave it up himself.
    bool open(const QString& url);

private:
    struct Password {
        QString text;
        bool isKept = false;   ///< it is what the key store has
        bool remember = false; ///< it is to be kept once it has proved right
    };

    bool mayConnect(const dao::ServerAddress& address) const;
    bool openWithPassword(const dao::ServerAddress& address);
    std::optional<Password> keptPassword();
    std::optional<Password> askedPassword(const dao::ServerAddress& address, bool isWrong) const;
    /// The number of the error, 0 for none; every other error than that of a password is told.
    Long attempt(const QString& password);
    void keep(const Password& password) const;

    CatalogueSession& session_;
    QWidget& window_;
    QString url_;
    QString entry_;             // of the key store
    bool hasStore_ = false;     // a key store answers
    bool isRemembered_ = false; // it has something under the entry
};

} // namespace mkl
