// What hosts and designers of forms see of the control: members, types, defaults, help, and what the bag keeps.
#include "browser/BrowserHost.h"
#include "controls/Extender.h"

#include <QMetaMethod>
#include <QMetaProperty>

using namespace mkl;

namespace {

QString plain(QByteArray typeName) {
    for (const char* prefix : {"mkl::", "dao::", "ArtCatBrowserEnums::", "const "})
        typeName.replace(prefix, "");
    return QString::fromLatin1(typeName);
}

QString propertyLine(const QObject& control, const QMetaProperty& property) {
    QString line = QString::fromLatin1(property.name()) + u": "_s + plain(property.typeName()) +
                   (property.isWritable() ? u", get let"_s : u", get"_s);
    const bool hasDefault = property.isEnumType() || property.metaType().id() < QMetaType::User;
    if (hasDefault && QLatin1String(property.name()) != "ActivePane"_L1 &&
        QLatin1String(property.name()) != "hWnd"_L1) {
        QVariant value = property.read(&control);
        if (property.isEnumType()) value = value.toInt();
        line += u" = "_s + value.toString();
    }
    if (property.isStored() != property.isDesignable()) line += u", neither stored nor shown"_s;
    return line + (property.isStored() ? u", in the bag"_s : QString());
}

QStringList propertyLines(const QObject& control) {
    const QMetaObject& meta = ArtCatBrowser::staticMetaObject;
    QStringList lines;
    for (int index = meta.propertyOffset(); index < meta.propertyCount(); ++index)
        lines.append(propertyLine(control, meta.property(index)));
    lines.sort();
    return lines;
}

QString methodLine(const QMetaMethod& method) {
    QStringList parameters;
    for (int index = 0; index < method.parameterCount(); ++index)
        parameters.append(plain(method.parameterTypeName(index)) + u' ' +
                          QString::fromLatin1(method.parameterNames().at(index)));
    const QString result = plain(method.typeName());
    return (result == "void"_L1 ? QString() : result + u' ') + QString::fromLatin1(method.name()) + u'(' +
           parameters.join(u", "_s) + u')';
}

QStringList methodLines(QMetaMethod::MethodType type) {
    const QMetaObject& meta = ArtCatBrowser::staticMetaObject;
    QStringList lines;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        if (meta.method(index).methodType() == type) lines.append(methodLine(meta.method(index)));
    return lines;
}

QStringList enumLines(const char* name) {
    const QMetaObject& meta = ArtCatBrowserEnums::staticMetaObject;
    const QMetaEnum values = meta.enumerator(meta.indexOfEnumerator(name));
    QStringList lines;
    for (int index = 0; index < values.keyCount(); ++index)
        lines.append(QString::fromLatin1(values.key(index)) + u" = "_s + QString::number(values.value(index)));
    return lines;
}

class BrowserSurface : public BrowserHost {};

} // namespace

TEST_F(BrowserSurface, properties) {
    const ArtCatBrowser fresh;
    const QString helpfile = fresh.Helpfile();
    EXPECT_TRUE(helpfile.endsWith(u"mklart25.chm"_s)) << helpfile.toStdString();
    const Long art = fresh.LeftCategoryTreeView(), list = fresh.LeftArticleListView();
    EXPECT_EQ(propertyLines(fresh), (QStringList{
                                        u"ActivePane: acbPanes, get"_s,
                                        u"AllowDragDrop: bool, get let = true, in the bag"_s,
                                        u"ArticleListView: ListView*, get"_s,
                                        u"ArticlePoolListView: ListView*, get"_s,
                                        u"CategoryTreeView: TreeView*, get"_s,
                                        u"CurrentSenderID: int, get let = 0"_s,
                                        u"Edited: bool, get = false"_s,
                                        u"HelpContextID: int, get let = 1024"_s,
                                        u"HelpContextIDExternal: int, get let = 1024"_s,
                                        u"HelpEvent: bool, get let = false"_s,
                                        u"Helpfile: QString, get let = "_s + helpfile,
                                        u"Imageset: acbImagesets, get let = 0, in the bag"_s,
                                        u"LeftArticleListView: int, get = %1"_s.arg(list),
                                        u"LeftCategoryTreeView: int, get = %1"_s.arg(art),
                                        u"ReplicaID: int, get let = 0"_s,
                                        u"ShowArticleList: bool, get let = true, in the bag"_s,
                                        u"ShowArticlePool: bool, get let = true, in the bag"_s,
                                        u"ShowStatusBar: bool, get let = true, in the bag"_s,
                                        u"WorkgroupFilter: QString, get let = Like '*'"_s,
                                        u"changeNotice: bool, get let = false"_s,
                                        u"editKeys: bool, get let = false"_s,
                                        u"hWnd: int, get"_s,
                                        u"keepsView: bool, get let = false"_s,
                                        u"springOpenInterval: int, get let = 0"_s,
                                    }));
}

// Properties with an index, and those that can only be set, are methods here.
TEST_F(BrowserSurface, methods) {
    EXPECT_EQ(methodLines(QMetaMethod::Method), (QStringList{
                                                    u"setAppName(QString AppName)"_s,
                                                    u"setBackend(Ref<Database> Backend)"_s,
                                                    u"QString Filter(acbPanes Pane)"_s,
                                                    u"setFilter(acbPanes Pane, QString Filter)"_s,
                                                    u"setHelper(Ref<SessionHelper> Helper)"_s,
                                                    u"Long Selected(acbPanes Pane)"_s,
                                                    u"setSelected(acbPanes Pane, Long Selected)"_s,
                                                    u"acbMenus ShowMenu(acbPanes Pane)"_s,
                                                    u"setShowMenu(acbPanes Pane, acbMenus ShowMenu)"_s,
                                                    u"setWorkspace(Ref<Workspace> Workspace)"_s,
                                                    u"double PaneWidth(acbPanes Pane)"_s,
                                                    u"setPaneWidth(acbPanes Pane, double PaneWidth)"_s,
                                                    u"Long Populate()"_s,
                                                    u"RefreshItem(Long ItemKey, acbPanes Pane)"_s,
                                                    u"RefreshPane(acbPanes Pane)"_s,
                                                    u"PaneResize()"_s,
                                                    u"Long PositionEditor(Long lValue, Long lMaxPos)"_s,
                                                    u"Long PositionEditor(Long lValue)"_s,
                                                    u"Long PositionEditor()"_s,
                                                }));
}

TEST_F(BrowserSurface, events) {
    const QString mouse = u"(Integer& Button, Integer& Shift, Single& X, Single& Y)"_s;
    EXPECT_EQ(methodLines(QMetaMethod::Signal), (QStringList{
                                                    u"ItemSelected(Long NewID, acbPanes Pane)"_s,
                                                    u"ItemClick(Item* obj, Long ID, acbPanes& Pane)"_s,
                                                    u"Resize(Long LeftCategoryTreeView, Long LeftArticleListView)"_s,
                                                    u"Click()"_s,
                                                    u"DblClick()"_s,
                                                    u"MenuPropertiesClick(Long ID, acbPanes Pane)"_s,
                                                    u"Quit()"_s,
                                                    u"PaneDblClick(acbPanes Pane)"_s,
                                                    u"PaneClick(acbPanes Pane)"_s,
                                                    u"Help()"_s,
                                                    u"MouseDown"_s + mouse,
                                                    u"MouseMove"_s + mouse,
                                                    u"MouseUp"_s + mouse,
                                                }));
}

TEST_F(BrowserSurface, constants) {
    EXPECT_EQ(enumLines("acbPanes"),
              (QStringList{u"acbPaneArticlePool = 0"_s, u"acbPaneArticleList = 1"_s, u"acbPaneCategoryTree = 2"_s}));
    EXPECT_EQ(enumLines("acbImagesets"), (QStringList{u"acbImageset1 = 0"_s, u"acbImageset2 = 1"_s}));
    EXPECT_EQ(enumLines("acbMenus"),
              (QStringList{u"acbMenuNone = 2"_s, u"acbMenuEditPosition = 4"_s, u"acbMenuSortAlphabetical = 8"_s,
                           u"abcMenuNew = 16"_s, u"acbMenuRename = 32"_s, u"acbMenuDelete = 64"_s,
                           u"acbMenuActivate = 128"_s, u"acbMenuFind = 256"_s, u"acbMenuFilter = 512"_s,
                           u"acbMenuProperties = 1024"_s, u"acbMenuQuit = 2048"_s}));
}

TEST_F(BrowserSurface, helpOfTheMembers) {
    const QList<std::pair<QString, QString>> table{
        {u"ActivePane"_s, u"Gibt das aktive Steuerelement zurück"_s},
        {u"AllowDragDrop"_s, u"Drag&Drop zulassen j/n"_s},
        {u"AppName"_s, u"Anwendungsname, der in Meldungen des Controls angezeigt wird"_s},
        {u"Backend"_s, u"Verweis auf das Merkalon-Backend (notwendig)"_s},
        {u"CurrentSenderID"_s, u"Schlüssel des aktuellen Absenders"_s},
        {u"Edited"_s, u"TRUE, wenn Daten im Control geändert wurden"_s},
        {u"Filter"_s, u"Ein Filterausdruck, mit dem die Ausgabe im jeweiligen Objekt eingeschränkt werden kann"_s},
        {u"Helper"_s, u"Verweis auf die Merkalon-Helper-DLL (wird ggf. automatisch erstellt)"_s},
        {u"HelpContextID"_s, {}},
        {u"HelpContextIDExternal"_s, {}},
        {u"HelpEvent"_s, {}},
        {u"Helpfile"_s, {}},
        {u"hWnd"_s, u"Zugriffsnummer des Steuerelementfensters"_s},
        {u"Imageset"_s, u"Legt die im Steuerelement angezeigten Icons fest"_s},
        {u"LeftArticleListView"_s, u"Linker Rand der Artikelliste"_s},
        {u"LeftCategoryTreeView"_s, u"Linker Rand der Kategorieanzeige"_s},
        {u"ArticlePoolListView"_s, u"Verweis auf das ListView-Steuerelement der Gesamtartikelanzeige"_s},
        {u"ArticleListView"_s, u"Verweis auf das ListView-Steuerelement der rechten Artikelliste"_s},
        {u"ReplicaID"_s, u"Keine Funktion!"_s},
        {u"Selected"_s, u"Gibt die ID des ausgewählten Artikels bzw. der ausgewählten Kategorie zurück bzw. legt sie "
                        "fest"_s},
        {u"ShowArticleList"_s, u"TRUE, wenn die Artikelliste angezeigt werden soll"_s},
        {u"ShowArticlePool"_s, u"TRUE, wenn die Gesamt-Artikelliste angezeigt werden soll"_s},
        {u"ShowMenu"_s, u"Legt fest bzw. gibt zurück, welche Kontextmenüs angezeigt werden"_s},
        {u"ShowStatusBar"_s, u"Legt fest bzw. gibt zurück, ob die Statuszeile angezeigt wird"_s},
        {u"CategoryTreeView"_s, u"Gibt einen Vereweis auf das TreeView-Steuerelement zurück"_s},
        {u"WorkgroupFilter"_s, u"Filterausdruck, um die Ausgabe auf eine Arbeitsgruppe einzuschränken"_s},
        {u"Workspace"_s, u"Der Arbeitsbereich wird für die Editierfunktionen benötigt, um die Transaktionen "
                         "auszuführen"_s},
        {u"PaneWidth"_s, u"Legt die Breite eines Steuerelements fest bzw. gibt sie zurück"_s},
        {u"Populate"_s, u"Füllt das Control mit Daten\r\nReturn: Anzahl der Kategorien"_s},
        {u"RefreshItem"_s, u"Aktualisiert die Anzeige des durch den Schlüssel ItemKey definierten Elements im Objekt "
                           "Pane"_s},
        {u"RefreshPane"_s, u"Liest die Daten für Objekt Pane neu ein"_s},
        {u"PaneResize"_s, u"Muss aufgerufen werden, nachdem die PaneWidth-Eigenschaft geändert wurde"_s},
        {u"PositionEditor"_s, u"Öffnet den Editor für die Änderung der Position. Return: 0=Abbruch, keine Änderung "
                              "oder Fehler, sonst gewählte Position"_s},
        {u"ItemSelected"_s, u"Wird ausgelöst, wenn ein neuer Artikel und/oder eine neue Kategorie ausgewählt wird. "
                            "\r\nNewID ist der betreffende Schlüssel. Das Argument Pane zeigt an, in welchem Objekt "
                            "die Änderung erfolgt ist"_s},
        {u"ItemClick"_s,
         u"Wird ausgelöst, wenn auf ein Element eines List- oder TreeView-Steuerelements geklickt wird"_s},
        {u"Resize"_s, u"Wird ausgelöst, wenn die Grössen der Elemente des Steuerelements verändert werden"_s},
        {u"Click"_s, {}},
        {u"DblClick"_s, {}},
        {u"MenuPropertiesClick"_s,
         u"Wird durch das Kontextmenü \"Eigenschaften\" des Kategoriebaums oder der Artikellisten ausgelöst. \r\nID "
         "ist der betreffende Schlüssel. Das Argument Pane zeigt das Element an, in dem das Ereignis ausgelöst wurde"_s},
        {u"Quit"_s, u"Wird durch das Kontextmenü \"Schließen\" ausgelöst."_s},
        {u"PaneDblClick"_s, u"Wird beim Doppelklicken auf ein Steuerelement ausgelöst"_s},
        {u"PaneClick"_s, u"Wird beim Klicken auf ein Steuerelement ausgelöst"_s},
        {u"Help"_s, {}},
        {u"MouseDown"_s, {}},
        {u"MouseMove"_s, {}},
        {u"MouseUp"_s, {}},
    };
    for (const auto& [member, help] : table)
        EXPECT_EQ(ArtCatBrowser::memberHelp(member), help) << member.toStdString();
}

TEST_F(BrowserSurface, menusShowEverythingAtFirst) {
    for (const acbPanes pane : {acbPaneArticlePool, acbPaneArticleList, acbPaneCategoryTree}) {
        EXPECT_EQ(browser->ShowMenu(pane), 4092);
        browser->setShowMenu(pane, static_cast<acbMenus>(2 + 1024));
        EXPECT_EQ(browser->ShowMenu(pane), 1026);
    }
}

TEST_F(BrowserSurface, menusOfAnotherPaneAreOutOfBounds) {
    for (const Long number : {-1, 3}) {
        const auto pane = static_cast<acbPanes>(number);
        EXPECT_EQ(errorOf([&] { browser->ShowMenu(pane); }), 9);
        EXPECT_EQ(errorOf([&] { browser->setShowMenu(pane, acbMenuNone); }), 9);
    }
}

TEST_F(BrowserSurface, theReplicaHasNoFunction) {
    browser->setReplicaID(7);
    EXPECT_EQ(browser->ReplicaID(), 0);
}

TEST_F(BrowserSurface, whatIsStoredReadsBack) {
    browser->setCurrentSenderID(7);
    browser->setAllowDragDrop(false);
    browser->setHelpEvent(true);
    EXPECT_EQ(browser->CurrentSenderID(), 7);
    EXPECT_FALSE(browser->AllowDragDrop());
    EXPECT_TRUE(browser->HelpEvent());
    EXPECT_EQ(hub().state.AppName, u"Merkalon II.5"_s);
    browser->setAppName(u"Probe"_s);
    EXPECT_EQ(hub().state.AppName, u"Probe"_s);
    EXPECT_EQ(browser->hWnd(), Long(browser->winId()));
}

TEST_F(BrowserSurface, theBagKeepsWhatDiffersFromTheDefault) {
    PropertyBag bag;
    browser->WriteProperties(bag);
    EXPECT_EQ(bag.names(), QStringList());
    browser->setShowArticlePool(false);
    browser->setAllowDragDrop(false);
    browser->setImageset(acbImageset2);
    browser->WriteProperties(bag);
    QStringList names = bag.names();
    names.sort();
    EXPECT_EQ(names, (QStringList{u"AllowDragDrop"_s, u"Imageset"_s, u"ShowArticlePool"_s}));
    EXPECT_EQ(bag.ReadProperty(u"IMAGESET"_s), QVariant(Long{1}));
}

TEST_F(BrowserSurface, aBagComesBackWhole) {
    PropertyBag bag;
    bag.WriteProperty(u"showstatusbar"_s, false);
    bag.WriteProperty(u"ShowArticlePool"_s, false);
    bag.WriteProperty(u"ShowArticleList"_s, false);
    bag.WriteProperty(u"AllowDragDrop"_s, false);
    bag.WriteProperty(u"Imageset"_s, Long{1});
    events.record(browser.get(), &ArtCatBrowser::Resize, u"Resize"_s);
    QObject::connect(browser.get(), &ArtCatBrowser::PropertyChanged,
                     [this](const QString& name) { events.note(name); });
    browser->ReadProperties(bag);
    EXPECT_EQ(events.take().size(), 1) << "one layout for all, and nothing new to store";
    EXPECT_FALSE(browser->ShowStatusBar());
    EXPECT_FALSE(browser->ShowArticlePool());
    EXPECT_FALSE(browser->ShowArticleList());
    EXPECT_FALSE(browser->AllowDragDrop());
    EXPECT_EQ(browser->Imageset(), acbImageset2);
    EXPECT_FALSE(Visible(pool()));
    EXPECT_FALSE(Visible(list()));
    EXPECT_FALSE(constituent<StatusBar>(u"SB"_s).Panels(u"LV"_s).Visible());
    EXPECT_FALSE(constituent<StatusBar>(u"SB"_s).Panels(u"LVArt"_s).Visible());
    EXPECT_FALSE(Visible(constituent<StatusBar>(u"SB"_s)));
    browser->InitProperties();
    EXPECT_TRUE(browser->ShowStatusBar());
    EXPECT_TRUE(browser->ShowArticlePool());
    EXPECT_TRUE(browser->ShowArticleList());
    EXPECT_TRUE(browser->AllowDragDrop());
    EXPECT_EQ(browser->Imageset(), acbImageset1);
    EXPECT_TRUE(Visible(pool()));
    EXPECT_TRUE(Visible(list()));
}

TEST_F(BrowserSurface, settersOneByOneEndAsABagDoes) {
    PropertyBag bag;
    bag.WriteProperty(u"ShowArticlePool"_s, false);
    bag.WriteProperty(u"ShowStatusBar"_s, false);
    ArtCatBrowser byBag, bySetters;
    byBag.ReadProperties(bag);
    bySetters.setShowArticlePool(false);
    bySetters.setShowStatusBar(false);
    for (ArtCatBrowser* each : {&byBag, &bySetters}) {
        each->resize(800, 400);
        each->show();
    }
    const auto places = [](const ArtCatBrowser& control) {
        QStringList lines;
        for (const auto* child : control.Controls())
            lines.append(
                u"%1 %2 %3 %4"_s.arg(child->objectName()).arg(Left(*child)).arg(Width(*child)).arg(Visible(*child)));
        return lines;
    };
    EXPECT_EQ(places(byBag), places(bySetters));
}

TEST_F(BrowserSurface, aSetPropertyOfTheBagIsToBeStored) {
    QObject::connect(browser.get(), &ArtCatBrowser::PropertyChanged,
                     [this](const QString& name) { events.note(name); });
    browser->setShowArticleList(false);
    browser->setShowArticlePool(false);
    browser->setShowStatusBar(false);
    browser->setCurrentSenderID(3);
    EXPECT_EQ(events.take(), (QStringList{u"ShowArticleList"_s, u"ShowArticlePool"_s, u"ShowStatusBar"_s}));
}
