#pragma once
// A host whose clock stands still, so that it shows which rows got today's date.
#include "browser/BrowserHost.h"
#include "support/StandingClock.h"

namespace mkl {

class DatedHost : public BrowserHost {
protected:
    using BrowserHost::BrowserHost;

    static constexpr double today = 46347.5; // 2026-11-21 12:00

    /// Reads everything and shows the category.
    void show(Long category) {
        browser->Populate();
        browser->setSelected(acbPaneCategoryTree, category);
        events.take();
    }
    int depth() const { return catalogue.workspace()->transactionDepth(); }

    /// Positions of a category's articles by assignment; "*" behind those that got the date.
    QString positions(Long category) const { return assignments(category, u"[Order]"_s, u"ArtKatID"_s); }
    /// Its articles and positions by position: "12@1 30@2*".
    QString articles(Long category) const {
        return assignments(category, u"[Artikel-Schlüssel] & '@' & [Order]"_s, u"[Order], ArtKatID"_s);
    }
    /// The categories below a parent, 0 for the top level, by position: "41@1 50@2*".
    QString level(Long parent) const {
        const QString criterion = parent == 0 ? u"Parent Is Null"_s : u"Parent=%1"_s.arg(parent);
        return dated(u"SELECT [Kategorie-Schlüssel] & '@' & [Order] AS Shown, LetzteÄnderung FROM "
                     "[ARTIKEL/KATEGORIEN] WHERE %1 ORDER BY [Order], [Kategorie-Schlüssel]"_s.arg(criterion));
    }

    const StandingClock clock_{today};

private:
    QString assignments(Long category, const QString& shown, const QString& order) const {
        return dated(
            u"SELECT %1 AS Shown, LetzteÄnderung FROM ARTKAT WHERE [Kategorie-Schlüssel]=%2 ORDER BY %3"_s.arg(shown)
                .arg(category)
                .arg(order));
    }
    QString dated(const QString& query) const {
        QStringList result;
        const auto rows = catalogue.database()->OpenRecordset(query, dao::dbOpenSnapshot);
        for (; !rows->Eof(); rows->MoveNext()) {
            const Variant changed = rows->value(u"LetzteÄnderung");
            const bool isNew = !changed.isNull() && changed.toDate() == today;
            result.append(rows->value(u"Shown").toText() + (isNew ? u"*"_s : QString()));
        }
        return result.join(u' ');
    }
};

} // namespace mkl
