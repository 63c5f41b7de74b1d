// New categories in catalogues that keep their own replica digit.
#include "browser/DatedHost.h"
#include "browser/dialogs/frmNewCat.h"
#include "catalogue/CatalogueReplica.h"
#include "core/CatalogueHelper.h"
#include "support/ScriptedForms.h"

using namespace mkl;

namespace {

/// Keys as an older program gave them out.
const QString oldKeys = u"1 A\n2 B\n  3 C\n  4 D\n5 E\n6 F\n7 G\n8 H\n9 I\n"_s;

class CategoryReplicasTest : public DatedHost {
protected:
    CategoryReplicasTest()
        : DatedHost(oldKeys) {
        useOwnDigit();
    }

    void useOwnDigit() const {
        browser->setHelper(newSessionHelper(catalogue.database()));
        browser->setCurrentSenderID(1);
        browser->Populate();
    }
    /// A new category behind the selected one, through the form; its key, 0 where none was made.
    Long newKey(const QString& name = u"neu"_s) {
        const Long before = browser->Selected(acbPaneCategoryTree);
        forms.answers.append([name](QDialog& dialog) {
            auto& form = dynamic_cast<frmNewCat&>(dialog);
            form.txtCatName.setText(name);
            form.TB.Buttons(u"OK"_s).click();
        });
        hub().categoryEditing->kTV_New();
        const Long selected = browser->Selected(acbPaneCategoryTree);
        return selected == before ? 0 : selected;
    }
    QList<Long> newKeys(int count) {
        QList<Long> keys;
        for (int i = 0; i < count; ++i)
            keys.append(newKey(u"Neue %1"_s.arg(i)));
        return keys;
    }

    ScriptedForms forms;
};

/// The same rows in another office.
class SecondOffice : public CategoryReplicasTest {
public:
    using CategoryReplicasTest::newKeys;
    const CatalogueFixture& rows() const { return catalogue; }

private:
    void TestBody() override {}
};

} // namespace

TEST_F(CategoryReplicasTest, withoutReplicasTheDigitIs0AndOldKeysDoNotMatter) {
    EXPECT_EQ(newKeys(3), (QList<Long>{10, 20, 30}));
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(CategoryReplicasTest, aDigitSetByAnotherProgramCountsAtOnce) {
    EXPECT_EQ(newKey(), 10);
    catalogue.addCategory({.key = 13, .name = u"aus der Filiale"_s, .order = 20});
    const Ref<dao::Database> other = dao::DBEngine::CreateWorkspace()->OpenDatabase(catalogue.file());
    setReplicaDigit(*other, 3);
    EXPECT_EQ(newKey(u"weitere"_s), 23);
}

TEST_F(CategoryReplicasTest, anOldKeyThatIsTheDigitGivesNoKey) {
    setReplicaDigit(*catalogue.database(), 7);
    EXPECT_EQ(newKey(), 0);
    EXPECT_EQ(takeReports(), QStringList{u"NewID: 13"_s});
    screen().setMousePointer(vbDefault);
}

TEST_F(CategoryReplicasTest, aForeignNumberGivesAReportAndNoKey) {
    catalogue.database()->setLocalNumber(4711);
    EXPECT_EQ(newKey(), 0);
    EXPECT_EQ(takeReports(), QStringList{u"NewID: 3421"_s});
    EXPECT_FALSE(browser->Edited());
    screen().setMousePointer(vbDefault);
    setReplicaDigit(*catalogue.database(), 0);
    EXPECT_EQ(newKey(), 10);
}

TEST_F(CategoryReplicasTest, twoOfficesNeverGiveTheSameKey) {
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" IN (3, 5)"_s);
    browser->Populate();
    setReplicaDigit(*catalogue.database(), 3);
    const QList<Long> here = newKeys(120);
    QList<Long> there;
    {
        SecondOffice office;
        office.rows().run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" IN (3, 5)"_s);
        setReplicaDigit(*office.rows().database(), 5);
        there = office.newKeys(120);
    }
    for (int i = 0; i < 120; ++i) {
        EXPECT_EQ(here[i], 13 + 10 * i);
        EXPECT_EQ(there[i], 15 + 10 * i);
    }
    QSet<Long> all(here.begin(), here.end());
    all.unite(QSet<Long>(there.begin(), there.end()));
    EXPECT_EQ(all.size(), 240);
}
