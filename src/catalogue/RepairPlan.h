#pragma once
// What a repair is going to change, worked out on the rows in memory.
#include "catalogue/CatalogueRepair.h"

#include <optional>
#include <vector>

namespace mkl {

/// Positions and owners of all categories and assignments, before and after.
class RepairPlan {
public:
    /// A category, its owner being its parent; or an assignment, its owner being its category.
    struct Row {
        Long key = 0;
        std::optional<Long> owner, order, article;
        std::optional<double> changed;
        std::optional<Long> newOwner, newOrder;
        /// Why its owner changes or it goes; nothing where neither.
        std::optional<RepairChange::Kind> reason = {};
        int arrival = 0; ///< which of the new roots it is, from 1; 0 for all other rows
        bool deleted = false;

        bool isChanged() const { return deleted || owner != newOwner || order != newOrder; }
    };

    RepairPlan(dao::Database& database, const CatalogueCheck& found, const RepairOptions& options);

    const std::vector<Row>& categories() const { return categories_; }
    const std::vector<Row>& assignments() const { return assignments_; }
    /// In the order of the steps.
    QList<RepairChange> changes() const;

private:
    void makeRoots(const CatalogueCheck& found);
    void deleteAssignments(const CatalogueCheck& found, bool withoutArticle);

    std::vector<Row> categories_;  ///< by key
    std::vector<Row> assignments_; ///< by key
};

} // namespace mkl
