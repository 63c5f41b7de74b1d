#include "browser/KeyAllocation.h"

#include "browser/ArtCatBrowserPrivate.h"
#include "controls/Screen.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

/// The running number behind the highest key, whose last character is the digit.
qint64 runningNumberBehind(const Variant& highestKey) {
    if (highestKey.isNull()) return 1;
    const QString number = highestKey.toText().chopped(1);
    return qint64{Variant(number).toLong()} + 1;
}

} // namespace

Long KeyAllocation::NewID(const QString& Table, const QString& KeyField) {
    // 1.
    screen().setMousePointer(vbHourglass);
    const Long key = hub_.errorFrame.function(
        u"NewID"_s, [&] { return nextKey(Table, KeyField); }, -1);
    // 9.
    if (key != -1) screen().setMousePointer(vbDefault);
    return key;
}

Long KeyAllocation::nextKey(const QString& table, const QString& keyField) const {
    const StringTools& tools = hub_.functionLibrary->StringTools();
    // 2.
    const QString digit = QString::number(hub_.state.Helper->ReplicaInfo()->ReplicaDigit());
    // 3.
    const QString field = tools.Enclose(keyField, u"[]"_s);
    const QString source = tools.Enclose(table, u"[]"_s);
    // 4.
    const QString condition = u"Right("_s + field + u",1) = "_s + digit;
    // 5.
    const QString column = source + u'.' + field;
    const QString statement = u"SELECT Max("_s + column + u") AS [TempSchlüssel] FROM "_s + source + u" HAVING (("_s +
                              condition + u")) ORDER BY Last("_s + column + u");"_s;
    // 6.
    const Ref<dao::Recordset> rows = hub_.state.Backend->OpenRecordset(statement, dao::dbOpenSnapshot);
    const Variant highest = rows->value(u"TempSchlüssel");
    // 7., 8.
    return Variant(QString::number(runningNumberBehind(highest)) + digit).toLong();
}

} // namespace mkl
