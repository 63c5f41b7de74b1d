#include "browser/BrowserHost.h"
#include "controls/Extender.h"

#include <QLabel>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

/// Records what is on show whenever the message queue is served.
class ProgressOnShow : public BrowserHost {
protected:
    ProgressOnShow()
        : BrowserHost(u"41 Schrauben\n50 Werkzeug"_s) {
        pump.whenServed = [this] { seen.append(onShow()); };
    }

    QString onShow() const {
        QStringList names;
        for (const QString& name : {u"LVArt"_s, u"TV"_s, u"LV"_s, u"SB"_s, u"PB"_s, u"lblStatus"_s})
            if (constituent<QWidget>(name).isVisibleTo(browser.get())) names.append(name);
        return names.join(u' ');
    }

    QStringList seen;
};

} // namespace

TEST_F(ProgressOnShow, aReadHidesThePanesAndRestoresThem) {
    browser->Populate();
    EXPECT_EQ(seen, (QStringList{
                        u"SB lblStatus"_s, // the panes went
                        u"lblStatus"_s,    // the status bar went
                        u"PB lblStatus"_s, // the display stands, for the pool
                        u"PB lblStatus"_s, // and the same for the tree
                        u"PB lblStatus"_s,
                        u"PB lblStatus"_s,
                        u"LVArt TV LV SB"_s,
                    }));
}

TEST_F(ProgressOnShow, withoutStatusBarTheQueueIsServedOnceLess) {
    browser->setShowStatusBar(false);
    browser->Populate();
    EXPECT_EQ(seen,
              (QStringList{QString(), u"PB lblStatus"_s, u"PB lblStatus"_s, u"PB lblStatus"_s, u"LVArt TV LV"_s}));
}

TEST_F(ProgressOnShow, panesThatAreOffStayOff) {
    browser->setShowArticleList(false);
    browser->setShowArticlePool(false);
    browser->Populate();
    EXPECT_EQ(seen.last(), u"TV SB"_s);
}

TEST_F(ProgressOnShow, aFailureRestoresThePanesToo) {
    browser->setFilter(acbPaneCategoryTree, u"[Aktiv]="_s);
    browser->Populate();
    EXPECT_EQ(onShow(), u"LVArt TV LV SB"_s);
    browser->setBackend({});
    browser->Populate();
    EXPECT_EQ(onShow(), u"LVArt TV LV SB"_s);
}

TEST_F(ProgressOnShow, barAndTextStandAtTheBottomInFullWidth) {
    const auto& bar = constituent<ProgressBar>(u"PB"_s);
    const auto& label = constituent<QLabel>(u"lblStatus"_s);
    const Single statusHeight = Height(constituent<StatusBar>(u"SB"_s));
    QString text;
    pump.whenServed = [&] {
        if (bar.isVisibleTo(browser.get())) text = label.text();
    };
    browser->Populate();
    EXPECT_EQ(text, u"Kategorien einlesen ..."_s);
    EXPECT_EQ(Height(bar), statusHeight);
    EXPECT_EQ(Left(bar), 0);
    EXPECT_EQ(Width(bar), browser->ScaleWidth());
    EXPECT_EQ(Top(bar), browser->ScaleHeight() - Height(bar));
    EXPECT_EQ(Left(label), 0);
    EXPECT_EQ(Width(label), browser->ScaleWidth());
    EXPECT_EQ(Top(label), Top(bar) - Height(label) - 100);
}

TEST_F(ProgressOnShow, theBarCountsTheRoots) {
    const auto& bar = constituent<ProgressBar>(u"PB"_s);
    Long atTheStart = -1;
    pump.whenServed = [&] {
        if (atTheStart < 0 && bar.isVisibleTo(browser.get())) atTheStart = bar.Value();
    };
    catalogue.addCategory({.key = 60, .name = u"Kind"_s, .parent = 41});
    browser->Populate();
    EXPECT_EQ(atTheStart, bar.Min());
    EXPECT_EQ(bar.Max(), 2);
    EXPECT_EQ(bar.Value(), 2);
}
