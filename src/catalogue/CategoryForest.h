#pragma once
// The categories of a catalogue in memory, as a forest by [Parent], each group of siblings in the order of position.
#include "dao/Database.h"

#include <QHash>
#include <QList>
#include <optional>

namespace mkl {

struct Category {
    Long key = 0;
    std::optional<Long> parent;
    std::optional<Long> order;
    QString name; ///< a Null name is empty
    bool active = false;
};

class CategoryForest {
public:
    explicit CategoryForest(dao::Database& database);

    const QList<Category>& categories() const { return categories_; }
    /// Position in categories(), -1 if there is none of that key.
    int find(Long key) const { return byKey_.value(key, -1); }

    /// Positions in categories(), in the order of [Order] (Null first) and key.
    const QList<int>& roots() const { return roots_; }
    QList<int> childrenOf(Long key) const { return children_.value(key); }
    /// Every group of siblings, roots first; the parent may be missing.
    QList<QList<int>> siblingGroups() const;

    /// One step of the walk from the roots: a category and its level, from 1.
    struct Step {
        int category = 0;
        int level = 1;
    };
    /// All categories that a walk from the given ones reaches, parents before children.
    QList<Step> walk(const QList<int>& from) const;

private:
    QList<Category> categories_;
    QHash<Long, int> byKey_;
    QList<int> roots_;
    QHash<Long, QList<int>> children_;
};

} // namespace mkl
