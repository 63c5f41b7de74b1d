#include "dao/EditBuffer.h"

#include "support/Printing.h"

#include <limits>

namespace dao {

using namespace Qt::StringLiterals;
using jet::ColumnType;
using mkl::errorOf;
using mkl::Variant;

namespace {

enum Place { Nr, Name, Kurz, Byte, Betrag, Ausdruck, Aktiv };

QList<EditColumn> columns() {
    const auto column = [](const QString& name, ColumnType type, int size = 0, bool writable = true) {
        jet::Column facts{.name = name, .type = type};
        facts.size = size;
        return EditColumn{name, facts, writable};
    };
    return {column(u"Nr"_s, ColumnType::Int),          column(u"Name"_s, ColumnType::Text, 5),
            column(u"Kurz"_s, ColumnType::Int, 2),     column(u"Byte"_s, ColumnType::Int, 1),
            column(u"Betrag"_s, ColumnType::Currency), column(u"Ausdruck"_s, ColumnType::Double, 0, false),
            column(u"Aktiv"_s, ColumnType::Boolean)};
}

RowStore oneRow() {
    RowStore row;
    row.appendInteger(7);
    row.appendText("alt");
    row.appendInteger(1);
    row.appendNull();
    row.appendReal(1.5);
    row.appendReal(2.5);
    row.appendInteger(-1);
    row.endRow();
    return row;
}

Long errorOfSet(EditBuffer& buffer, int column, const Variant& value) {
    return errorOf([&] { buffer.set(column, value); });
}

} // namespace

TEST(EditBuffer, HasAMode) {
    EditBuffer buffer(columns());
    EXPECT_EQ(buffer.mode(), EditMode::None);
    EXPECT_FALSE(buffer.isActive());
    buffer.beginEdit(oneRow());
    EXPECT_EQ(buffer.mode(), EditMode::InProgress);
    buffer.beginAdd({});
    EXPECT_EQ(buffer.mode(), EditMode::Add);
    buffer.clear();
    EXPECT_EQ(buffer.mode(), EditMode::None);
}

TEST(EditBuffer, WithoutEditNothingIsSet) {
    EditBuffer buffer(columns());
    EXPECT_EQ(errorOfSet(buffer, Nr, Variant(1)), 3020);
    EXPECT_EQ(errorOf([&] { buffer.value(Nr); }), 3021);
    EXPECT_TRUE(buffer.changes().isEmpty());
}

TEST(EditBuffer, EditShowsTheRowUntilItIsSet) {
    EditBuffer buffer(columns());
    {
        const RowStore row = oneRow();
        buffer.beginEdit(row);
    } // what the buffer holds does not refer to the row store
    EXPECT_EQ(buffer.value(Name), Variant(u"alt"_s));
    EXPECT_EQ(buffer.value(Betrag), Variant::currency(15000));
    EXPECT_EQ(buffer.value(Byte), Variant());
    buffer.set(Name, Variant(u"neu"_s));
    buffer.set(Nr, Variant());
    EXPECT_EQ(buffer.value(Name), Variant(u"neu"_s));
    EXPECT_EQ(buffer.value(Nr), Variant());
    ASSERT_EQ(buffer.changes().size(), 2);
    EXPECT_EQ(buffer.changes()[0].column, Nr);
    EXPECT_EQ(buffer.changes()[1].value.bytes, "neu");
    ASSERT_EQ(buffer.before().size(), 7);
    EXPECT_EQ(buffer.before()[Name].value.bytes, "alt");
}

TEST(EditBuffer, AddBeginsWithTheInitialValues) {
    EditBuffer buffer(columns());
    buffer.beginAdd({{Nr, StoredValue::ofInteger(12)}});
    EXPECT_EQ(buffer.value(Nr), Variant(12));
    EXPECT_EQ(buffer.value(Name), Variant());
    EXPECT_EQ(buffer.changes().size(), 1);
    EXPECT_TRUE(buffer.before().isEmpty());
}

TEST(EditBuffer, ANewBeginLosesWhatWasSet) {
    EditBuffer buffer(columns());
    buffer.beginEdit(oneRow());
    buffer.set(Name, Variant(u"neu"_s));
    buffer.beginEdit(oneRow());
    EXPECT_EQ(buffer.value(Name), Variant(u"alt"_s));
    buffer.set(Name, Variant(u"neu"_s));
    buffer.beginAdd({});
    EXPECT_TRUE(buffer.changes().isEmpty());
}

TEST(EditBuffer, ConvertsAsTheColumnStores) {
    EditBuffer buffer(columns());
    buffer.beginAdd({});
    buffer.set(Nr, Variant(2.5));
    EXPECT_EQ(buffer.value(Nr), Variant(2));
    buffer.set(Nr, Variant(3.5));
    EXPECT_EQ(buffer.value(Nr), Variant(4));
    buffer.set(Nr, Variant(-2.5));
    EXPECT_EQ(buffer.value(Nr), Variant(-2));
    buffer.set(Nr, Variant(u" 12 "_s));
    EXPECT_EQ(buffer.value(Nr), Variant(12));
    buffer.set(Nr, Variant(true));
    EXPECT_EQ(buffer.value(Nr), Variant(-1));
    buffer.set(Aktiv, Variant(3));
    EXPECT_EQ(buffer.value(Aktiv), Variant(true));
    buffer.set(Name, Variant(12));
    EXPECT_EQ(buffer.value(Name), Variant(u"12"_s));
}

TEST(EditBuffer, RefusesWhatDoesNotFit) {
    EditBuffer buffer(columns());
    buffer.beginEdit(oneRow());
    EXPECT_EQ(errorOfSet(buffer, Nr, Variant(u"zwölf"_s)), 3421);
    EXPECT_EQ(errorOfSet(buffer, Nr, Variant(QByteArray("x"))), 3421);
    EXPECT_EQ(errorOfSet(buffer, Nr, Variant(2147483647.5)), 6); // to the even one
    EXPECT_EQ(errorOfSet(buffer, Nr, Variant(2147483648.0)), 6);
    EXPECT_EQ(errorOfSet(buffer, Nr, Variant(-2147483649.0)), 6);
    EXPECT_EQ(errorOfSet(buffer, Nr, Variant(2147483646.5)), 0);
    EXPECT_EQ(errorOfSet(buffer, Name, Variant(u"sechs "_s)), 3163);
    EXPECT_EQ(errorOfSet(buffer, Name, Variant(u"äöüßÄ"_s)), 0);
    EXPECT_EQ(errorOfSet(buffer, Name, Variant(u"äöüßÄÖ"_s)), 3163);
    EXPECT_EQ(errorOfSet(buffer, Betrag, Variant(1e15)), 6);
    EXPECT_EQ(errorOfSet(buffer, Ausdruck, Variant(1)), 3164);
    EXPECT_EQ(buffer.value(Name), Variant(u"äöüßÄ"_s));
}

TEST(EditBuffer, ShortIntegersHaveTheirOwnRange) {
    EditBuffer buffer(columns());
    buffer.beginAdd({});
    EXPECT_EQ(errorOfSet(buffer, Kurz, Variant(32767.4)), 0);
    EXPECT_EQ(errorOfSet(buffer, Kurz, Variant(32768)), 6);
    EXPECT_EQ(errorOfSet(buffer, Kurz, Variant(-32768)), 0);
    EXPECT_EQ(errorOfSet(buffer, Kurz, Variant(-32769)), 6);
    EXPECT_EQ(errorOfSet(buffer, Byte, Variant(255)), 0);
    EXPECT_EQ(errorOfSet(buffer, Byte, Variant(256)), 6);
    EXPECT_EQ(errorOfSet(buffer, Byte, Variant(-1)), 6);
}

} // namespace dao
