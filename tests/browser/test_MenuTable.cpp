#include "browser/MenuTable.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

/// The entries as "name|caption|flag", sub-entries further in.
QStringList lines() {
    QStringList result;
    const MenuTable menus;
    for (const MenuEntry& entry : menus) {
        const MenuForm& form = entry.form();
        QString line =
            entry.Name() + u'|' + entry.Caption() + u'|' + (form.flag ? QString::number(*form.flag) : QString());
        for (QStringView parent = form.parent; !parent.isEmpty(); parent = menus.Item(parent).form().parent)
            line.prepend(u"  "_s);
        result.append(line);
    }
    return result;
}

} // namespace

TEST(MenuTableTest, theMenusInTheirOrder) {
    EXPECT_EQ(lines(), (QStringList{
                           u"KTV|KontextTV|"_s,
                           u"  kTV_NewPosition|Position &ändern|4"_s,
                           u"  kTV_Bar0|-|8"_s,
                           u"  kTV_Sort|Ebene alphabetisch &sortieren|8"_s,
                           u"    kTV_SortInc|A&ufsteigend|8"_s,
                           u"    kTV_SortDesc|A&bsteigend|8"_s,
                           u"  kTV_Bar1|-|16"_s,
                           u"  kTV_New|&Neu|16"_s,
                           u"  kTV_Rename|&Umbenennen|32"_s,
                           u"  kTV_Delete|&Löschen|64"_s,
                           u"  kTV_Bar3|-|128"_s,
                           u"  kTV_Activate|&Aktivieren|128"_s,
                           u"  kTV_Bar2|-|1024"_s,
                           u"  kTV_Properties|&Eigenschaften|1024"_s,
                           u"  kTV_Bar4|-|"_s,
                           u"  kTV_Close|Schließen|2048"_s,
                           u"KLV|KontextLV|"_s,
                           u"  kLV_NewPosition|Position &ändern|4"_s,
                           u"  kLV_DeletePosition|Position &löschen|64"_s,
                           u"  kLV_Bar1|-|8"_s,
                           u"  kLV_Sort|Kategorie alphabetisch &sortieren|8"_s,
                           u"    kLV_SortInc|A&ufsteigend|8"_s,
                           u"    kLV_SortDesc|A&bsteigend|8"_s,
                           u"  kLV_Bar3|-|"_s,
                           u"  kLV_Activate|&Aktivieren|128"_s,
                           u"  kLV_ActivateAll|Auswahl &aktivieren|"_s,
                           u"  kLV_DeActivateAll|Auswahl &deaktivieren|"_s,
                           u"  kLV_Bar2|-|1024"_s,
                           u"  kLV_Properties|&Eigenschaften|1024"_s,
                           u"  kLV_Bar4|-|"_s,
                           u"  kLV_Close|&Schließen|2048"_s,
                           u"KLVArt|KontextLVArt|"_s,
                           u"  KLVArt_Find|&Suchen|256"_s,
                           u"  KLVArt_Bar2|-|512"_s,
                           u"  KLVArt_Filter|&Filter|512"_s,
                           u"    KLVArt_Active|Nur &aktive Artikel anzeigen|512"_s,
                           u"    KLVArt_InActive|Nur &inaktive Artikel anzeigen|512"_s,
                           u"    KLVArt_Filter_Bar1|-|512"_s,
                           u"    KLVArt_Marked|Nur &ausgewählte Artikel anzeigen|512"_s,
                           u"    KLVArt_UnCategorized|Nur &unzugeordnete Artikel anzeigen|512"_s,
                           u"  KLVArt_Bar3|-|128"_s,
                           u"  KLVArt_Activate|&Aktivieren|128"_s,
                           u"  KLVArt_Bar1|-|1024"_s,
                           u"  KLVArt_Properties|&Eigenschaften|1024"_s,
                           u"  KLVArt_Bar4|-|"_s,
                           u"  KLVArt_Close|Schl&ießen|2048"_s,
                           u"KClose|KontextClose|"_s,
                           u"  KClose_Close|&Schließen|"_s,
                       }));
}

TEST(MenuTableTest, everyEntryStandsBehindItsParent) {
    QStringList known;
    for (const MenuForm& form : menuForms()) {
        EXPECT_TRUE(form.parent.isEmpty() || known.contains(form.parent)) << form.name.toString().toStdString();
        EXPECT_FALSE(known.contains(form.name));
        known.append(form.name.toString());
    }
}

TEST(MenuTableTest, anEntryIsFoundWithoutCase) {
    MenuTable menus;
    menus.Item(u"klvart_MARKED").setChecked(true);
    EXPECT_TRUE(std::as_const(menus).Item(u"KLVArt_Marked").Checked());
    EXPECT_FALSE(menus.Item(u"KLVArt_Active").Checked());
    EXPECT_EQ(errorOf([&] { menus.Item(u"KLVArt_Nothing"); }), 35601);
}

TEST(MenuTableTest, eachTableHasStatesOfItsOwn) {
    MenuTable one;
    const MenuTable other;
    MenuEntry& entry = one.Item(u"kTV_Activate");
    entry.setCaption(u"&Deaktivieren"_s);
    entry.setVisible(false);
    entry.setEnabled(false);
    entry.setTag(u"-1"_s);
    const MenuEntry& untouched = other.Item(u"kTV_Activate");
    EXPECT_EQ(untouched.Caption(), u"&Aktivieren"_s);
    EXPECT_TRUE(untouched.Visible());
    EXPECT_TRUE(untouched.Enabled());
    EXPECT_EQ(untouched.Tag(), QString());
    EXPECT_EQ(entry.Tag(), u"-1"_s);
    EXPECT_TRUE(other.Item(u"kTV_Bar0").isSeparator());
}
