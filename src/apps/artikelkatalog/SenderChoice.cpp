#include "apps/artikelkatalog/SenderChoice.h"

#include "apps/artikelkatalog/CatalogueName.h"

#include <QSettings>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

const QString settingsKey = u"Senders"_s;

QString nameOf(const dao::Database& catalogue) {
    return keptName(catalogue.Name());
}

} // namespace

QList<Long> SenderChoice::sendersOf(dao::Database& catalogue) {
    QList<Long> keys;
    const auto rows = catalogue.OpenRecordset(
        u"SELECT [Absender-Schlüssel] FROM ABSENDER WHERE [Absender-Schlüssel]<>0 ORDER BY [Absender-Schlüssel]"_s,
        dao::dbOpenSnapshot);
    for (; !rows->Eof(); rows->MoveNext())
        keys.append(rows->value(0).toLong());
    return keys;
}

Long SenderChoice::senderOf(dao::Database& catalogue) const {
    const QList<Long> senders = sendersOf(catalogue);
    const Long chosen = settings_.value(settingsKey).toMap().value(nameOf(catalogue)).toInt();
    return senders.contains(chosen) ? chosen : senders.value(0);
}

void SenderChoice::choose(dao::Database& catalogue, Long sender) {
    if (!sendersOf(catalogue).contains(sender))
        catalogue.Execute(u"INSERT INTO ABSENDER ([Absender-Schlüssel]) VALUES (%1)"_s.arg(sender), dao::dbFailOnError);
    QVariantMap choices = settings_.value(settingsKey).toMap();
    choices.insert(nameOf(catalogue), sender);
    settings_.setValue(settingsKey, choices);
}

} // namespace mkl
