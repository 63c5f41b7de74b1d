#pragma once
#include "base/types.h"
#include "controls/ClickDetector.h"

#include <QLabel>

namespace mkl {

/// A label of plain text over as many lines as its width asks for, words that are longer than a line included. What
/// goes beyond its most lines is cut short and shown as a tool tip.
class Label final : public QLabel {
    Q_OBJECT

public:
    explicit Label(QWidget* parent, const QString& caption = {});

    QString Caption() const { return text(); }
    void setCaption(const QString& caption);

    /// A colour as the sum of red, green * 256 and blue * 65536. 0 is the usual colour of texts, and in a dark palette
    /// a colour is shown in a light shade.
    Long ForeColor() const { return foreColor_; }
    void setForeColor(Long color);
    bool FontBold() const { return font().bold(); }
    void setFontBold(bool bold);

    void setMostLines(int lines) { mostLines_ = lines; } ///< 4 unless told otherwise
    /// Height in twips that the caption takes at that width; in bold type if that is asked for, whatever shows now.
    Single TextHeight(Single width, bool bold) const;
    Single TextHeight(Single width) const { return TextHeight(width, FontBold()); }

Q_SIGNALS:
    void Click();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QColor shade() const;
    void showWhatIsCut();

    Long foreColor_ = 0;
    int mostLines_ = 4;
    ClickDetector clicks_;
};

} // namespace mkl
