#pragma once
#include "controls/ListItem.h"

#include <QString>
#include <vector>

namespace mkl {

class ArtCatBrowserPrivate;
class NameSearch;
class frmAddArticleFind;

/// The search of the pool by name. It walks the rows on screen: what the filters hide is not found.
class ArticleFind {
public:
    explicit ArticleFind(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// The menu entry: asks for a term, shows the hits one by one, keeps those selected that the user wants, and tells
    /// how many. The control may be gone afterwards.
    void KLVArt_Find();

    /// The rows that the term finds, in the order of the list.
    std::vector<Ref<ListItem>> hits(const NameSearch& search) const;

private:
    struct Counts {
        Long Found = 0;
        Long Marked = 0;
    };

    bool askForTerm(QString& term) const;
    void find();
    bool showHit(ListItem& item, frmAddArticleFind& form, Counts& counts) const;
    QString result(bool isStopped, const Counts& counts) const;

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
