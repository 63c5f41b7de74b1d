// What mouse, keyboard and focus tell the host, beside the selection.
#include "browser/BrowserHost.h"
#include "controls/Extender.h"
#include "controls/PictureBox.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

using namespace mkl;

namespace {

class BrowserEvents : public BrowserHost {
protected:
    BrowserEvents()
        : BrowserHost(u"41 Schrauben: 12 Senkkopf, 4711 Linse\n50 Werkzeug: 7 Ahle"_s) {
        browser->show();
        browser->Populate();
        QApplication::processEvents();
        events.take();
        events.record(browser.get(), &ArtCatBrowser::Click, u"Click"_s);
        events.record(browser.get(), &ArtCatBrowser::DblClick, u"DblClick"_s);
        events.record(browser.get(), &ArtCatBrowser::PaneClick, u"PaneClick"_s);
        events.record(browser.get(), &ArtCatBrowser::PaneDblClick, u"PaneDblClick"_s);
        events.record(browser.get(), &ArtCatBrowser::Help, u"Help"_s);
    }

    static QPoint middleOfRow(const ItemView& view, int row) {
        return view.visualRect(view.model()->index(row, 0)).center();
    }
    static void click(const ItemView& view, int row) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, middleOfRow(view, row));
    }
    static void clickOn(QWidget& widget) { QTest::mouseClick(&widget, Qt::LeftButton); }
    QStringList clicks() { return events.take().filter(u"Click("_s).filter(QRegularExpression(u"^(?!Item)"_s)); }
};

} // namespace

TEST_F(BrowserEvents, aClickOnAPaneComesBeforeItsPaneClick) {
    const QList<std::pair<const ItemView*, QString>> panes{{&pool(), u"0"_s}, {&list(), u"1"_s}, {&tree(), u"2"_s}};
    for (const auto& [view, number] : panes) {
        click(*view, 0);
        EXPECT_EQ(clicks(), (QStringList{u"Click()"_s, u"PaneClick(%1)"_s.arg(number)}));
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, middleOfRow(*view, 0));
        EXPECT_EQ(clicks().filter(u"Dbl"_s), (QStringList{u"DblClick()"_s, u"PaneDblClick(%1)"_s.arg(number)}));
    }
}

TEST_F(BrowserEvents, theSelectionIsToldBeforeTheClick) {
    click(list(), 1);
    EXPECT_EQ(events.take(),
              (QStringList{u"ItemSelected(4711, 1)"_s, u"ItemClick(A2, 2, 1)"_s, u"Click()"_s, u"PaneClick(1)"_s}));
}

TEST_F(BrowserEvents, splittersAndStatusBarAreClickedWithoutAPane) {
    auto& bar = constituent<StatusBar>(u"SB"_s);
    for (QWidget* part : std::initializer_list<QWidget*>{&bar.Panels(u"TV"_s), &bar.Panels(u"LV"_s),
                                                         &constituent<PictureBox>(u"picSplitter"_s),
                                                         &constituent<PictureBox>(u"picSplitterArt"_s)}) {
        clickOn(*part);
        EXPECT_EQ(clicks(), QStringList{u"Click()"_s}) << part->objectName().toStdString();
        QTest::mouseDClick(part, Qt::LeftButton);
        EXPECT_EQ(clicks().filter(u"Dbl"_s), QStringList{u"DblClick()"_s}) << part->objectName().toStdString();
    }
    Q_EMIT bar.Click();
    Q_EMIT bar.DblClick();
    EXPECT_EQ(clicks(), (QStringList{u"Click()"_s, u"DblClick()"_s})) << "beside the panels";
}

TEST_F(BrowserEvents, mouseEventsStandInTheControlsOwnCoordinates) {
    QStringList lines;
    const auto note = [&lines](const QString& name) {
        return [&lines, name](Integer& Button, Integer& Shift, Single& X, Single& Y) {
            lines.append(u"%1 %2 %3 %4 %5"_s.arg(name).arg(Button).arg(Shift).arg(X).arg(Y));
        };
    };
    QObject::connect(browser.get(), &ArtCatBrowser::MouseDown, note(u"down"_s));
    QObject::connect(browser.get(), &ArtCatBrowser::MouseMove, note(u"move"_s));
    QObject::connect(browser.get(), &ArtCatBrowser::MouseUp, note(u"up"_s));
    for (const ItemView* view : std::initializer_list<const ItemView*>{&pool(), &tree(), &list()}) {
        const QPoint middle = middleOfRow(*view, 0);
        const QPoint inside = view->contentsRect().topLeft(); // the frame does not count
        const QPoint inControl = view->viewport()->mapTo(browser.get(), middle) - inside;
        QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::ControlModifier, middle);
        QTest::mouseMove(view->viewport(), middle);
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::ControlModifier, middle);
        const Single remainder = Left(*view) - 15 * view->x(); // what pixels cannot hold
        const QString place = u"%1 %2"_s.arg(15 * inControl.x() + remainder).arg(15 * inControl.y());
        EXPECT_EQ(lines.value(0), u"down 1 2 "_s + place) << view->objectName().toStdString();
        EXPECT_EQ(lines.last(), u"up 1 2 "_s + place) << view->objectName().toStdString();
        lines.clear();
    }
}

TEST_F(BrowserEvents, mouseArgumentsGoBackToThePane) {
    Single seen = 0;
    QObject::connect(browser.get(), &ArtCatBrowser::MouseDown,
                     [](Integer&, Integer&, Single& X, Single&) { X += 100; });
    QObject::connect(&list(), &ItemView::MouseDown, [&seen](Integer&, Integer&, Single& X, Single&) { seen = X; });
    const QPoint middle = middleOfRow(list(), 0);
    QTest::mousePress(list().viewport(), Qt::LeftButton, {}, middle);
    QTest::mouseRelease(list().viewport(), Qt::LeftButton, {}, middle);
    EXPECT_FLOAT_EQ(seen, 15 * Single(list().viewport()->mapTo(&list(), middle).x() - list().contentsRect().x()) + 100);
}

TEST_F(BrowserEvents, helpIsTheHostsIfItWantsTo) {
    QWidget host;
    browser->setParent(&host);
    host.show();
    struct Watch : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            keys += event->type() == QEvent::KeyPress;
            return false;
        }
        int keys = 0;
    } watch;
    host.installEventFilter(&watch);
    QTest::keyClick(&tree(), Qt::Key_F1);
    EXPECT_EQ(events.take(), QStringList());
    EXPECT_EQ(watch.keys, 1) << "the key passes";
    browser->setHelpEvent(true);
    for (QWidget* pane :
         {static_cast<QWidget*>(&tree()), static_cast<QWidget*>(&list()), static_cast<QWidget*>(&pool())}) {
        pane->setFocus();
        QTest::keyClick(pane, Qt::Key_F1);
        EXPECT_EQ(events.take(), QStringList{u"Help()"_s});
    }
    EXPECT_EQ(watch.keys, 1) << "the key is used up";
    browser->setParent(nullptr);
}

TEST_F(BrowserEvents, theActivePaneHasTheFocusOrHadItLast) {
    const ArtCatBrowser fresh;
    EXPECT_EQ(errorOf([&] { static_cast<void>(fresh.ActivePane()); }), 91);
    list().setFocus();
    EXPECT_EQ(browser->ActivePane(), acbPaneArticleList);
    tree().setFocus();
    EXPECT_EQ(browser->ActivePane(), acbPaneCategoryTree);
    pool().setFocus();
    EXPECT_EQ(browser->ActivePane(), acbPaneArticlePool);
    constituent<StatusBar>(u"SB"_s).setFocus();
    EXPECT_EQ(browser->ActivePane(), acbPaneArticlePool) << "whatever is none of the three";
}

TEST_F(BrowserEvents, theNamesOfThePanesCompareWithoutCase) {
    list().setFocus();
    list().setObjectName(u"lv"_s);
    EXPECT_EQ(browser->ActivePane(), acbPaneArticleList);
}

TEST_F(BrowserEvents, theControlMayBeDeletedInEveryEvent) {
    const auto deleteIn = [this](auto signal, const std::function<void()>& doing) {
        browser.reset();
        makeBrowser();
        browser->show();
        browser->Populate();
        QApplication::processEvents();
        QObject::connect(browser.get(), signal, [this] { browser.reset(); });
        doing();
        EXPECT_EQ(browser, nullptr);
    };
    deleteIn(&ArtCatBrowser::ItemSelected, [this] { browser->setSelected(acbPaneCategoryTree, 50); });
    deleteIn(&ArtCatBrowser::ItemSelected, [this] { browser->setSelected(acbPaneArticleList, 99); });
    deleteIn(&ArtCatBrowser::ItemClick, [this] { browser->setSelected(acbPaneArticlePool, 4711); });
    deleteIn(&ArtCatBrowser::Resize, [this] { browser->setShowArticleList(false); });
    deleteIn(&ArtCatBrowser::Resize, [this] { browser->setShowArticlePool(false); });
    deleteIn(&ArtCatBrowser::Resize, [this] { browser->setShowStatusBar(false); });
    deleteIn(&ArtCatBrowser::PropertyChanged, [this] { browser->setShowStatusBar(false); });
    deleteIn(&ArtCatBrowser::Resize, [this] { browser->PaneResize(); });
}
