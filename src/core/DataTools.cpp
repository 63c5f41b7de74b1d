#include "core/DataTools.h"

#include "core/SqlTools.h"
#include "core/StringTools.h"

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

QString bracketed(const QString& name) {
    return StringTools().Enclose(name, u"[]"_s);
}

} // namespace

Long DataTools::CountRows(const Ref<dao::Database>& Backend, const QString& Table, const QString& Criteria) const {
    const QString countAll = u"SELECT Count(*) AS NumberOfRows FROM "_s + bracketed(Table) + u';';
    const auto rows = Backend->OpenRecordset(SqlTools().InsertCriteria(countAll, Criteria), dao::dbOpenForwardOnly);
    return rows->value(u"NumberOfRows").toLong();
}

bool DataTools::LookupField(const Ref<dao::Database>& Backend, const QString& Table, const QString& KeyColumn, Long Key,
                            Variant& Answer, const QString& WantedColumn) const {
    const QString criterion = bracketed(KeyColumn) + u'=' + QString::number(Key);
    const auto rows = Backend->OpenRecordset(SqlTools().BuildSelect(Table, criterion, {}), dao::dbOpenForwardOnly);
    if (rows->Eof()) return false;
    Answer = rows->value(WantedColumn);
    return true;
}

} // namespace mkl
