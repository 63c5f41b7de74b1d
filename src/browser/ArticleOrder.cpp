#include "browser/ArticleOrder.h"

#include "base/Clock.h"
#include "base/Texts.h"
#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/ArticleRow.h"
#include "browser/NodeText.h"
#include "browser/dialogs/frmNewPosition.h"
#include "controls/Asker.h"
#include "core/CatalogQueries.h"
#include "core/MessageService.h"

#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long sortQuestion = 1033;
constexpr Long highestWithoutLimit = 1000; // of the position editor

// The list's statement has a column of that name for each of its tables.
constexpr QStringView changedInStatement = u"ARTKAT.LetzteÄnderung";
constexpr QStringView changedInTable = u"LetzteÄnderung";

/// Writes positions into the rows of a record set, whose columns it looks up once.
class PositionWriter {
public:
    PositionWriter(dao::Recordset& rows, QStringView changed)
        : rows_(rows)
        , order_(rows.ordinal(u"Order"))
        , changed_(rows.ordinal(changed)) {}

    void write(Long position) const {
        rows_.Edit();
        rows_.setValue(order_, position);
        rows_.setValue(changed_, Variant::date(clock().now()));
        rows_.Update();
    }

private:
    dao::Recordset& rows_;
    int order_;
    int changed_;
};

} // namespace

Long sumOfPositions(Long position, Long step) {
    return roundToLong(static_cast<double>(position) + step);
}

Ref<dao::Recordset> ArticleOrder::rowsOf(Long category, bool useFilter) const {
    return hub_.state.Backend->OpenRecordset(hub_.articlePanes->ListStatement(category, useFilter), dao::dbOpenDynaset);
}

void ArticleOrder::Cat_RenumberArticles(Long CatID, Long StartPos, Long Gap) {
    const auto body = [&] {
        renumber(CatID, StartPos, Gap);
        return true;
    };
    hub_.errorFrame.function(u"Cat_RenumberArticles"_s, body, false);
}

void ArticleOrder::renumber(Long category, Long startPos, Long gap) const {
    // 1.
    const Ref<dao::Recordset> rows = rowsOf(category, false);
    if (rows->RecordCount() < 1) return;
    // 2.
    Long number = 1;
    // 3.
    if (startPos > 1) {
        const std::optional<Long> highest = MaxOrder(category);
        if (highest && startPos > *highest) return;
    }
    // 4.
    if (startPos != 0) {
        rows->FindFirst(u"[Order]="_s + QString::number(startPos));
        if (rows->NoMatch())
            hub_.reportVanishedRecord(); // the rows have no current one now, at which the next Edit ends this
        else
            number = sumOfPositions(rows->value(u"Order").toLong(), gap);
    }
    // 5.
    const PositionWriter writer(*rows, changedInStatement);
    do {
        writer.write(number);
        number = sumOfPositions(number, 1);
        rows->MoveNext();
    } while (!rows->Eof());
}

std::optional<Long> ArticleOrder::MaxOrder(Long CatID) const {
    QString statement = catalogQueries().MaxOrderOfCategory();
    statement.replace(u"##"_s, QString::number(CatID));
    const Ref<dao::Recordset> rows = hub_.state.Backend->OpenRecordset(statement, dao::dbOpenSnapshot);
    if (rows->RecordCount() < 1) return {};
    const Variant highest = rows->value(u"MaxOrder");
    return highest.isNull() ? 0 : highest.toLong();
}

bool ArticleOrder::ReorderCategories(Long NewPos, Long CurPos, Long TargetRowID, Long MovedRowID, Long CatID) {
    bool done = false;
    TransMark mark(hub_.state.Workspace);
    hub_.errorFrame.command(u"ReorderCategories"_s, mark, [&] {
        // 1.
        mark.begin();
        const Ref<dao::Recordset> rows = rowsOf(CatID, true);
        // 2. to 5.
        if (rows->RecordCount() >= 1) move(*rows, NewPos, CurPos, TargetRowID, MovedRowID);
        // 6.
        mark.commit();
        hub_.state.Edited = true;
        done = true;
    });
    return done;
}

// From the target to the end towards which rows make room: those between the two places step by one, those beyond the
// old place get their own number back.
void ArticleOrder::move(dao::Recordset& rows, Long newPos, Long curPos, Long targetRow, Long movedRow) {
    rows.FindFirst(u"[ArtkatID]="_s + QString::number(targetRow));
    const Long target = rows.value(u"Order").toLong();
    const bool up = newPos <= curPos;
    const Long step = up ? 1 : -1;
    Long number = sumOfPositions(target, step);
    const PositionWriter writer(rows, changedInStatement);
    const int key = rows.ordinal(u"ArtKatID");
    while (!(up ? rows.Eof() : rows.Bof())) {
        const bool isMoved = rows.value(key).toLong() == movedRow;
        writer.write(isMoved ? target : number);
        if (!isMoved) number = sumOfPositions(number, step);
        if (up)
            rows.MoveNext();
        else
            rows.MovePrevious();
    }
}

bool ArticleOrder::LV_SwapPositions(Long RowID1, Long Order1, Long RowID2, Long Order2) {
    bool done = false;
    TransMark mark(hub_.state.Workspace);
    hub_.errorFrame.command(u"SwapCategories"_s, mark, [&] {
        // 1.
        mark.begin();
        // 2.
        place(RowID1, Order1);
        place(RowID2, Order2);
        // 3.
        mark.commit();
        hub_.state.Edited = true;
        done = true;
    });
    return done;
}

void ArticleOrder::place(Long row, Long position) const {
    const Ref<dao::Recordset> table = hub_.state.ArtKatTable;
    table->Seek(u"=", row);
    if (table->NoMatch())
        hub_.reportVanishedRecord(u"SwapCategories"_s);
    else
        PositionWriter(*table, changedInTable).write(position);
}

void ArticleOrder::ReorderAlphabetical(Long CatID, const QString& CatName, bool Descending) {
    TransMark mark(hub_.state.Workspace);
    hub_.errorFrame.command(u"ReorderAlphabetical"_s, mark, [&] {
        // 1.
        const Ref<Node> node = hub_.ui.TV->SelectedItem();
        if (!node) return;
        // 2.
        if (!isSortWanted(CatName, Descending) || hub_.state.closed) return;
        // 3.
        mark.begin();
        const Ref<dao::Recordset> rows = rowsOf(CatID, true);
        if (rows->RecordCount() < 1) return;
        // 4.
        rows->setSort(Descending ? u"Artikelname DESC"_s : u"Artikelname"_s);
        const Ref<dao::Recordset> sorted = rows->OpenRecordset();
        // 5.
        sorted->MoveFirst();
        const PositionWriter writer(*sorted, changedInStatement);
        for (Long position = 1; !sorted->Eof(); sorted->MoveNext())
            writer.write(position++);
        // 6.
        mark.commit();
        hub_.state.Edited = true;
        hub_.selection->NodeClick(*node);
    });
}

Long ArticleOrder::PositionEditor(Long lValue, Long lMaxPos) const {
    Long chosen = 0;
    hub_.errorFrame.reader(u"PositionEditor"_s, [&] {
        // 1.
        frmNewPosition form(&hub_.face);
        form.UD.setRange(1, lMaxPos < 1 ? highestWithoutLimit : lMaxPos);
        form.UD.setValue(std::max(lValue, 1));
        form.UD.selectAll();
        // 2.
        form.Show();
        // 3.
        if (form.chkCancel.Value() != 0) return;
        const Long position = form.UD.Value();
        if (lValue < 1 || position != lValue) chosen = position;
    });
    return chosen;
}

bool ArticleOrder::isSortWanted(const QString& category, bool descending) const {
    const QString direction = text(descending ? TextId::BrowserDescending : TextId::BrowserAscending);
    return messageService().ShowCoded(sortQuestion, vbYesNo | vbQuestion, {}, direction, category) == vbYes;
}

void ArticleOrder::kLV_NewPosition() {
    hub_.errorFrame.reader(u"kLV_NewPosition_Click"_s, [&] {
        // 1.
        const Ref<ListItem> row = hub_.ui.LV->SelectedItem();
        const Long current = positionOfListRow(*row);
        const Long wanted = PositionEditor(current, hub_.ui.LV->ListItems().Count());
        if (wanted == 0 || hub_.state.closed) return;
        moveRow(*row, current, wanted, hub_.selection->ArtKatID_FromPosition(wanted));
    });
}

void ArticleOrder::moveSelected(Long step) {
    hub_.errorFrame.reader(u"kLV_NewPosition_Click"_s, [&] {
        const Ref<ListItem> row = hub_.ui.LV->SelectedItem();
        if (!row) return;
        const Long current = positionOfListRow(*row);
        Ref<ListItem> neighbour;
        for (const Ref<ListItem>& each : hub_.ui.LV->ListItems()) {
            const qint64 distance = (qint64(positionOfListRow(*each)) - current) * step;
            const bool isNearer = !neighbour || distance < (qint64(positionOfListRow(*neighbour)) - current) * step;
            if (distance > 0 && isNearer) neighbour = each;
        }
        if (neighbour) moveRow(*row, current, positionOfListRow(*neighbour), neighbour->Tag().toLong());
    });
}

void ArticleOrder::moveRow(ListItem& row, Long curPos, Long newPos, Long targetRow) {
    const Ref<ListItem> moved = &row;
    // 2.
    const QString key = row.Key();
    const Long category = hub_.ui.TV->SelectedItem()->Tag().toLong();
    // 3.
    if (!ReorderCategories(newPos, curPos, targetRow, row.Tag().toLong(), category)) return;
    hub_.articlePanes->PopulateLV(category);
    if (hub_.state.closed) return;
    const Ref<ListItem> item = hub_.ui.LV->ListItems().Item(key);
    hub_.ui.LV->setSelectedItem(item);
    hub_.selection->ListItemClick(*item);
}

void ArticleOrder::kLV_SortInc() {
    hub_.errorFrame.reader(u"kLV_SortInc_Click"_s, [&] { sortSelected(false); });
}

void ArticleOrder::kLV_SortDesc() {
    hub_.errorFrame.reader(u"kLV_SortDesc_Click"_s, [&] { sortSelected(true); });
}

void ArticleOrder::sortSelected(bool descending) {
    const Ref<Node> node = hub_.ui.TV->SelectedItem();
    if (node) ReorderAlphabetical(node->Tag().toLong(), NameFromNodeText(node->Text()), descending);
}

} // namespace mkl
