#pragma once
// A host on show, with the mouse in its hand.
#include "browser/AssignmentHost.h"
#include "browser/dialogs/frmArtCatBrowserOrder.h"
#include "browser/dialogs/frmArticleNewPos.h"
#include "controls/Image.h"
#include "controls/IntervalTimer.h"
#include "support/FixedReplica.h"
#include "support/ScriptedForms.h"
#include "support/WindowMouse.h"

namespace mkl {

class DragHost : public AssignmentHost {
protected:
    explicit DragHost(const QString& picture)
        : AssignmentHost(picture) {
        browser->setHelper(makeRef<FixedReplica>(3));
        browser->resize(700, 500); // the platform without a display has a small screen
        browser->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(browser.get()));
    }
    ~DragHost() override { WindowMouse::releaseAll(); }

    const DragState& drag() const { return hub().state.drag; }
    IntervalTimer& timer() const { return *browser->findChild<IntervalTimer*>(u"DragTimer"_s); }

    void press(ListView& list, Long row, Qt::KeyboardModifiers modifiers = {}) const {
        WindowMouse::pressAt(list, WindowMouse::placeOf(list, row), modifiers);
    }
    void press(Long category, Qt::KeyboardModifiers modifiers = {}) const {
        WindowMouse::pressAt(tree(), WindowMouse::placeOf(tree(), node(category)), modifiers);
    }
    /// The time until a drag begins is over.
    void wait() const { timer().tick(); }
    void over(ListView& list, Long row) const { WindowMouse::moveTo(list, WindowMouse::placeOf(list, row)); }
    void over(Long category) const { WindowMouse::moveTo(tree(), WindowMouse::placeOf(tree(), node(category))); }
    void overFreeArea(QWidget& view) const { WindowMouse::moveTo(view, freeArea(view)); }
    void dropOn(ListView& list, Long row) const { WindowMouse::releaseAt(list, WindowMouse::placeOf(list, row)); }
    void dropOn(Long category) const {
        over(category);
        WindowMouse::releaseAt(tree(), WindowMouse::placeOf(tree(), node(category)));
    }
    void dropOnFreeArea(QWidget& view) const { WindowMouse::releaseAt(view, freeArea(view)); }
    static QPoint freeArea(const QWidget& view) { return {view.width() / 2, view.height() * 2 / 3}; }

    /// Which of the pictures the pointer shows, by name; "-" for none.
    QString icon(const ItemView& source) const {
        if (source.DragIcon().isNull()) return u"-"_s;
        for (const Image* image : browser->findChildren<Image*>())
            if (image->Picture().cacheKey() == source.DragIcon().cacheKey()) return image->objectName();
        return u"?"_s;
    }
    static QString keyOf(const Ref<Node>& node) { return node ? node->Tag().toText() : u"-"_s; }
    static QString keyOf(const Ref<ListItem>& item) { return item ? item->Key() : u"-"_s; }

    /// The next dialog puts articles at that position, 0 = behind the last.
    void putAt(Long position) {
        forms.answers.append([position](QDialog& dialog) {
            auto& form = dynamic_cast<frmArticleNewPos&>(dialog);
            form.Opt(position == 0 ? 1 : position == 1 ? 0 : 2).click();
            if (position > 1) form.UD.setValue(position);
            form.BB.click(16);
        });
    }
    /// The next dialog gives a drop its meaning, 0 = none.
    void choose(Long option) {
        forms.answers.append([option](QDialog& dialog) {
            auto& form = dynamic_cast<frmArtCatBrowserOrder&>(dialog);
            if (option > 0) form.Opt(option).click();
            form.TB.Buttons(option > 0 ? u"OK"_s : u"Cancel"_s).click();
        });
    }
    QStringList takeShown() {
        QStringList texts;
        for (const MessageBox& box : std::exchange(user.shown, {}))
            texts.append(QString::number(box.flags) + u' ' + box.text);
        return texts;
    }
    /// Nothing is left of a drag but the three flags.
    void expectEnd() const {
        EXPECT_FALSE(drag().DragItem || drag().DropItem || drag().DragNode || drag().DropNode);
        EXPECT_FALSE(tree().DropHighlight() || list().DropHighlight() || pool().DropHighlight());
        EXPECT_EQ(icon(tree()) + icon(list()) + icon(pool()), u"---"_s);
        EXPECT_FALSE(timer().Enabled());
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    }

    ScriptedForms forms;
};

inline const QString dragCatalogue = u"41 Schrauben: 12 Senkkopf, 4711 Linse, 30 Ösen\n"
                                     "  411 Holz: 7 Ahle\n"
                                     "    4111 Spax\n"
                                     "50 Werkzeug: 7 Ahle, 12 Senkkopf\n"
                                     "60 Leer\n"_s;

} // namespace mkl
