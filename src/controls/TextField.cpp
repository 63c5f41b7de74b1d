#include "controls/TextField.h"

#include <QEvent>

#include <algorithm>

namespace mkl {

namespace {

bool endsLine(QChar character) {
    return character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

} // namespace

void TextField::setTextBox(QLineEdit* textBox) {
    if (textBox_) {
        textBox_->removeEventFilter(this);
        disconnect(textBox_, nullptr, this, nullptr);
    }
    textBox_ = textBox;
    if (!textBox) return;
    textBox->installEventFilter(this);
    connect(textBox, &QLineEdit::textChanged, this, &TextField::keepOneLine);
}

bool TextField::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn && watched == textBox_)
        QMetaObject::invokeMethod(textBox_, &QLineEdit::selectAll, Qt::QueuedConnection); // behind the press of a mouse
    return false;
}

void TextField::keepOneLine(const QString& text) {
    if (std::none_of(text.begin(), text.end(), endsLine)) return;
    QString line = text;
    line.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    std::replace_if(line.begin(), line.end(), endsLine, QChar(u' '));
    const int cursor = textBox_->cursorPosition();
    textBox_->setText(line);
    textBox_->setCursorPosition(cursor);
}

} // namespace mkl
