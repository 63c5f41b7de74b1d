#pragma once
#include "base/types.h"

#include <QString>

namespace mkl {

class ArtCatBrowserPrivate;
class ArticleRow;
class ListView;
class PaneFocus;

/// The two article lists: pool and articles of the selected category.
class ArticlePanes {
public:
    explicit ArticlePanes(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// Reads the articles of the category; nothing happens while the list is off.
    void PopulateLV(Long CategoryKey);
    /// The same for a list that is about to be turned on.
    void readList(Long CategoryKey);
    /// Reads the pool and selects its first row. True if there were rows; false after a failure too.
    bool PopulateLVArt(bool ShowStatus);
    /// Adds the current row of the articles to the pool.
    void addPoolRow(const ArticleRow& row);
    /// Empties the list.
    void ClearArticleList();

    QString ListStatement(Long CategoryKey, bool UseFilter) const;
    QString PoolStatement() const;

    /// Gives the numbers of both lists the room that they need and the names what is left. Does nothing before
    /// Populate, which finds out how long a number is.
    void AdjustColumnWidths();
    /// The user clicked on the head of a column: its order, always ascending.
    void sortBy(ListView& list, Long columnIndex);

private:
    void fillList(Long categoryKey, PaneFocus& focus);
    void endList() const;
    bool fillPool(bool showStatus);
    void endPool(bool showStatus);
    void appendActiveCriteria(QString& criteria) const;
    void appendCriterion(QString& criteria, const QString& clause) const;
    Single numberWidth(const QString& pattern) const;
    void fillWithLastColumn(ListView& list) const;

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
