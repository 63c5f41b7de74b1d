#pragma once
// What the rows of both article lists hold. Keys, numbers and states are read back from the rows: these forms are data.
#include "base/Ref.h"
#include "base/Variant.h"

namespace dao {
class Recordset;
}

namespace mkl {

class ListItem;

/// A key with as many digits at least as the pattern has zeros; Null gives "".
QString articleNumber(const Variant& articleKey, const QString& pattern);

/// "A" and the key: of an article in the pool, of an assignment in the list.
QString rowKey(const Variant& key);
QString rowKey(Long key);

/// The article of a row of the list pane; 0 where its text is no number.
Long articleOfListRow(const ListItem& row);
/// Its position, likewise.
Long positionOfListRow(const ListItem& row);

/// "On" for what is active, else "Off"; Null is not active.
QString activeIcon(const Variant& active);
/// Whether that icon marks an active article.
bool isActiveIcon(const QString& icon);

/// Reads the current row of a record set into rows of the panes. Its columns are looked up once: 3265 for a lacking
/// one.
class ArticleRow {
public:
    ArticleRow(const Ref<dao::Recordset>& rows, const QString& pattern);

    Variant articleKey() const;
    QString number() const; ///< articleKey by the pattern
    void showInPool(ListItem& item) const;

private:
    friend class AssignedArticleRow;
    QString name() const;
    QString icon() const;

    const dao::Recordset& rows_;
    const QString& pattern_;
    int key_, name_, active_;
};

/// The same for the articles of a category.
class AssignedArticleRow {
public:
    AssignedArticleRow(const Ref<dao::Recordset>& rows, const QString& pattern);

    Variant assignmentKey() const;
    Variant articleKey() const { return article_.articleKey(); }
    QString position() const;
    void showInList(ListItem& item) const; ///< all but the position

private:
    ArticleRow article_;
    int key_, order_;
};

} // namespace mkl
