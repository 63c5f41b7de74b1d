#include "catalogue/DemoCatalogue.h"

#include "base/DateTime.h"
#include "catalogue/CatalogueFile.h"
#include "catalogue/DemoNames.h"
#include "catalogue/Refusal.h"

#include <algorithm>
#include <array>
#include <vector>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<Long, 2> senders = {3, 7};
constexpr Long replicaDigit = 3;
constexpr int deepestLevel = 8;
constexpr qint64 progressStep = 2048;
constexpr qint64 steelPrice = 100; ///< ten-thousandths of the currency per millimetre

/// Writes the rows of one demo catalogue, in a fixed order of chances.
class DemoWriter {
public:
    DemoWriter(const DemoCatalogue& figures, dao::Database& database)
        : figures_(figures)
        , database_(database)
        , chance_(figures.seed) {}

    void write() {
        writeSenders();
        writeCategories();
        writeArticles();
        writePriceLists();
        writePrices();
    }

private:
    struct Place {
        int level = 1;
        int children = 0;
        Long articles = 0;
    };

    static Long categoryKey(int number) { return (number + 1) * 10 + replicaDigit; }

    Variant someDate() {
        constexpr int firstOfJanuary2004 = 37987, days = 1800, secondsOfWork = 36000, sevenOClock = 25200;
        const int second = sevenOClock + chance_.below(secondsOfWork);
        return Variant::date(firstOfJanuary2004 + chance_.below(days) + second / 86400.0);
    }

    Variant someSender() { return Variant(senders[chance_.percent(70) ? 0 : 1]); }

    void count() {
        const qint64 expected = qint64(figures_.categories) + 2 * qint64(figures_.articles);
        if (++rows_ % progressStep == 0 && figures_.progress && !figures_.progress(rows_, expected))
            throwError(refusal::Cancelled);
    }

    void writeSenders() {
        auto rows = database_.appendRows(u"ABSENDER"_s, {u"Absender-Schlüssel"_s});
        for (const Long sender : senders)
            rows.append(std::array{Variant(sender)});
    }

    /// Number of the parent among the categories before, -1 for a root.
    int someParent(int number) {
        const int roots = std::clamp(figures_.categories / 20, 1, 15);
        if (number < roots) return -1;
        const int parent = chance_.below(number);
        return places_[parent].level < deepestLevel ? parent : chance_.below(roots);
    }

    void writeCategories() {
        auto rows = database_.appendRows(u"ARTIKEL/KATEGORIEN"_s,
                                         {u"Kategorie-Schlüssel"_s, u"Absender-Schlüssel"_s, u"Kategoriename"_s,
                                          u"Bezeichnung"_s, u"LetzteÄnderung"_s, u"Parent"_s, u"Order"_s, u"Aktiv"_s});
        Long rootCount = 0;
        for (int number = 0; number < figures_.categories; ++number) {
            const int parent = someParent(number);
            places_.push_back({parent < 0 ? 1 : places_[parent].level + 1});
            const QString name = demoCategoryName(number, places_.back().level);
            const Long order = parent < 0 ? ++rootCount : ++places_[parent].children;
            const Variant sender = someSender(), changed = someDate();
            rows.append(std::array{Variant(categoryKey(number)), sender, Variant(name), Variant(name), changed,
                                   parent < 0 ? Variant() : Variant(categoryKey(parent)), Variant(order),
                                   Variant(chance_.percent(90))});
            count();
        }
    }

    void writeArticles() {
        auto articles =
            database_.appendRows(u"ARTIKEL"_s, {u"Artikel-Schlüssel"_s, u"Artikelname"_s, u"EigeneArtikelnummer"_s,
                                                u"Aktiv"_s, u"Absender-Schlüssel"_s, u"LetzteÄnderung"_s});
        auto assignments = database_.appendRows(
            u"ARTKAT"_s, {u"Artikel-Schlüssel"_s, u"Kategorie-Schlüssel"_s, u"Order"_s, u"LetzteÄnderung"_s});
        Long key = 0;
        for (int number = 0; number < figures_.articles; ++number) {
            key += 1 + chance_.below(3);
            articleKeys_.push_back(key);
            const DemoArticle article = demoArticle(number, chance_);
            const Variant ownNumber = chance_.percent(4) ? Variant() : Variant(article.ownNumber);
            const bool active = chance_.percent(90);
            const Variant sender = someSender(), changed = someDate();
            articles.append(
                std::array{Variant(key), Variant(article.name), ownNumber, Variant(active), sender, changed});
            for (const int category : someCategories())
                assignments.append(std::array{Variant(key), Variant(categoryKey(category)),
                                              Variant(++places_[category].articles), someDate()});
            count();
        }
    }

    /// None, one or a few, each once.
    QList<int> someCategories() {
        QList<int> chosen;
        if (figures_.categories == 0 || chance_.percent(3)) return chosen;
        chosen.append(chance_.below(figures_.categories));
        while (chance_.percent(25)) {
            const int further = chance_.below(figures_.categories);
            if (!chosen.contains(further)) chosen.append(further);
        }
        return chosen;
    }

    void writePriceLists() {
        auto groups = database_.appendRows(
            u"PREISGRUPPEN"_s, {u"Preisgruppen-Schlüssel"_s, u"Preisgruppenname"_s, u"Absender-Schlüssel"_s});
        groups.append(std::array{Variant(1), Variant(u"Endkunden"_s), Variant(senders[0])});
        groups.append(std::array{Variant(2), Variant(u"Händler"_s), Variant(senders[1])});
        auto lists = database_.appendRows(u"ARTIKEL/PREISLISTEN"_s,
                                          {u"Preislisten-Schlüssel"_s, u"Preisgruppen-Schlüssel"_s,
                                           u"Preislistenname"_s, u"Währung"_s, u"Aktion"_s, u"GültigAb"_s});
        const Variant start = Variant::date(*dateFromIso(u"2005-01-01"));
        const Variant euro(u"EUR"_s);
        lists.append(std::array{Variant(1), Variant(1), Variant(u"Ladenpreise"_s), euro, Variant(), start});
        lists.append(std::array{Variant(2), Variant(2), Variant(u"Händlerpreise"_s), euro, Variant(), start});
        lists.append(std::array{Variant(3), Variant(1), Variant(u"Frühjahrsangebote"_s), euro,
                                Variant(u"Frühlingserwachen"_s), Variant::date(*dateFromIso(u"2006-03-15"))});
    }

    void writePrices() {
        auto rows = database_.appendRows(u"ARTIKEL/PREISE"_s, {u"Preislisten-Schlüssel"_s, u"Artikel-Schlüssel"_s,
                                                               u"GültigAbVerkaufsmenge"_s, u"Preis"_s});
        const auto append = [&](Long list, Long article, double quantity, qint64 price) {
            rows.append(std::array{Variant(list), Variant(article), Variant(quantity), Variant::currency(price)});
        };
        for (const Long article : articleKeys_) {
            const qint64 price = (5 + chance_.below(2500)) * steelPrice;
            append(1, article, 1.0, price);
            append(2, article, 10.0, price * 8 / 10);
            if (chance_.percent(10)) append(3, article, 1.0, price * 9 / 10);
            count();
        }
    }

    const DemoCatalogue& figures_;
    dao::Database& database_;
    DemoChance chance_;
    std::vector<Place> places_;     ///< of the categories, by number
    std::vector<Long> articleKeys_; ///< by number
    qint64 rows_ = 0;
};

} // namespace

void DemoCatalogue::create(const QString& file) const {
    if (articles < 0 || categories < 0) throwError(err::InvalidArgument);
    CatalogueDraft draft(file, target);
    DemoWriter(*this, draft.database()).write();
    draft.publish();
}

} // namespace mkl
