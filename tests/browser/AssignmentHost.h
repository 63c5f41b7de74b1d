#pragma once
// A host whose clock stands still, so that it shows which assignments got today's date.
#include "browser/BrowserHost.h"
#include "support/StandingClock.h"

namespace mkl {

class AssignmentHost : public BrowserHost {
protected:
    using BrowserHost::BrowserHost;

    static constexpr double today = 46347.5; // 2026-11-21 12:00

    /// Reads everything and shows the category.
    void show(Long category) {
        browser->Populate();
        browser->setSelected(acbPaneCategoryTree, category);
        events.take();
    }
    /// The positions of a category by assignment; "*" behind those that got the date.
    QString positions(Long category) const { return assignments(category, u"[Order]"_s); }
    /// Its articles and positions by position: "12@1 30@2*".
    QString articles(Long category) const {
        return assignments(category, u"[Artikel-Schlüssel] & '@' & [Order]"_s, u"[Order], ArtKatID"_s);
    }
    int depth() const { return catalogue.workspace()->transactionDepth(); }
    /// Selects these articles of a list alone.
    void select(ListView& view, std::initializer_list<Long> rows) const {
        view.deselectOthers({});
        for (const Long row : rows)
            view.setSelectedItem(view.ListItems().Item(row));
    }
    QString selectedRow(const ListView& view) const {
        const Ref<ListItem> item = view.SelectedItem();
        return item ? item->Text() + u' ' + item->SubItems(1) : QString();
    }

    const StandingClock clock_{today};

private:
    QString assignments(Long category, const QString& shown, const QString& order = u"ArtKatID"_s) const {
        QStringList result;
        const auto rows = catalogue.database()->OpenRecordset(
            u"SELECT %1 AS Shown, LetzteÄnderung FROM ARTKAT WHERE [Kategorie-Schlüssel]=%2 ORDER BY %3"_s.arg(shown)
                .arg(category)
                .arg(order),
            dao::dbOpenSnapshot);
        for (; !rows->Eof(); rows->MoveNext()) {
            const Variant changed = rows->value(u"LetzteÄnderung");
            const bool isNew = !changed.isNull() && changed.toDate() == today;
            result.append(rows->value(u"Shown").toText() + (isNew ? u"*"_s : QString()));
        }
        return result.join(u' ');
    }
};

} // namespace mkl
