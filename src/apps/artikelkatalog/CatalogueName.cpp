#include "apps/artikelkatalog/CatalogueName.h"

#include "base/Texts.h"
#include "core/ErrorFrame.h"
#include "dao/ServerAddress.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

// A socket's folder says nothing to anybody.
QString serverName(const dao::ServerAddress& address) {
    const bool isSocket = address.host.isEmpty() || address.host.startsWith(u'/');
    return isSocket ? text(TextId::ProgramServerThisMachine) : address.host;
}

} // namespace

QString keptName(const QString& name) {
    return dao::isServerAddress(name) ? name : QFileInfo(name).absoluteFilePath();
}

QString shownName(const QString& name) {
    if (!dao::isServerAddress(name)) return QFileInfo(name).fileName();
    QString shown = u"postgresql://"_s; // of an address that is none nothing is shown: it may hold a password
    ErrorFrame::quietly([&] {
        const dao::ServerAddress address = dao::serverAddress(name);
        shown = text(TextId::ProgramServerCatalogue, {address.database, serverName(address)});
    });
    return shown;
}

} // namespace mkl
