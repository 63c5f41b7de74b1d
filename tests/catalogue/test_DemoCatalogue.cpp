#include "TestCatalogue.h"
#include "catalogue/CatalogueCheck.h"
#include "catalogue/CatalogueInfo.h"
#include "catalogue/DemoCatalogue.h"
#include "support/Printing.h"

#include <QCryptographicHash>
#include <QDir>
#include <QSet>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

class Demo : public testing::Test {
protected:
    Ref<dao::Database> made(const DemoCatalogue& figures) {
        const QString file = folder_.filePath(QString::number(++count_));
        figures.create(file);
        return openCatalogue(*workspace_, file);
    }

    /// A number that all rows of a table go into.
    QByteArray digest(const Ref<dao::Database>& database, const QString& query) {
        QCryptographicHash hash(QCryptographicHash::Md5);
        const auto rows = database->OpenRecordset(query, dao::dbOpenSnapshot);
        for (; !rows->Eof(); rows->MoveNext())
            for (int i = 0; i < rows->FieldCount(); ++i)
                hash.addData(rows->value(i).isNull() ? QByteArray("-") : rows->value(i).toText().toUtf8() + '|');
        return hash.result().toHex();
    }

    QByteArray digest(const Ref<dao::Database>& database) {
        return digest(database, u"SELECT * FROM ARTIKEL ORDER BY [Artikel-Schlüssel]"_s) +
               digest(database, u"SELECT * FROM [ARTIKEL/KATEGORIEN] ORDER BY [Kategorie-Schlüssel]"_s) +
               digest(database, u"SELECT * FROM ARTKAT ORDER BY [ArtKatID]"_s);
    }

    QTemporaryDir folder_;
    Ref<dao::Workspace> workspace_ = dao::DBEngine::CreateWorkspace();
    int count_ = 0;
};

} // namespace

TEST_F(Demo, hasTheWantedSizeAndIsSound) {
    const auto database = made({700, 120, 5});
    const CatalogueInfo info = CatalogueInfo::of(*database);
    EXPECT_EQ(info.rows[0].rows, 2);
    EXPECT_EQ(info.rows[1].rows, 700);
    EXPECT_EQ(info.rows[2].rows, 120);
    EXPECT_GT(info.rows[3].rows, 700);
    EXPECT_GT(info.categoriesPerLevel.size(), 2);
    const CatalogueCheck check = CatalogueCheck::of(*database);
    EXPECT_FALSE(check.isDamaged());
    EXPECT_TRUE(check.siblingGaps.isEmpty() && check.articleGaps.isEmpty());
}

TEST_F(Demo, sameSeedSameRows) {
    const QByteArray first = digest(made({300, 50, 7}));
    EXPECT_EQ(digest(made({300, 50, 7})), first);
    EXPECT_NE(digest(made({300, 50, 8})), first);
}

TEST_F(Demo, theRowsAreTheSameOnEveryMachine) {
    const auto database = made({3, 3, 1});
    const auto names =
        database->OpenRecordset(u"SELECT [Artikel-Schlüssel], [Artikelname], [LetzteÄnderung] FROM ARTIKEL "
                                "ORDER BY [Artikel-Schlüssel]"_s,
                                dao::dbOpenSnapshot);
    QStringList texts;
    for (; !names->Eof(); names->MoveNext())
        texts.append(names->value(0).toText() + u' ' + names->value(1).toText() + u' ' + names->value(2).toText());
    EXPECT_EQ(texts, (QStringList{u"2 Türband 6 x 200 mm, brüniert 02.08.2006 13:51:07"_s,
                                  u"4 Türband 20 x 40 mm, Messing 22.12.2004 16:23:28"_s,
                                  u"5 Schlossschraube 12 x 50 mm, weiß 02.02.2008 07:51:01"_s}));
}

TEST_F(Demo, categoryNamesDoNotRepeatAmongSiblings) {
    const auto database = made({0, 3000, 2});
    const auto rows =
        database->OpenRecordset(u"SELECT [Parent], [Kategoriename] FROM [ARTIKEL/KATEGORIEN]"_s, dao::dbOpenSnapshot);
    QSet<std::pair<QString, QString>> seen;
    for (; !rows->Eof(); rows->MoveNext()) {
        const Variant parent = rows->value(0);
        seen.insert({parent.isNull() ? QString() : parent.toText(), rows->value(1).toText()});
    }
    EXPECT_EQ(seen.size(), 3000);
}

TEST_F(Demo, smallestFigures) {
    EXPECT_EQ(CatalogueInfo::of(*made({0, 0, 1})).rows[1].rows, 0);
    EXPECT_EQ(CatalogueInfo::of(*made({10, 0, 1})).rows[3].rows, 0);
    EXPECT_EQ(CatalogueInfo::of(*made({0, 1, 1})).roots.size(), 1);
    EXPECT_EQ(errorOf([&] { made({-1, 0, 1}); }), 5);
}

TEST_F(Demo, cancelledLeavesNothing) {
    DemoCatalogue figures{5000, 10, 1};
    figures.progress = [](qint64, qint64) { return false; };
    EXPECT_EQ(errorOf([&] { made(figures); }), 3059);
    EXPECT_TRUE(QDir(folder_.path()).isEmpty());
}
