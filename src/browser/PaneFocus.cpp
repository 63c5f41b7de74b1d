#include "browser/PaneFocus.h"

#include "controls/Extender.h"

#include <utility>

namespace mkl {

void PaneFocus::hide(std::initializer_list<QWidget*> panes) {
    for (QWidget* pane : panes)
        if (Visible(*pane) && pane->window()->focusWidget() == pane) before_ = pane;
    for (QWidget* pane : panes)
        setVisible(*pane, false);
    meanwhile_ = (*panes.begin())->window()->focusWidget();
}

void PaneFocus::giveBack() {
    const QPointer<QWidget> pane = std::exchange(before_, {});
    if (pane && Visible(*pane) && pane->window()->focusWidget() == meanwhile_) pane->setFocus();
}

} // namespace mkl
