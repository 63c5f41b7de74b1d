// The server orders texts by the same bytes as the dialect.
#include "dao/OpenedDatabase.h"
#include "jet/functions/Collation.h"
#include "support/PostgresServer.h"

#include <random>

namespace dao {

namespace {

// Characters of more and more of the world; those that the function treats in ways of their own come often.
char32_t characterOf(std::mt19937& random, int world) {
    static const std::u32string special = U" -'’\u00ADßÄäÖöÜüẞæÆœ0123456789aAzZ\u0301\u0308\u2010\u2011ijIJñÿ";
    const auto below = [&](char32_t end) { return static_cast<char32_t>(random() % end); };
    if (below(3) == 0) return special[below(static_cast<char32_t>(special.size()))];
    switch (world) {
    case 0: return U' ' + below(95);
    case 1: return U'\x01' + below(0x17E);
    case 2: return U'\x01' + below(0x2FFF);
    default: break;
    }
    const char32_t any = U'\x01' + below(0x1FFFE);
    return any >= 0xD800 && any <= 0xDFFF ? U'x' : any;
}

QString textOf(std::mt19937& random, int world) {
    std::u32string text;
    for (auto length = random() % 12; length > 0; --length)
        text += characterOf(random, world);
    return QString::fromStdU32String(text);
}

} // namespace

TEST(PostgresKey, IsThatOfTheDialectForAnyText) {
    const OpenedDatabase o("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Wort TEXT);");
    std::mt19937 random(20240229);
    QStringList texts;
    RowWriter writer = o.database->appendRows(u"T"_s, {u"Nr"_s, u"Wort"_s});
    for (Long number = 0; number < 8000; ++number) {
        texts.append(textOf(random, number % 4));
        const Variant row[] = {Variant(number), Variant(texts.last())};
        writer.append(row);
    }
    const QByteArrayList keys =
        mkl::runOnServer(o.file.path(),
                         R"(SELECT string_agg(encode(mkl_key("Wort"), 'hex'), ',' ORDER BY "Nr") FROM "T")")
            .split(',');
    ASSERT_EQ(keys.size(), texts.size());
    for (qsizetype i = 0; i < texts.size(); ++i)
        EXPECT_EQ(keys[i], jet::sortKey(texts[i]).toHex()) << texts[i].toStdString();
}

} // namespace dao
