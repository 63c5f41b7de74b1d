#include "jet/evaluation/SortOrder.h"

#include "base/RunTimeError.h"
#include "jet/RowsInMemory.h"
#include "support/Printing.h"

using namespace Qt::StringLiterals;
using jet::ColumnType;
using jet::OutputColumn;
using jet::SortOrder;
using mkl::Variant;

namespace {

const QList<OutputColumn> columns = {{u"n"_s, ColumnType::Int, u"T"_s, u"n"_s},
                                     {u"t"_s, ColumnType::Text, u"T"_s, u"t"_s},
                                     {u"x"_s, ColumnType::Unknown, {}, {}}};

QList<qsizetype> sorted(const QString& text, const std::vector<std::vector<Variant>>& values) {
    jet::RowsInMemory rows(values);
    QList<qsizetype> order;
    for (qsizetype row = 0; row < rows.size(); ++row)
        order.append(row);
    SortOrder::parse(text, columns).sort(order, rows);
    return order;
}

mkl::Long errorOf(const QString& text) {
    try {
        SortOrder::parse(text, columns);
    } catch (const mkl::RunTimeError& error) {
        return error.number();
    }
    return 0;
}

} // namespace

TEST(SortOrder, nullComesFirstAndLastDescending) {
    const std::vector<std::vector<Variant>> rows = {{2, {}, {}}, {{}, {}, {}}, {1, {}, {}}};
    EXPECT_EQ(sorted(u"n"_s, rows), (QList<qsizetype>{1, 2, 0}));
    EXPECT_EQ(sorted(u"n DESC"_s, rows), (QList<qsizetype>{0, 2, 1}));
    EXPECT_EQ(sorted(u"-n ASC"_s, rows), (QList<qsizetype>{1, 0, 2}));
}

TEST(SortOrder, equalRowsKeepTheirPlaces) {
    const std::vector<std::vector<Variant>> rows = {
        {1, u"b"_s, {}}, {1, u"A"_s, {}}, {0, u"a"_s, {}}, {1, u"a "_s, {}}, {2, {}, {}}};
    EXPECT_EQ(sorted(u"t"_s, rows), (QList<qsizetype>{4, 1, 2, 3, 0}));
    EXPECT_EQ(sorted(u"n DESC, T.t"_s, rows), (QList<qsizetype>{4, 1, 3, 0, 2}));
    EXPECT_EQ(sorted(u"2 DESC, 1"_s, rows), (QList<qsizetype>{0, 2, 1, 3, 4}));
    EXPECT_EQ(sorted(u" "_s, rows), (QList<qsizetype>{0, 1, 2, 3, 4}));
}

TEST(SortOrder, mixedValuesStandByKind) {
    const std::vector<std::vector<Variant>> rows = {
        {{}, {}, u"1"_s}, {{}, {}, 2}, {{}, {}, QByteArray("\x01")}, {{}, {}, {}}, {{}, {}, Variant::currency(15000)}};
    EXPECT_EQ(sorted(u"x"_s, rows), (QList<qsizetype>{3, 4, 1, 0, 2}));
}

TEST(SortOrder, errors) {
    EXPECT_EQ(errorOf(u"n, "_s), 3138);
    EXPECT_EQ(errorOf(u"n DESC ASC"_s), 3138);
    EXPECT_EQ(errorOf(u"n; DELETE FROM T"_s), 3138);
    EXPECT_EQ(errorOf(u"n WHERE 1"_s), 3138);
    EXPECT_EQ(errorOf(u"n +"_s), 3138);
    EXPECT_EQ(errorOf(u"4"_s), 3138);
    EXPECT_EQ(errorOf(u"0"_s), 3138);
    EXPECT_EQ(errorOf(u"nirgends"_s), 3070);
    EXPECT_EQ(errorOf(u"Sum(n)"_s), 3097);
}
