#include "bench/Articles.h"

#include <malloc.h>

namespace bench {

std::vector<Article> readArticles(const RawDatabase& raw) {
    std::vector<Article> articles;
    const RawStatement statement(raw, "SELECT * FROM ARTIKEL WHERE \"Absender-Schlüssel\" IS NOT NULL "
                                      "ORDER BY \"Artikel-Schlüssel\"");
    const int key = statement.column("Artikel-Schlüssel"), name = statement.column("Artikelname"),
              active = statement.column("Aktiv");
    while (statement.step())
        articles.push_back({statement.integer(key), statement.text(name), statement.integer(active) != 0});
    return articles;
}

double heapBytes() {
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks + info.hblkhd);
}

} // namespace bench
