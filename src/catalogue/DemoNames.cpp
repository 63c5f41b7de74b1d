#include "catalogue/DemoNames.h"

#include <iterator>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

struct Product {
    const char16_t* name;
    const char16_t* prefix; ///< of the own number
};

constexpr const char16_t* departments[] = {
    u"Befestigungstechnik", u"Handwerkzeuge",          u"Elektrowerkzeuge", u"Beschläge",
    u"Gartengeräte",        u"Farben und Lacke",       u"Arbeitsschutz",    u"Sanitärbedarf",
    u"Elektroinstallation", u"Schlösser und Zylinder", u"Messwerkzeuge",    u"Leitern und Gerüste",
    u"Schweißtechnik",      u"Öfen und Zubehör",       u"Bürobedarf"};

constexpr const char16_t* groups[] = {
    u"Schrauben",        u"Muttern",          u"Dübel",     u"Nägel",         u"Bohrer",     u"Sägen",
    u"Hämmer",           u"Zangen",           u"Schlüssel", u"Feilen",        u"Scharniere", u"Türdrücker",
    u"Schubladengriffe", u"Ketten",           u"Seile",     u"Haken",         u"Ösen",       u"Winkel",
    u"Gewindestangen",   u"Unterlegscheiben", u"Nieten",    u"Klebstoffe",    u"Dichtungen", u"Schläuche",
    u"Armaturen",        u"Pinsel",           u"Spachtel",  u"Schleifmittel", u"Handschuhe", u"Gehörschutz",
    u"Wasserwaagen",     u"Maßbänder",        u"Äxte"};

constexpr const char16_t* qualities[] = {
    u"verzinkt",           u"Edelstahl",   u"Messing",      u"für Holz",   u"für Metall", u"für außen",
    u"schwere Ausführung", u"Großpackung", u"Sonderposten", u"Übergrößen", u"Zubehör",    u"Ersatzteile"};

constexpr Product products[] = {{u"Sechskantschraube", u"SKS"},
                                {u"Spanplattenschraube", u"SPS"},
                                {u"Schlossschraube", u"SLS"},
                                {u"Holzdübel", u"HD"},
                                {u"Spreizdübel", u"SD"},
                                {u"Drahtstift", u"DS"},
                                {u"Gewindestange", u"GS"},
                                {u"Unterlegscheibe", u"US"},
                                {u"Sechskantmutter", u"SKM"},
                                {u"Flügelmutter", u"FM"},
                                {u"Ringschraube", u"RS"},
                                {u"Spiralbohrer", u"SB"},
                                {u"Steinbohrer", u"StB"},
                                {u"Lochsäge", u"LS"},
                                {u"Sägeblatt", u"SBL"},
                                {u"Maulschlüssel", u"MS"},
                                {u"Kombizange", u"KZ"},
                                {u"Schlosserhammer", u"SH"},
                                {u"Flachfeile", u"FF"},
                                {u"Möbelscharnier", u"MSch"},
                                {u"Türband", u"TB"},
                                {u"Rundstahlkette", u"RK"},
                                {u"Drahtseil", u"DSL"},
                                {u"Schraubhaken", u"SHK"},
                                {u"Lochblechwinkel", u"LBW"},
                                {u"Flachpinsel", u"FP"},
                                {u"Schleifscheibe", u"SCH"},
                                {u"Gewebeschlauch", u"GSL"},
                                {u"Kugelhahn", u"KH"},
                                {u"Schutzhandschuh", u"SHA"}};

constexpr const char16_t* finishes[] = {u"verzinkt", u"blank",    u"Edelstahl A2", u"Messing",
                                        u"brüniert", u"gehärtet", u"schwarz",      u"weiß"};

constexpr int diameters[] = {3, 4, 5, 6, 8, 10, 12, 14, 16, 20};
constexpr int lengths[] = {12, 16, 20, 25, 30, 40, 50, 60, 80, 100, 120, 160, 200};

template<class T, std::size_t Count>
const T& pick(const T (&values)[Count], int number) {
    return values[static_cast<std::size_t>(number) % Count];
}

} // namespace

QString demoCategoryName(int number, int level) {
    QString name = QString::fromUtf16(level == 1 ? pick(departments, number) : pick(groups, number));
    const int width = static_cast<int>(level == 1 ? std::size(departments) : std::size(groups));
    int rest = number / width;
    if (level > 2) {
        name += u' ' + QString::fromUtf16(pick(qualities, rest));
        rest /= static_cast<int>(std::size(qualities));
    }
    return rest == 0 ? name : name + u' ' + QString::number(rest + 1);
}

DemoArticle demoArticle(int number, DemoChance& chance) {
    const Product& product = pick(products, chance.below(static_cast<int>(std::size(products))));
    const int diameter = pick(diameters, chance.below(static_cast<int>(std::size(diameters))));
    const int length = pick(lengths, chance.below(static_cast<int>(std::size(lengths))));
    const QString finish = QString::fromUtf16(pick(finishes, chance.below(static_cast<int>(std::size(finishes)))));
    DemoArticle article;
    article.name = u"%1 %2 x %3 mm, %4"_s.arg(QString::fromUtf16(product.name), QString::number(diameter),
                                              QString::number(length), finish);
    article.ownNumber = u"%1-%2"_s.arg(QString::fromUtf16(product.prefix), QString::number(10000 + number));
    return article;
}

} // namespace mkl
