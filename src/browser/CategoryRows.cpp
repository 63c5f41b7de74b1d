#include "browser/CategoryRows.h"

#include <set>

namespace mkl {

using namespace Qt::StringLiterals;

const QString categoryTable = u"ARTIKEL/KATEGORIEN"_s;

Ref<dao::Recordset> openCategories(const Ref<dao::Database>& backend) {
    const Ref<dao::Recordset> table = backend->OpenRecordset(categoryTable, dao::dbOpenTable);
    table->setIndex(u"PrimaryKey"_s);
    return table;
}

bool categoryExists(const Ref<dao::Database>& backend, Long category) {
    const Ref<dao::Recordset> table = openCategories(backend);
    table->Seek(u"=", category);
    return !table->NoMatch();
}

// Stored parents can form a ring.
bool categoryHangsBelow(const Ref<dao::Database>& backend, Long category, Long ancestor) {
    const Ref<dao::Recordset> table = openCategories(backend);
    std::set<Long> seen;
    while (seen.insert(category).second) {
        table->Seek(u"=", category);
        if (table->NoMatch()) return false;
        const Variant parent = table->value(u"Parent");
        if (parent.isNull()) return false;
        category = parent.toLong();
        if (category == ancestor) return true;
    }
    return false;
}

} // namespace mkl
