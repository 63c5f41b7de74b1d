#include "browser/CategoryCopy.h"

#include "base/Clock.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/CategoryRows.h"

#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

// Columns of [ARTIKEL/KATEGORIEN].
const QString idColumn = u"ID"_s;
const QString keyColumn = u"Kategorie-Schlüssel"_s;
const QString changedColumn = u"LetzteÄnderung"_s;
const QString activeColumn = u"Aktiv"_s;
const QString parentColumn = u"Parent"_s;
const QString orderColumn = u"Order"_s;

const QString copyStatement =
    u"INSERT INTO ARTKAT ([Artikel-Schlüssel], [Kategorie-Schlüssel], [Order], LetzteÄnderung) SELECT "
    "[Artikel-Schlüssel], #CATIDNEW# AS CatID, Order, Now() AS Edit FROM ARTKAT WHERE "
    "[Kategorie-Schlüssel]=#CATIDORG#;"_s;

bool isOneOf(const QString& name, std::initializer_list<QString> names) {
    return std::ranges::any_of(names,
                               [&name](const QString& each) { return name.compare(each, Qt::CaseInsensitive) == 0; });
}

} // namespace

CategoryCopy::CategoryCopy(ArtCatBrowserPrivate& hub)
    : hub_(hub) {}

Long CategoryCopy::copy(Long category, Long parent, Long order) {
    // 3.
    source_ = hub_.state.Backend->OpenRecordset(categoryTable, dao::dbOpenTable);
    source_->setIndex(keyColumn);
    target_ = hub_.state.Backend->OpenRecordset(categoryTable, dao::dbOpenTable);
    for (Long column = 0; column < target_->FieldCount(); ++column) {
        const QString name = target_->Fields(column).Name();
        if (!isOneOf(name, {idColumn, keyColumn, changedColumn, activeColumn, parentColumn, orderColumn}))
            kept_.append(name);
    }
    // 4.
    const Long newKey = hub_.keyAllocation->NewID(categoryTable, keyColumn);
    if (hub_.state.closed) return 0;
    suffix_ = QString::number(hub_.state.Helper->ReplicaInfo()->ReplicaDigit());
    counter_ = Variant(QString::number(newKey).chopped(suffix_.size())).toLong();
    // 5.
    copyRow(category, newKey, parent, order);
    // 6.
    TVDragCategory_CopySub(category, newKey);
    return newKey;
}

// The stack of the levels stands on the heap: a chain of categories may be longer than a call stack. Each level fails
// for itself.
void CategoryCopy::TVDragCategory_CopySub(Long SourceID, Long NewParentID) {
    const QString procName = u"TVDragCategory_CopySub"_s;
    std::vector<Level> levels;
    const auto enter = [&](const Copied& category) {
        hub_.errorFrame.function(
            procName, [&] { return descend(levels, category.source, category.copy), true; }, false);
    };
    enter({SourceID, NewParentID});
    while (!levels.empty() && !hub_.state.closed) {
        const Copied child = hub_.errorFrame.function(procName, [&] { return copyNext(levels.back()); }, {});
        if (child.source == 0)
            levels.pop_back();
        else
            enter(child);
    }
}

void CategoryCopy::descend(std::vector<Level>& levels, Long source, Long copy) const {
    const QString statement = hub_.functionLibrary->SqlTools().BuildSelect(
        categoryTable, u"[Parent]="_s + QString::number(source), orderColumn);
    levels.push_back({hub_.state.Backend->OpenRecordset(statement, dao::dbOpenSnapshot), copy});
}

CategoryCopy::Copied CategoryCopy::copyNext(Level& level) {
    if (std::exchange(level.begun, true)) level.children->MoveNext();
    if (level.children->Eof()) return {};
    const Copied child{level.children->value(keyColumn).toLong(), nextKey()};
    copyRow(child.source, child.copy, level.copy, 0);
    return child;
}

Long CategoryCopy::nextKey() {
    ++counter_;
    return Variant(QString::number(counter_) + suffix_).toLong();
}

void CategoryCopy::copyRow(Long source, Long newKey, Long parent, Long order) {
    source_->Seek(u"=", source);
    target_->AddNew();
    for (const QString& name : kept_)
        target_->setValue(name, source_->value(name));
    target_->setValue(keyColumn, newKey);
    target_->setValue(changedColumn, Variant::date(clock().now()));
    target_->setValue(activeColumn, true);
    target_->setValue(parentColumn, parent);
    target_->setValue(orderColumn, order > 0 ? Variant(order) : source_->value(orderColumn));
    target_->Update();
    copyAssignments(source, newKey);
}

void CategoryCopy::copyAssignments(Long source, Long newKey) const {
    QString statement = copyStatement;
    statement.replace("#CATIDORG#"_L1, QString::number(source));
    statement.replace("#CATIDNEW#"_L1, QString::number(newKey));
    hub_.state.Backend->Execute(statement, dao::dbFailOnError);
}

} // namespace mkl
