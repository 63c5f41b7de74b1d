#include "controls/Label.h"

#include "controls/ToolTip.h"
#include "controls/Twips.h"

#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace mkl {

namespace {

constexpr qreal lightShade = 0.75;
constexpr qreal darkBackground = 0.5;

/// A text broken into lines.
struct Lines {
    QStringList texts;
    bool cut = false; ///< not all of the text
};

Lines linesOf(const QString& text, const QFont& font, int width, int most) {
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    Lines lines;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        if (lines.texts.size() + 1 < most) {
            lines.texts += text.mid(line.textStart(), line.textLength()).trimmed();
            continue;
        }
        const QString rest = text.mid(line.textStart());
        lines.texts += QFontMetrics(font).elidedText(rest, Qt::ElideRight, width);
        lines.cut = line.textStart() + line.textLength() < text.size();
        break;
    }
    layout.endLayout();
    return lines;
}

} // namespace

Label::Label(QWidget* parent, const QString& caption)
    : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setCaption(caption);
}

void Label::setCaption(const QString& caption) {
    setText(QString(caption).replace(u'\n', u' '));
    showWhatIsCut();
}

void Label::setForeColor(Long color) {
    foreColor_ = color;
    update();
}

void Label::setFontBold(bool bold) {
    QFont changed = font();
    changed.setBold(bold);
    setFont(changed);
    showWhatIsCut();
}

Single Label::TextHeight(Single width, bool bold) const {
    QFont measured = font();
    measured.setBold(bold);
    const auto lines = linesOf(text(), measured, pixelsX(width), mostLines_).texts.size();
    return twipsY(QFontMetrics(measured).lineSpacing() * std::max<double>(1, static_cast<double>(lines)));
}

QColor Label::shade() const {
    const QColor usual = palette().color(foregroundRole());
    if (foreColor_ == 0 || !isEnabled()) return usual;
    const QColor color(foreColor_ & 0xFF, (foreColor_ >> 8) & 0xFF, (foreColor_ >> 16) & 0xFF);
    if (palette().color(backgroundRole()).lightnessF() >= darkBackground) return color;
    return QColor::fromHslF(color.hslHueF(), color.hslSaturationF(), static_cast<float>(lightShade));
}

void Label::mousePressEvent(QMouseEvent* event) {
    clicks_.press(*event);
}

void Label::mouseReleaseEvent(QMouseEvent* event) {
    if (clicks_.release(*event, *this)) Q_EMIT Click();
}

void Label::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(shade());
    painter.setLayoutDirection(layoutDirection());
    QRect row(0, 0, width(), fontMetrics().lineSpacing());
    for (const QString& line : linesOf(text(), font(), width(), mostLines_).texts) {
        painter.drawText(row, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, line);
        row.translate(0, row.height());
    }
}

void Label::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    showWhatIsCut();
}

void Label::showWhatIsCut() {
    const bool cut = linesOf(text(), font(), width(), mostLines_).cut;
    setToolTip(cut ? plainToolTip(text()) : QString());
}

} // namespace mkl
