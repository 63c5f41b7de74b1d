#include "TestCatalogue.h"
#include "catalogue/CatalogueReplica.h"
#include "catalogue/DemoCatalogue.h"
#include "support/Printing.h"

#include <QFile>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

Ref<dao::Database> opened(const QString& file) {
    return openCatalogue(*dao::DBEngine::CreateWorkspace(), file);
}

} // namespace

TEST(CatalogueReplica, aNewCatalogueHasDigit0) {
    const TestCatalogue catalogue;
    EXPECT_EQ(replicaDigit(catalogue.database()), 0);
    QTemporaryDir folder;
    DemoCatalogue().create(folder.filePath(u"demo.sqlite"_s));
    EXPECT_EQ(replicaDigit(*opened(folder.filePath(u"demo.sqlite"_s))), 0);
}

TEST(CatalogueReplica, keepsEachDigit) {
    const TestCatalogue catalogue;
    for (Long digit = 9; digit >= 0; --digit) {
        setReplicaDigit(catalogue.database(), digit);
        EXPECT_EQ(replicaDigit(*opened(catalogue.path())), digit);
    }
}

TEST(CatalogueReplica, takesDigitsAlone) {
    const TestCatalogue catalogue;
    setReplicaDigit(catalogue.database(), 3);
    for (const Long number : {-1, 10, 33})
        EXPECT_EQ(errorOf([&] { setReplicaDigit(catalogue.database(), number); }), 5);
    EXPECT_EQ(replicaDigit(catalogue.database()), 3);
}

TEST(CatalogueReplica, aForeignNumberIsAClearErrorUntilADigitIsSet) {
    const TestCatalogue catalogue;
    for (const Long number : {-1, 10, 4711}) {
        catalogue.database().setLocalNumber(number);
        try {
            replicaDigit(catalogue.database());
            FAIL() << number;
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number(), 3421);
            EXPECT_TRUE(error.description().contains(QString::number(number)));
            EXPECT_TRUE(error.description().contains(catalogue.path()));
        }
    }
    setReplicaDigit(catalogue.database(), 4);
    EXPECT_EQ(replicaDigit(catalogue.database()), 4);
}

TEST(CatalogueReplica, aCopyOfTheFileHasTheSameDigitUntilItsOwnIsSet) {
    TestCatalogue catalogue;
    setReplicaDigit(catalogue.database(), 3);
    catalogue.database().Close();
    const QString copy = catalogue.path() + u".filiale"_s;
    ASSERT_TRUE(QFile::copy(catalogue.path(), copy));
    EXPECT_EQ(replicaDigit(*opened(copy)), 3);
    setReplicaDigit(*opened(copy), 5);
    EXPECT_EQ(replicaDigit(*opened(copy)), 5);
    EXPECT_EQ(replicaDigit(*opened(catalogue.path())), 3);
}
