#include "dao/postgres/PostgresServer.h"

#include "dao/postgres/PostgresConnection.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

// What messages may show of the address.
QString withoutPassword(const QString& url) {
    QUrl shown(url);
    shown.setPassword(QString());
    return shown.isValid() ? shown.toString(QUrl::RemovePassword | QUrl::RemoveQuery) : u"postgresql://"_s;
}

} // namespace

bool isPostgresUrl(const QString& name) {
    return name.startsWith(u"postgresql://"_s, Qt::CaseInsensitive) ||
           name.startsWith(u"postgres://"_s, Qt::CaseInsensitive);
}

std::shared_ptr<Connection> openPostgres(const QString& url, const OpenOptions& options) {
    auto session = std::make_shared<PostgresSession>(url.toUtf8(), withoutPassword(url));
    return std::make_shared<PostgresConnection>(std::move(session), options.readOnly, options.busyTimeoutMilliseconds);
}

} // namespace dao
