#pragma once
#include "base/Ref.h"
#include "base/types.h"

#include <QString>
#include <optional>

namespace dao {
class Recordset;
}

namespace mkl {

class ArtCatBrowserPrivate;
class ListItem;

/// A position and how many behind it; error 6 beyond the range of a Long.
Long sumOfPositions(Long position, Long step);

/// The sequence of the articles within a category: column [Order] of ARTKAT. Every row that is written gets the date.
class ArticleOrder {
public:
    explicit ArticleOrder(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// StartPos 0 numbers the whole category from 1, another one opens a gap there; Gap counts positions. It runs in
    /// the transaction of its caller, who hears nothing of a failure.
    void Cat_RenumberArticles(Long CatID, Long StartPos, Long Gap);
    /// Moves one assignment from CurPos to NewPos, where TargetRowID stands. Counts what the list's filter lets pass.
    bool ReorderCategories(Long NewPos, Long CurPos, Long TargetRowID, Long MovedRowID, Long CatID);
    /// Gives each of two assignments the position told for it. One that is gone is reported, the other one is written.
    bool LV_SwapPositions(Long RowID1, Long Order1, Long RowID2, Long Order2);
    /// Asks, then numbers by name what the list's filter lets pass. Without a row the transaction stays open.
    void ReorderAlphabetical(Long CatID, const QString& CatName, bool Descending);
    /// Asks for a position from 1 to lMaxPos (below 1: 1000); lValue is the present one (below 1: none) and stands in
    /// the field. 0 where the user cancels or confirms the present position, and after a failure. A present position
    /// beyond lMaxPos shows as lMaxPos, and to confirm that is a change.
    Long PositionEditor(Long lValue, Long lMaxPos) const;

    /// The highest position in the category, 0 where it has no positions; none if the question has no answer.
    std::optional<Long> MaxOrder(Long CatID) const;

    /// The menu entries: another position for the selected row, the selected category by name.
    void kLV_NewPosition();
    void kLV_SortInc();
    void kLV_SortDesc();
    /// Moves the selected row by one place, up (-1) or down (1) in the sequence of the positions.
    void moveSelected(Long step);

private:
    Ref<dao::Recordset> rowsOf(Long category, bool useFilter) const;
    void renumber(Long category, Long startPos, Long gap) const;
    static void move(dao::Recordset& rows, Long newPos, Long curPos, Long targetRow, Long movedRow);
    void place(Long row, Long position) const;
    void moveRow(ListItem& row, Long curPos, Long newPos, Long targetRow);
    void sortSelected(bool descending);
    bool isSortWanted(const QString& category, bool descending) const;

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
