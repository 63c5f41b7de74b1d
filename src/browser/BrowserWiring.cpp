// Every event of the constituent controls and the procedure that it calls.
#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "controls/Screen.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {
constexpr Integer leftButton = 1;
}

void ArtCatBrowserPrivate::connectEvents() {
    // The hub stays for the duration of the call even if a handler of the host closes the control.
    const auto on = [this](auto* sender, auto signal, const QString& procName, auto call) {
        QObject::connect(sender, signal, &face, [this, procName, call](auto*... arguments) {
            const auto hub = shared_from_this();
            errorFrame.boundary(procName, [&] { call(*arguments...); });
        });
    };
    const auto onSplitter = [this](PictureBox* splitter, void (PaneLayout::*draw)(Single)) {
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
    on(ui.TV, &TreeView::NodeClick, u"TV_NodeClick"_s, [this](Node& node) { selection->NodeClick(node); });
    on(ui.TV, &TreeView::Expand, u"TV_Expand"_s, [this](Node& node) { categoryTree->Expand(node); });
    on(ui.TV, &TreeView::Collapse, u"TV_Collapse"_s, [this](Node& node) { categoryTree->Collapse(node); });
}

} // namespace mkl
