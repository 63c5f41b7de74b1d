#include "support/CatalogueFixture.h"

#include "catalogue/CatalogueSchema.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <stdexcept>

namespace mkl {

using namespace Qt::StringLiterals;

struct CatalogueFixture::DrawnCategory {
    qsizetype indent = 0;
    CategoryRow row;
    QList<std::pair<Long, QString>> articles;
};

namespace {

/// "1 A" in two: the number and what stands behind it.
std::pair<Long, QString> numbered(const QString& text) {
    static const QRegularExpression form(u"^(-?\\d+) (.*)$"_s);
    const auto match = form.match(text.trimmed());
    if (!match.hasMatch()) throw std::invalid_argument("picture: " + text.toStdString());
    return {match.captured(1).toInt(), match.captured(2)};
}

void mark(CategoryRow& row, const QString& marker) {
    const QStringList words = marker.trimmed().split(u' ');
    if (words == QStringList{u"inaktiv"_s})
        row.active = false;
    else if (words.size() == 2 && words[0] == u"Absender")
        row.sender = words[1].toInt();
    else if (words.size() == 2 && words[0] == u"Position")
        row.order = words[1].toInt();
    else
        throw std::invalid_argument("picture: " + marker.toStdString());
}

const QString categoryTable = u"ARTIKEL/KATEGORIEN"_s;
const QStringList categoryColumns = {u"Kategorie-Schlüssel"_s, u"Kategoriename"_s, u"Parent"_s, u"Order"_s, u"Aktiv"_s,
                                     u"Absender-Schlüssel"_s};

void append(dao::Database& database, const QString& table, const QStringList& columns, const QList<Variant>& values) {
    database.appendRows(table, columns).append(values);
}

} // namespace

CatalogueFixture::CatalogueFixture(const QString& picture)
    : workspace_(dao::DBEngine::CreateWorkspace())
    , database_(testsOnServer() ? workspace_->OpenDatabase(file_.path()) : workspace_->CreateDatabase(file_.path())) {
    CatalogueSchema::create(*database_);
    draw(picture);
}

void CatalogueFixture::addCategory(const CategoryRow& row) const {
    append(*database_, categoryTable, categoryColumns,
           {row.key, row.name, row.parent, row.order, row.active, row.sender});
}

void CatalogueFixture::addArticle(Long key, const QString& name) const {
    append(*database_, u"ARTIKEL"_s, {u"Artikel-Schlüssel"_s, u"Artikelname"_s, u"Aktiv"_s, u"Absender-Schlüssel"_s},
           {key, name, true, 1});
}

void CatalogueFixture::addSender(Long key) const {
    append(*database_, u"ABSENDER"_s, {u"Absender-Schlüssel"_s}, {key});
}

void CatalogueFixture::assign(Long article, Long category, Long position) const {
    append(*database_, u"ARTKAT"_s, {u"Artikel-Schlüssel"_s, u"Kategorie-Schlüssel"_s, u"Order"_s},
           {article, category, position});
}

void CatalogueFixture::allowBadKeys() const {
    run(u"DROP TABLE \"ARTIKEL/KATEGORIEN\";"
        "CREATE TABLE \"ARTIKEL/KATEGORIEN\" (\"Kategorie-Schlüssel\" INTEGER, \"Absender-Schlüssel\" INTEGER, "
        "\"Kategoriename\" TEXT, \"Bezeichnung\" TEXT, \"LetzteÄnderung\" DATETIME, \"Parent\" INTEGER, "
        "\"Order\" INTEGER, \"Aktiv\" YESNO);"_s);
}

void CatalogueFixture::addChain(Long length) const {
    workspace_->BeginTrans();
    dao::RowWriter rows = database_->appendRows(categoryTable, categoryColumns);
    for (Long key = 1; key <= length; ++key) {
        const Variant parent = key == 1 ? Variant() : Variant(key - 1);
        rows.append(QList<Variant>{key, u"Stufe"_s, parent, 1, true, 1});
    }
    workspace_->CommitTrans();
}

CatalogueFixture::DrawnCategory CatalogueFixture::drawnCategory(const QString& line) {
    static const QRegularExpression form(u"^( *)(-?\\d+ [^:{]*?) *(?:\\{([^}]*)\\})? *(?::(.*))?$"_s);
    const auto match = form.match(line);
    if (!match.hasMatch()) throw std::invalid_argument("picture: " + line.toStdString());
    DrawnCategory category;
    category.indent = match.capturedLength(1);
    const auto [key, name] = numbered(match.captured(2));
    category.row.order = {}; // counted unless marked
    category.row.key = key;
    category.row.name = name;
    for (const QString& marker : match.captured(3).split(u',', Qt::SkipEmptyParts))
        mark(category.row, marker);
    for (const QString& article : match.captured(4).split(u',', Qt::SkipEmptyParts))
        category.articles.append(numbered(article));
    return category;
}

void CatalogueFixture::draw(const QString& picture) const {
    QList<DrawnCategory> path;   // from the root to the line at hand
    QHash<Long, Long> positions; // counted by parent, 0 for the roots
    QSet<Long> articles;
    for (const QString& line : picture.split(u'\n')) {
        if (line.trimmed().isEmpty()) continue;
        DrawnCategory category = drawnCategory(line);
        while (!path.isEmpty() && path.last().indent >= category.indent)
            path.removeLast();
        if (!path.isEmpty()) category.row.parent = path.last().row.key;
        Long& position = positions[path.isEmpty() ? 0 : category.row.parent.toLong()];
        ++position;
        if (category.row.order.isNull()) category.row.order = position;
        addCategory(category.row);
        addArticlesOf(category, articles);
        path.append(category);
    }
}

void CatalogueFixture::addArticlesOf(const DrawnCategory& category, QSet<Long>& known) const {
    Long position = 0;
    for (const auto& [key, name] : category.articles) {
        if (!known.contains(key)) addArticle(key, name);
        known.insert(key);
        assign(key, category.row.key.toLong(), ++position);
    }
}

} // namespace mkl
