#pragma once
#include "base/types.h"

#include <QPushButton>

namespace mkl {

/// One button of a row of a form. The letter behind "&" in its caption is underlined only: which keys press a button is
/// the form's matter. With the focus on it, Enter and the space bar press it.
class DialogButton final : public QPushButton {
    Q_OBJECT

public:
    explicit DialogButton(QWidget* parent);

    QString Caption() const { return text(); }
    void setCaption(const QString& caption);
    QString ToolTipText() const { return toolTip(); }
    void setToolTipText(const QString& text); ///< also spoken by assistive tools
    /// Whether the button itself is switched on; a hidden form does not count.
    bool Visible() const { return !isHidden(); }
    bool Enabled() const { return !testAttribute(Qt::WA_ForceDisabled); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace mkl
