#include "core/WindowTools.h"

#include "controls/Screen.h"
#include "core/mdlGraphics.h"
#include "support/Printing.h"

#include <QFrame>
#include <QScreen>
#include <QStyle>

using namespace Qt::StringLiterals;
using namespace mkl;

namespace {

Integer filtered(Integer key, const QString& allowed) {
    WindowTools().FilterKey(key, allowed);
    return key;
}

} // namespace

TEST(FilterKey, LetsAllowedAndControlCharactersPass) {
    const QString digits = u"0123456789"_s;
    EXPECT_EQ(filtered('7', digits), '7');
    EXPECT_EQ(filtered('x', digits), 0);
    EXPECT_EQ(filtered(' ', digits), 0);
    EXPECT_EQ(filtered(u'ä', digits), 0);
    EXPECT_EQ(filtered(u'ä', u"äöü"_s), u'ä');
    for (const Integer control : {3, 8, 13, 22, 24, 27, 127}) // Ctrl+C, Backspace, Enter, Ctrl+V, Ctrl+X, Esc, Delete
        EXPECT_EQ(filtered(control, digits), control);
}

TEST(ListReserve, IsTheScrollBarAndTheFrame) {
    QFrame list;
    mdlGraphics::SetFlatEdge(&list);
    const auto scrollBar =
        static_cast<Single>(list.style()->pixelMetric(QStyle::PM_ScrollBarExtent)) * screen().TwipsPerPixelX();
    const Single frame = 2 * screen().TwipsPerPixelX();
    EXPECT_EQ(WindowTools().ListReserve(1, true, &list), scrollBar + frame);
    EXPECT_EQ(WindowTools().ListReserve(1, false, &list), scrollBar);
    EXPECT_EQ(WindowTools().ListReserve(0, true, &list), frame);
}

TEST(GetRectangle, GivesTheEdgesOnTheScreen) {
    QWidget window;
    window.setGeometry(100, 60, 300, 200);
    QWidget box(&window);
    box.setGeometry(10, 20, 30, 40);
    WindowRectangle edges;
    ASSERT_TRUE(WindowTools().GetRectangle(&box, edges, false));
    EXPECT_EQ(edges.left, 110);
    EXPECT_EQ(edges.top, 80);
    EXPECT_EQ(edges.right, 140);
    EXPECT_EQ(edges.bottom, 120);
    ASSERT_TRUE(WindowTools().GetRectangle(&box, edges, true));
    EXPECT_EQ(edges.left, 110 * screen().TwipsPerPixelX());
    EXPECT_EQ(edges.bottom, 120 * screen().TwipsPerPixelY());
}

TEST(GetRectangle, WithoutAWindowReportsFailure) {
    WindowRectangle edges{.left = 1};
    EXPECT_FALSE(WindowTools().GetRectangle(nullptr, edges, true));
    EXPECT_EQ(edges.left, 1);
}

TEST(CenterOver, PutsTheFormOverItsOwner) {
    QWidget owner;
    owner.setGeometry(100, 100, 400, 300);
    QWidget form;
    form.resize(200, 100);
    WindowTools().CenterOver(&owner, &form);
    EXPECT_EQ(form.pos(), QPoint(200, 200));
}

TEST(CenterOver, StaysOnTheScreen) {
    QWidget owner;
    owner.setGeometry(-300, -300, 100, 100);
    QWidget form;
    form.resize(200, 100);
    const QRect available = form.screen()->availableGeometry();
    WindowTools().CenterOver(&owner, &form);
    EXPECT_EQ(form.pos(), available.topLeft());
    owner.move(available.bottomRight());
    WindowTools().CenterOver(&owner, &form);
    EXPECT_EQ(form.geometry().bottomRight(), available.bottomRight());
}

TEST(CenterOver, WithoutAnOwnerMeansTheScreen) {
    QWidget form;
    form.resize(200, 100);
    WindowTools().CenterOver(nullptr, &form);
    EXPECT_LE((form.geometry().center() - form.screen()->availableGeometry().center()).manhattanLength(), 2);
}
