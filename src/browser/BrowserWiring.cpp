// Every event of the constituent controls and the procedure that it calls.
#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "controls/Extender.h"
#include "controls/Screen.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {
constexpr Integer leftButton = 1;
constexpr Integer rightButton = 2;
} // namespace

void ArtCatBrowserPrivate::connectEvents() {
    // The hub stays for the duration of the call even if a handler of the host closes the control.
    const auto on = [this](auto* sender, auto signal, const QString& procName, auto call) {
        QObject::connect(sender, signal, &face, [this, procName, call](auto*... arguments) {
            const auto hub = shared_from_this();
            errorFrame.boundary(procName, [&] { call(*arguments...); });
        });
    };
    connectPane(*ui.LVArt, acbPaneArticlePool);
    connectPane(*ui.TV, acbPaneCategoryTree);
    connectPane(*ui.LV, acbPaneArticleList);
    const auto onSplitter = [this](PictureBox* splitter, void (PaneLayout::*draw)(Single)) {
        QObject::connect(splitter, &PictureBox::Click, &face, &ArtCatBrowser::Click);
        QObject::connect(splitter, &PictureBox::DblClick, &face, &ArtCatBrowser::DblClick);
        QObject::connect(splitter, &PictureBox::MouseDown, &face, [](Integer& Button) {
            if (Button == leftButton) screen().setMousePointer(vbSizeWE);
        });
        QObject::connect(splitter, &PictureBox::MouseUp, &face, [](Integer& Button) {
            if (Button == leftButton) screen().setMousePointer(vbDefault);
        });
        QObject::connect(splitter, &PictureBox::MouseMove, &face, [=, this](Integer& Button, Integer&, Single& X) {
            const auto hub = shared_from_this();
            if (Button & leftButton) (*paneLayout.*draw)(X);
        });
    };
    onSplitter(ui.picSplitter, &PaneLayout::drawSplitter);
    onSplitter(ui.picSplitterArt, &PaneLayout::drawSplitterArt);
    on(ui.TV, &TreeView::NodeClick, u"TV_NodeClick"_s, [this](Node& node) {
        if (!dragDrop->takeClick(node)) selection->NodeClick(node);
    });
    on(ui.TV, &TreeView::Expand, u"TV_Expand"_s, [this](Node& node) { categoryTree->Expand(node); });
    on(ui.TV, &TreeView::Collapse, u"TV_Collapse"_s, [this](Node& node) { categoryTree->Collapse(node); });
    on(ui.TV, &TreeView::GotFocus, u"TV_GotFocus"_s, [this] { selection->CollapsePoolSelection(); });
    on(ui.LV, &ListView::GotFocus, u"LV_GotFocus"_s, [this] { selection->CollapsePoolSelection(); });
    on(ui.LV, &ListView::ItemClick, u"LV_ItemClick"_s, [this](ListItem& item) { selection->ListItemClick(item); });
    on(ui.LV, &ListView::ColumnClick, u"LV_ColumnClick"_s,
       [this](ColumnHeader& column) { articlePanes->sortBy(*ui.LV, column.Index()); });
    on(ui.LVArt, &ListView::ItemClick, u"LVArt_ItemClick"_s,
       [this](ListItem& item) { selection->PoolItemClick(item); });
    on(ui.LVArt, &ListView::SelectionChanged, u"LVArt_SelectionChanged"_s, [this] { paneStatus->ShowPoolStatus(-1); });
    on(ui.LVArt, &ListView::ColumnClick, u"LVArt_ColumnClick"_s,
       [this](ColumnHeader& column) { articlePanes->sortBy(*ui.LVArt, column.Index()); });
    QObject::connect(ui.DragTimer, &IntervalTimer::Timer, &face, [this] {
        const auto hub = shared_from_this();
        errorFrame.boundary(u"DragTimer_Timer"_s, [this] { dragDrop->DragTimer_Timer(); });
    });
    connectMenu(*ui.LVArt, acbPaneArticlePool);
    connectMenu(*ui.TV, acbPaneCategoryTree);
    connectMenu(*ui.LV, acbPaneArticleList);
    QObject::connect(ui.SpringTimer, &IntervalTimer::Timer, &face, [this] {
        const auto hub = shared_from_this();
        errorFrame.boundary(u"SpringTimer_Timer"_s, [this] { dragHints->SpringTimer_Timer(); });
    });
    connectNotice();
    QObject::connect(ui.SB, &StatusBar::Click, &face, &ArtCatBrowser::Click);
    QObject::connect(ui.SB, &StatusBar::DblClick, &face, &ArtCatBrowser::DblClick);
    QObject::connect(ui.SB, &StatusBar::PanelClick, &face, &ArtCatBrowser::Click);
    QObject::connect(ui.SB, &StatusBar::PanelDblClick, &face, &ArtCatBrowser::DblClick);
}

void ArtCatBrowserPrivate::connectNotice() {
    QObject::connect(ui.NoticeTimer, &IntervalTimer::Timer, &face, [this] {
        const auto hub = shared_from_this();
        errorFrame.boundary(u"NoticeTimer_Timer"_s, [this] { changeNotice->NoticeTimer_Timer(); });
    });
    QObject::connect(ui.Notice, &NoticeBar::ActionClick, &face, [this] {
        const auto hub = shared_from_this();
        errorFrame.boundary(u"Notice_ActionClick"_s, [this] { changeNotice->refresh(); });
    });
}

// What the panes hand on to the host before the control reacts itself.
void ArtCatBrowserPrivate::connectPane(ItemView& view, acbPanes pane) {
    const auto passOn = [this, pane](void (ArtCatBrowser::*first)(), void (ArtCatBrowser::*second)(acbPanes)) {
        const auto hub = shared_from_this();
        Q_EMIT(face.*first)();
        if (!state.closed) Q_EMIT(face.*second)(pane);
    };
    QObject::connect(&view, &ItemView::Click, &face,
                     [passOn] { passOn(&ArtCatBrowser::Click, &ArtCatBrowser::PaneClick); });
    QObject::connect(&view, &ItemView::DblClick, &face,
                     [passOn] { passOn(&ArtCatBrowser::DblClick, &ArtCatBrowser::PaneDblClick); });
    // The host hears of the mouse first, and may change the arguments.
    const auto onMouse = [&](auto own, auto ofTheFace, auto call) {
        QObject::connect(&view, own, &face,
                         [this, &view, ofTheFace, call](Integer& Button, Integer& Shift, Single& X, Single& Y) {
                             const auto hub = shared_from_this();
                             const Single left = Left(view), top = Top(view);
                             X += left;
                             Y += top;
                             Q_EMIT(face.*ofTheFace)(Button, Shift, X, Y);
                             X -= left;
                             Y -= top;
                             if (!state.closed) call(Button, Shift, X, Y);
                         });
    };
    onMouse(&ItemView::MouseDown, &ArtCatBrowser::MouseDown,
            [this, pane](Integer Button, Integer Shift, Single X, Single Y) {
                errorFrame.boundary(u"MouseDown"_s, [&] { dragDrop->MouseDown(pane, Button, Shift, X, Y); });
            });
    onMouse(&ItemView::MouseMove, &ArtCatBrowser::MouseMove, [](Integer, Integer, Single, Single) {});
    onMouse(&ItemView::MouseUp, &ArtCatBrowser::MouseUp,
            [this](Integer, Integer, Single, Single) { dragDrop->DragEnd(); });
    connectDrag(view, pane);
}

void ArtCatBrowserPrivate::connectDrag(ItemView& view, acbPanes pane) {
    QObject::connect(&view, &ItemView::DragOver, &face,
                     [this, pane](ItemView* Source, Single X, Single Y, Integer State) {
                         errorFrame.boundary(u"DragOver"_s, [&] { dragDrop->DragOver(pane, *Source, X, Y, State); });
                         dragHints->DragOver(pane, X, Y, State);
                     });
    QObject::connect(&view, &ItemView::DragDrop, &face, [this, pane] {
        const auto hub = shared_from_this();
        dragHints->DragEnd();
        errorFrame.boundary(u"DragDrop"_s, [&] { dropActions->DropOn(pane); });
    });
    QObject::connect(&view, &ItemView::DragCancelled, &face, [this] {
        dragHints->DragEnd();
        dragDrop->DragEnd();
    });
}

// Behind all other handlers of the release.
void ArtCatBrowserPrivate::connectMenu(ItemView& view, acbPanes pane) {
    const auto show = [this, pane](const QString& procName, Single x, Single y) {
        const auto hub = shared_from_this();
        errorFrame.boundary(procName, [&] { contextMenus->showMenuOf(pane, x, y); });
    };
    QObject::connect(&view, &ItemView::MouseUp, &face, [show](Integer& Button, Integer&, Single& X, Single& Y) {
        if (Button == rightButton) show(u"MouseUp"_s, X, Y);
    });
    QObject::connect(&view, &ItemView::MenuKey, &face, [show](Single X, Single Y) { show(u"MenuKey"_s, X, Y); });
}

} // namespace mkl
