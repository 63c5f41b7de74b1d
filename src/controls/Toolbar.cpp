#include "controls/Toolbar.h"

#include "base/RunTimeError.h"

namespace mkl {

DialogButton& Toolbar::addButton(const QString& key, const QString& caption, const QString& toolTipText) {
    if (find(key)) throwError(err::KeyNotUnique);
    DialogButton& button = ButtonRow::addButton();
    keyed_.push_back({key, &button});
    button.setObjectName(key);
    button.setCaption(caption);
    button.setToolTipText(toolTipText);
    connect(&button, &DialogButton::clicked, this, [this, key] { Q_EMIT ButtonClick(key); });
    arrange();
    return button;
}

DialogButton& Toolbar::Buttons(const QString& key) const {
    DialogButton* const button = find(key);
    if (!button) throwError(err::ElementNotFound);
    return *button;
}

DialogButton* Toolbar::find(const QString& key) const {
    for (const Button& button : keyed_)
        if (button.Key.compare(key, Qt::CaseInsensitive) == 0) return button.widget;
    return nullptr;
}

} // namespace mkl
