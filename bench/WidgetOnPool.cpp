#include "bench/WidgetOnPool.h"

#include <QApplication>
#include <QSqlDatabase>
#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

const QString connection = u"widget"_s;

QIcon square(Qt::GlobalColor colour) {
    QPixmap picture(16, 16);
    picture.fill(colour);
    return picture;
}

} // namespace

bool WidgetOnPool::isPossible() {
    return QSqlDatabase::isDriverAvailable(u"QSQLITE"_s);
}

WidgetOnPool::WidgetOnPool(const QString& file)
    : on_(square(Qt::green))
    , off_(square(Qt::gray)) {
    QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, connection);
    database.setDatabaseName(file);
    if (!database.open()) qFatal("the file cannot be opened");
    tree_.setHeaderLabels({u"Art-Nr."_s, u"Artikelname"_s});
    tree_.setUniformRowHeights(true);
    tree_.resize(400, 700);
}

WidgetOnPool::~WidgetOnPool() {
    QSqlDatabase::database(connection).close();
    QSqlDatabase::removeDatabase(connection);
}

void WidgetOnPool::read() {
    QSqlQuery query(QSqlDatabase::database(connection));
    query.setForwardOnly(true);
    if (!query.exec(u"SELECT \"Artikel-Schlüssel\", Artikelname, Aktiv FROM ARTIKEL "
                    "WHERE \"Absender-Schlüssel\" IS NOT NULL ORDER BY \"Artikel-Schlüssel\""_s))
        qFatal("the articles cannot be read");
    QList<QTreeWidgetItem*> items;
    while (query.next()) {
        const int key = query.value(0).toInt();
        auto* const item = new QTreeWidgetItem({u"%1"_s.arg(key, 8, 10, '0'_L1), query.value(1).toString()});
        item->setData(0, Qt::UserRole, key);
        item->setIcon(0, query.value(2).toInt() != 0 ? on_ : off_);
        items.append(item);
    }
    tree_.addTopLevelItems(items);
    tree_.sortItems(0, Qt::AscendingOrder);
    tree_.show();
    QApplication::processEvents();
}

} // namespace bench
