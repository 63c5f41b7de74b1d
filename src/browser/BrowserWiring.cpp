// Every event of the constituent controls and the procedure that it calls.
#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"

namespace mkl {

using namespace Qt::StringLiterals;

void ArtCatBrowserPrivate::connectEvents() {
    // The hub stays for the duration of the call even if a handler of the host closes the control.
    const auto on = [this](auto* sender, auto signal, const QString& procName, auto call) {
        QObject::connect(sender, signal, &face, [this, procName, call](auto*... arguments) {
            const auto hub = shared_from_this();
            errorFrame.boundary(procName, [&] { call(*arguments...); });
        });
    };
    on(ui.TV, &TreeView::NodeClick, u"TV_NodeClick"_s, [this](Node& node) { selection->NodeClick(node); });
    on(ui.TV, &TreeView::Expand, u"TV_Expand"_s, [this](Node& node) { categoryTree->Expand(node); });
    on(ui.TV, &TreeView::Collapse, u"TV_Collapse"_s, [this](Node& node) { categoryTree->Collapse(node); });
}

} // namespace mkl
