#include "apps/artikelkatalog/ServerUrl.h"

#include "core/ErrorFrame.h"
#include "dao/ServerAddress.h"

#include <QUrl>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

QString encoded(const QString& part) {
    return QString::fromLatin1(QUrl::toPercentEncoding(part));
}

// Colons are those of an address of the longer kind.
QString hostInUrl(const QString& host) {
    return host.contains(u':') ? u'[' + host + u']' : encoded(host);
}

QString othersIn(const QUrlQuery& query) {
    const QStringList shown{u"host"_s, u"port"_s, u"dbname"_s, u"user"_s, u"sslmode"_s};
    QStringList others;
    for (const auto& [name, value] : query.queryItems(QUrl::FullyEncoded))
        if (!shown.contains(name)) others += name + u'=' + value;
    return others.join(u'&');
}

} // namespace

ServerUrl ServerUrl::of(const QString& url) {
    const QUrl parsed(url);
    const QUrlQuery query(parsed);
    const auto part = [&](const QString& parameter, const QString& given) {
        return given.isEmpty() ? query.queryItemValue(parameter, QUrl::FullyDecoded) : given;
    };
    const QString path = parsed.path(QUrl::FullyDecoded).mid(1);
    return {.host = part(u"host"_s, parsed.host(QUrl::FullyDecoded)),
            .port = part(u"port"_s, parsed.port() < 0 ? QString() : QString::number(parsed.port())),
            .database = part(u"dbname"_s, path),
            .user = part(u"user"_s, parsed.userName(QUrl::FullyDecoded)),
            .encryption = query.queryItemValue(u"sslmode"_s),
            .others = othersIn(query)};
}

QString ServerUrl::toString() const {
    const bool isSocket = host.startsWith(u'/');
    QString url = u"postgresql://"_s;
    if (!user.isEmpty()) url += encoded(user) + u'@';
    if (!isSocket) url += hostInUrl(host);
    if (!isSocket && !port.isEmpty()) url += u':' + port;
    url += u'/' + encoded(database);
    QStringList parameters;
    if (isSocket) parameters += u"host="_s + encoded(host);
    if (isSocket && !port.isEmpty()) parameters += u"port="_s + port;
    if (!encryption.isEmpty()) parameters += u"sslmode="_s + encryption;
    if (!others.isEmpty()) parameters += others;
    return parameters.isEmpty() ? url : url + u'?' + parameters.join(u'&');
}

bool ServerUrl::isElsewhere() const {
    bool elsewhere = true;
    ErrorFrame::quietly([&] { elsewhere = dao::serverAddress(toString()).isElsewhere; });
    return elsewhere;
}

QString ServerUrl::usualEncryption() const {
    return isElsewhere() ? u"verify-full"_s : u"prefer"_s;
}

} // namespace mkl
