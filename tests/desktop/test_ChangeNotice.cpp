// Somebody else writes while the program is open.
#include "controls/NoticeBar.h"
#include "core/ErrorFrame.h"
#include "desktop/EditingWindow.h"

#include <QPalette>

using namespace mkl;
using namespace mkl::desktop;

namespace {

class ChangedByOthers : public EditingWindow {
protected:
    NoticeBar& bar() const { return *browser().findChild<NoticeBar*>(u"Notice"_s); }
    QPoint link() const {
        const auto& button = *browser().findChild<LinkButton*>(u"NoticeAction"_s);
        return button.mapToGlobal(button.rect().center());
    }
    void othersAdd(Long key, const QString& name) const {
        reader_->Execute(u"INSERT INTO [ARTIKEL/KATEGORIEN] ([Kategorie-Schlüssel], [Absender-Schlüssel], "
                         "Kategoriename, [Order], Aktiv) "
                         "VALUES (%1, 1, '%2', %3, True)"_s.arg(key)
                             .arg(name)
                             .arg(key),
                         dao::dbFailOnError);
    }
    QList<QRect> geometries() const {
        QList<QRect> all;
        for (const QWidget* widget : browser().Controls())
            if (widget->isVisible() && widget != &bar()) all.append(widget->geometry());
        return all;
    }
    bool has(Long key) const {
        bool found = false;
        ErrorFrame::quietly([&] { found = bool(category(key)); });
        return found;
    }
};

QPalette darkPalette() {
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(45, 45, 48));
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::AlternateBase, QColor(45, 45, 48));
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Button, QColor(45, 45, 48));
    dark.setColor(QPalette::ButtonText, Qt::white);
    dark.setColor(QPalette::Highlight, QColor(38, 79, 120));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    return dark;
}

} // namespace

TEST_F(ChangedByOthers, AClickOnTheLineShowsWhatIsNew) {
    const Ref<Node> chosen = rootWithChildren();
    selectCategory(chosen);
    const QString text = chosen->Text();
    const QList<QRect> before = geometries();
    othersAdd(901, u"Von nebenan"_s);
    ASSERT_TRUE(waitUntil([&] { return bar().isVisible(); }));
    EXPECT_EQ(geometries(), before);
    EXPECT_TRUE(tree_->hasFocus());
    EXPECT_EQ(tree_->SelectedItem(), chosen);
    EXPECT_FALSE(has(901));
    keepPicture(u"guide-changed"_s, window_.frameGeometry());
    click(link());
    ASSERT_TRUE(waitUntil([&] { return has(901); }));
    EXPECT_FALSE(bar().isVisible());
    EXPECT_EQ(tree_->SelectedItem()->Text(), text);
    EXPECT_EQ(geometries(), before);
}

TEST_F(ChangedByOthers, InADarkPalette) {
    const QPalette light = QApplication::palette();
    QApplication::setPalette(darkPalette());
    othersAdd(901, u"Von nebenan"_s);
    ASSERT_TRUE(waitUntil([&] { return bar().isVisible(); }));
    keepPicture(u"notice-dark"_s);
    click(link());
    EXPECT_TRUE(waitUntil([&] { return has(901); }));
    QApplication::setPalette(light);
}

TEST_F(ChangedByOthers, TheKeysReadAgainToo) {
    selectCategory(rootWithChildren());
    othersAdd(901, u"Von nebenan"_s);
    ASSERT_TRUE(waitUntil([&] { return bar().isVisible(); }));
    press(u"ctrl+r"_s);
    ASSERT_TRUE(waitUntil([&] { return has(901); }));
    EXPECT_TRUE(waitUntil([&] { return !bar().isVisible(); }));
    othersAdd(902, u"Noch eine"_s);
    ASSERT_TRUE(waitUntil([&] { return bar().isVisible(); }));
    list().setFocus();
    press(u"Tab"_s);
    ASSERT_TRUE(waitUntil([&] { return browser().findChild<LinkButton*>(u"NoticeAction"_s)->hasFocus(); }));
    press(u"Return"_s);
    ASSERT_TRUE(waitUntil([&] { return has(902); }));
    EXPECT_TRUE(list().hasFocus());
}
