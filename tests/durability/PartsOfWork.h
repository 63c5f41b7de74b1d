#pragma once
// What procedures store that tell nobody of a failure: each writes row by row until one fails, and the next one begins.
#include "BrowserCommand.h"

#include <vector>

namespace mkl {

class PartsOfWork {
public:
    explicit PartsOfWork(const CatalogueRows& before);

    Long count(Long category) const;
    /// The articles at these places from 1, in the order of the positions.
    QList<Long> articlesAt(Long category, const QList<Long>& places) const;

    // The procedures, in the order in which they run, each upon the whole work of the former ones.
    void openGap(Long category, Long start, Long gap);                ///< Cat_RenumberArticles
    void add(Long category, Long start, const QList<Long>& articles); ///< Cat_AddArticles
    void remove(Long category, const QList<Long>& articles);          ///< Cat_DeleteArticles, which numbers anew

    void make(Long key, const CategoryState& category);        ///< NewCategory
    void drop(const QList<Long>& categories);                  ///< DeleteCategory; their assignments go with them
    void orderLevel(const QList<Long>& categories);            ///< OrderCategory
    void setParent(Long category, Long parent);                ///< EditParent
    void activate(const QList<Long>& categories, bool active); ///< TVActivate

    /// All states that are left if a run of the procedure of that name fails somewhere, or at its end.
    QList<CatalogueRows> afterFailureOf(const QString& procedure) const;

private:
    using Write = std::function<void(CatalogueRows&)>;
    struct Procedure {
        QString name;
        std::vector<Write> writes;
        bool isPartOfFormer = false; ///< runs only where the one before it ended well
    };

    QList<Long> keysOf(Long category) const;
    void run(Procedure procedure);
    void number(Long category, Long start, Long first, bool isPartOfFormer);

    CatalogueRows before_, now_;
    Long nextKey_ = 0;
    std::vector<Procedure> procedures_;
};

} // namespace mkl
