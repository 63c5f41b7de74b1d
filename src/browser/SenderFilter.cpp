#include "browser/SenderFilter.h"

#include <optional>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

/// The text behind "IN(" up to the first "," or, without one, ")".
QString firstListItem(QString filter) {
    filter.remove(u' ');
    const qsizetype list = filter.indexOf("IN("_L1, 0, Qt::CaseInsensitive);
    if (list < 0) return {};
    filter.remove(0, list + 3);
    qsizetype end = filter.indexOf(u',');
    if (end < 0) end = filter.indexOf(u')');
    return filter.first(qMax<qsizetype>(0, end));
}

std::optional<Long> senderKey(const QString& text) {
    double number = 0;
    if (!parseNumber(text, number)) return {};
    return roundToLong(number);
}

bool senderExists(const Ref<dao::Database>& backend, Long key) {
    const Ref<dao::Recordset> senders = backend->OpenRecordset(u"ABSENDER"_s, dao::dbOpenTable);
    senders->setIndex(u"Absender-Schlüssel"_s);
    senders->Seek(u"=", key);
    const bool found = !senders->NoMatch();
    senders->Close();
    return found;
}

} // namespace

bool admitsEverySender(QStringView workgroupFilter) {
    return workgroupFilter.compare(noWorkgroupFilter, Qt::CaseInsensitive) == 0;
}

Long SenderFromWorkgroupFilter(const QString& workgroupFilter, const Ref<dao::Database>& backend) {
    if (admitsEverySender(workgroupFilter)) return 0;
    const std::optional<Long> key = senderKey(firstListItem(workgroupFilter));
    return key && senderExists(backend, *key) ? *key : 0;
}

} // namespace mkl
