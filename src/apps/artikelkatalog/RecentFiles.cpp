#include "apps/artikelkatalog/RecentFiles.h"

#include "apps/artikelkatalog/CatalogueName.h"

#include <QSettings>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {
const QString settingsKey = u"RecentFiles"_s;
}

QStringList RecentFiles::files() const {
    return settings_.value(settingsKey).toStringList();
}

void RecentFiles::add(const QString& file) {
    store(QStringList{keptName(file)} + without(file));
}

void RecentFiles::remove(const QString& file) {
    store(without(file));
}

QStringList RecentFiles::without(const QString& file) const {
    QStringList rest = files();
    rest.removeAll(keptName(file));
    return rest;
}

void RecentFiles::store(const QStringList& files) {
    settings_.setValue(settingsKey, files.mid(0, MaximalCount));
}

} // namespace mkl
