// Reading 1,000,000 articles through record sets, beside the plain C interface of the engine.
#include "bench/Articles.h"
#include "bench/Pool.h"
#include "bench/Row.h"

#include <vector>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int Runs = 5;
constexpr int Lookups = 50'000;

std::vector<Article> readByName(const Pool& pool) {
    std::vector<Article> articles;
    for (const auto rows = pool.open(); !rows->Eof(); rows->MoveNext())
        articles.push_back({rows->value(u"Artikel-Schlüssel").toLong(), rows->value(u"Artikelname").toText(),
                            rows->value(u"Aktiv").toBoolean()});
    return articles;
}

// What the values themselves take: Long 4, yes/no 1, date 8 bytes, a text its UTF-8.
double dataBytes(const mkl::Ref<dao::Recordset>& rows) {
    double bytes = 0;
    for (rows->MoveFirst(); !rows->Eof(); rows->MoveNext()) {
        for (int column = 0; column < rows->FieldCount(); ++column) {
            const mkl::Variant value = rows->value(column);
            switch (value.type()) {
            case mkl::Variant::Type::Text: bytes += double(value.toText().toUtf8().size()); break;
            case mkl::Variant::Type::Int: bytes += 4; break;
            case mkl::Variant::Type::Boolean: bytes += 1; break;
            case mkl::Variant::Type::Null: break;
            default: bytes += 8;
            }
        }
    }
    return bytes;
}

} // namespace

Result poolRow() {
    const Pool pool;
    Result result;
    result.work = u"snapshot of the pool, 1,000,000 articles, 3 fields by name"_s;
    result.unit = u"s"_s;
    result.goal = 1.6;
    std::vector<Article> ours, raw;
    result.ours = medianSeconds(Runs, [&] { ours = readByName(pool); });
    result.baselines = {{u"C API"_s, medianSeconds(Runs, [&] { raw = readArticles(*pool.raw); })}};
    const bool same = ours.size() == raw.size() && ours.back().key == raw.back().key &&
                      ours.front().name == raw.front().name && ours.size() == std::size_t(Articles);
    if (!same) qFatal("the rows differ");
    return result;
}

Result poolMemoryRow() {
    const Pool pool;
    Result result;
    result.work = u"heap of that snapshot, all columns, against the bytes of its data"_s;
    result.unit = u"bytes"_s;
    result.goal = 2;
    const double before = heapBytes();
    const auto rows = pool.open();
    rows->MoveLast();
    result.ours = heapBytes() - before;
    result.baselines = {{u"data"_s, dataBytes(rows)}};
    return result;
}

Result literalsRow() {
    const Pool pool;
    const std::vector<Article> articles = readArticles(*pool.raw);
    const auto key = [&](int i) { return articles[std::size_t(i) * 7919 % articles.size()].key; };
    const double ours = medianSeconds(Runs, [&] {
        for (int i = 0; i < Lookups; ++i) {
            const auto rows = pool.database->OpenRecordset(
                u"SELECT Artikelname FROM ARTIKEL WHERE [Artikel-Schlüssel]="_s + QString::number(key(i)),
                dao::dbOpenSnapshot);
            if (rows->Eof()) qFatal("no such article");
        }
    });
    RawStatement statement(*pool.raw, "SELECT Artikelname FROM ARTIKEL WHERE \"Artikel-Schlüssel\"=?1");
    const double raw = medianSeconds(Runs, [&] {
        for (int i = 0; i < Lookups; ++i) {
            statement.reset();
            statement.bind(1, key(i));
            if (!statement.step()) qFatal("no such article");
        }
    });
    Result result;
    result.work =
        u"a statement that differs in its literals only, above the C API's %1 µs"_s.arg(raw / Lookups * 1e6, 0, 'f', 1);
    result.unit = u"ns"_s;
    result.ours = (ours - raw) / Lookups * 1e9;
    result.goal = 8000;
    return result;
}

} // namespace bench
