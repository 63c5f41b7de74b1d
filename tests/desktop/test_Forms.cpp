// The browser's forms on a real display: keys, window manager, place.
#include "browser/dialogs/frmArtCatBrowserOrder.h"
#include "browser/dialogs/frmArticleNewPos.h"
#include "browser/dialogs/frmNewCat.h"
#include "browser/dialogs/frmNewPosition.h"
#include "desktop/Desktop.h"
#include "support/Printing.h"
#include "support/ScriptedAsker.h"

#include <QApplication>
#include <QTimer>
#include <QWindow>
#include <memory>

namespace mkl::desktop {

using namespace Qt::StringLiterals;

namespace {

class FormsTest : public ::testing::Test {
protected:
    FormsTest() {
        host_->setWindowTitle(u"Wirt"_s);
        host_->resize(900, 550);
        host_->move(placedAt_);
        owner_ = new QWidget(host_.get());
        host_->show();
        EXPECT_TRUE(waitUntil([this] {
            host_->activateWindow();
            return host_->isActiveWindow();
        }));
        // A form is placed over what is known of the window; with its frame it comes to its place a little later.
        EXPECT_TRUE(waitUntil(
            [this] { return host_->frameGeometry().top() < host_->geometry().top() && host_->pos() == placedAt_; }));
    }

    /// Shows the form; the user does this once it has the keyboard. One that is still there then is closed.
    void show(Form& form, const std::function<void()>& user) {
        QTimer::singleShot(0, &form, [&] {
            EXPECT_TRUE(waitUntil([&] { return form.isActiveWindow(); }));
            user();
            EXPECT_TRUE(waitUntil([&] { return !form.isVisible(); })) << "still shown";
            if (form.isVisible()) form.reject();
        });
        form.Show();
    }
    void showAndPress(Form& form, const QString& keys) {
        show(form, [&] { press(keys); });
    }

    const QPoint placedAt_{150, 100};
    std::unique_ptr<QWidget> host_ = std::make_unique<QWidget>();
    QWidget* owner_;
};

Integer answerOf(const frmNewPosition& form) {
    return form.chkCancel.Value();
}

} // namespace

TEST_F(FormsTest, ThePositionIsTypedAndConfirmed) {
    frmNewPosition form(owner_);
    form.UD.setRange(1, 30);
    form.UD.setValue(5);
    form.UD.selectAll();
    show(form, [&] {
        keepPicture(u"frmNewPosition"_s);
        press(u"1"_s);
        press(u"2"_s);
        press(u"alt+o"_s);
    });
    EXPECT_EQ(form.chkCancel.Value(), 0);
    EXPECT_EQ(form.UD.Value(), 12);
}

TEST_F(FormsTest, KeysOfThePositionForm) {
    for (const auto& [keys, answer] : {std::pair(u"alt+o"_s, 0), {u"alt+a"_s, 1}, {u"Escape"_s, 1}, {u"alt+F4"_s, 1}}) {
        frmNewPosition form(owner_);
        form.chkCancel.setValue(Integer(1 - answer));
        showAndPress(form, keys);
        EXPECT_EQ(answerOf(form), answer) << keys.toStdString();
    }
}

TEST_F(FormsTest, KeysOfTheFormForArticles) {
    for (const auto& [keys, answer] : {std::pair(u"Return"_s, 0),
                                       {u"KP_Enter"_s, 0},
                                       {u"alt+o"_s, 0},
                                       {u"ctrl+o"_s, 0},
                                       {u"shift+o"_s, 0},
                                       {u"Escape"_s, 1},
                                       {u"alt+a"_s, 1},
                                       {u"ctrl+a"_s, 1},
                                       {u"shift+a"_s, 1},
                                       {u"alt+F4"_s, 1}}) {
        frmArticleNewPos form(owner_);
        form.pubInit(u"Schrauben"_s, u"Muttern"_s, 12, 2, 3);
        form.UD.setFocus();
        form.chkCancel.setValue(Integer(1 - answer));
        showAndPress(form, keys);
        EXPECT_EQ(form.chkCancel.Value(), answer) << keys.toStdString();
    }
}

TEST_F(FormsTest, OptionsAreReachedByArrowsAndTab) {
    frmArticleNewPos form(owner_);
    form.pubInit(u"Schrauben"_s, {}, 12, 2, 0);
    show(form, [&] {
        press(u"Down"_s);
        press(u"Down"_s);
        press(u"Tab"_s);
        press(u"7"_s);
        keepPicture(u"frmArticleNewPos"_s);
        press(u"Return"_s);
    });
    EXPECT_EQ(form.chkCancel.Value(), 0);
    EXPECT_TRUE(form.Opt(2).Value());
    EXPECT_EQ(form.UD.Value(), 7);
}

TEST_F(FormsTest, KeysOfTheQuestionBehindADrop) {
    const auto ask = [this](const QString& keys) {
        Long answer = -1;
        QTimer::singleShot(0, owner_, [&] {
            const auto form = [] { return dynamic_cast<Form*>(QApplication::activeModalWidget()); };
            EXPECT_TRUE(waitUntil([&] { return form() && form()->isActiveWindow(); }));
            keepPicture(u"frmArtCatBrowserOrder"_s);
            press(keys);
            EXPECT_TRUE(waitUntil([&] { return !form(); })) << keys.toStdString();
            if (form()) form()->reject();
        });
        answer = OrderDialog(owner_, u"Die Kategorien vertauschen"_s, u"Davor verschieben"_s, u"Unterordnen"_s);
        return answer;
    };
    EXPECT_EQ(ask(u"alt+o"_s), 2);
    EXPECT_EQ(ask(u"alt+a"_s), 0);
    EXPECT_EQ(ask(u"Escape"_s), 0);
    EXPECT_EQ(ask(u"alt+F4"_s), 0);
}

TEST_F(FormsTest, KeysOfTheFormForACategory) {
    const ScriptedAsker user;
    for (const auto& [keys, answer] :
         {std::pair(u"alt+o"_s, u"h|2"_s), {u"alt+a"_s, u"|0"_s}, {u"Escape"_s, u"|0"_s}, {u"alt+F4"_s, u"|0"_s}}) {
        frmNewCat form(owner_);
        form.A_Init(makeRef<ErrorHandler>(), makeRef<FunctionLibrary>(), {}, u"Like '*'"_s); // no database: any is free
        show(form, [&] {
            press(u"h"_s);
            keepPicture(u"frmNewCat"_s);
            press(keys);
        });
        EXPECT_EQ(form.txtCatName.Text() + u'|' + form.txtResult.Text(), answer) << keys.toStdString();
    }
}

TEST_F(FormsTest, StandsOverItsOwnersWindow) {
    frmNewPosition form(owner_);
    show(form, [&] {
        const auto distance = [&] {
            return (form.frameGeometry().center() - host_->frameGeometry().center()).manhattanLength();
        };
        EXPECT_TRUE(waitUntil([&] { return distance() <= 40; })) << distance();
        const QString over = runTool(u"xprop"_s, {u"-id"_s, QString::number(form.winId()), u"WM_TRANSIENT_FOR"_s});
        EXPECT_TRUE(over.endsWith(u"0x"_s + QString::number(host_->winId(), 16))) << over.toStdString();
        press(u"Escape"_s);
    });
}

TEST_F(FormsTest, ShownAgainItStandsWhereTheUserLeftIt) {
    frmNewPosition form(owner_);
    QPoint place;
    show(form, [&] {
        xdotool({u"windowmove"_s, QString::number(form.winId()), u"60"_s, u"420"_s});
        EXPECT_TRUE(waitUntil([&] { return (form.pos() - QPoint(60, 420)).manhattanLength() < 60; }));
        place = form.geometry().topLeft();
        press(u"Escape"_s);
    });
    for (int times = 0; times < 3; ++times)
        show(form, [&] {
            EXPECT_LE((form.geometry().topLeft() - place).manhattanLength(), 2) << times;
            press(u"Escape"_s);
        });
}

TEST_F(FormsTest, ItsOwnersWindowMayGo) {
    frmNewPosition form(owner_);
    form.chkCancel.setValue(0);
    show(form, [&] { host_.reset(); });
    EXPECT_EQ(form.chkCancel.Value(), 1);
}

} // namespace mkl::desktop
