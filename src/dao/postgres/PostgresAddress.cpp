#include "base/RunTimeError.h"
#include "base/Texts.h"
#include "dao/Errors.h"
#include "dao/ServerAddress.h"

#include <QRegularExpression>
#include <QUrl>
#include <QUrlQuery>
#include <algorithm>
#include <libpq-fe.h>
#include <memory>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

using Options = std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)>;

const PQconninfoOption* find(const Options& options, const char* keyword) {
    for (const PQconninfoOption* option = options.get(); option && option->keyword; ++option)
        if (qstrcmp(option->keyword, keyword) == 0) return option;
    return nullptr;
}

QString valueOf(const Options& options, const char* keyword) {
    const PQconninfoOption* const option = find(options, keyword);
    return option && option->val ? QString::fromUtf8(option->val) : QString();
}

// Before anything else looks at the text: what may be a secret is refused, well-formed or not.
bool hasPassword(const QString& address) {
    static const QRegularExpression inUser(u"//[^?]*:[^?]*@"_s);
    const QString decoded = QUrl::fromPercentEncoding(address.toUtf8());
    return address.contains(inUser) || decoded.contains(u"password="_s, Qt::CaseInsensitive);
}

QString unknownParameter(const QString& address, const Options& known) {
    for (const auto& [name, value] : QUrlQuery(QUrl(address)).queryItems())
        if (!find(known, name.toUtf8().constData()) && name != u"ssl") return name;
    return {};
}

bool isThisMachine(const QString& host) {
    if (host.isEmpty() || host.startsWith(u'/') || host.startsWith(u'@')) return true;
    static const QRegularExpression local(u"^(localhost|127(\\.\\d{1,3}){3}|::1)$"_s,
                                          QRegularExpression::CaseInsensitiveOption);
    return local.match(host).hasMatch();
}

bool isPort(const QString& text) {
    bool isNumber = false;
    const int port = text.toInt(&isNumber);
    return text.isEmpty() || (isNumber && port > 0 && port < 65536);
}

QString hostsOf(const Options& options) {
    const QString addresses = valueOf(options, "hostaddr");
    return addresses.isEmpty() ? valueOf(options, "host") : addresses;
}

} // namespace

bool isServerAddress(const QString& name) {
    return name.startsWith(u"postgresql://"_s, Qt::CaseInsensitive) ||
           name.startsWith(u"postgres://"_s, Qt::CaseInsensitive);
}

ServerAddress serverAddress(const QString& address) {
    if (hasPassword(address)) mkl::throwError(err::PasswordInAddress);
    Options defaults(PQconndefaults(), &PQconninfoFree);
    const Options given(PQconninfoParse(address.toUtf8().constData(), nullptr), &PQconninfoFree);
    if (!given || address.contains(QChar::Null)) {
        const QString unknown = unknownParameter(address, defaults);
        if (unknown.isEmpty()) mkl::throwError(err::InvalidName, {u"postgresql://…"_s});
        throw mkl::RunTimeError(err::InvalidName, mkl::text(mkl::TextId::ServerUnknownParameter, {unknown}));
    }
    const auto value = [&](const char* keyword) {
        const QString text = valueOf(given, keyword);
        return text.isEmpty() ? valueOf(defaults, keyword) : text;
    };
    ServerAddress result;
    result.host = hostsOf(given).isEmpty() ? hostsOf(defaults) : hostsOf(given);
    result.port = value("port");
    if (!std::ranges::all_of(result.port.split(u','), &isPort))
        mkl::throwError(err::InvalidName, {u"postgresql://…"_s});
    result.user = value("user");
    result.database = value("dbname").isEmpty() ? result.user : value("dbname");
    result.shown = u"postgresql://"_s + (valueOf(given, "user").isEmpty() ? QString() : result.user + u'@') +
                   (result.host.startsWith(u'/') ? QString() : result.host) + u'/' + result.database;
    const QStringList hosts = result.host.split(u',');
    result.isElsewhere = !std::ranges::all_of(hosts, &isThisMachine);
    const QString mode = value("sslmode");
    result.mayBeUnencrypted = mode != u"require" && !mode.startsWith(u"verify-");
    result.refusesEncryption = mode == u"disable";
    return result;
}

} // namespace dao
