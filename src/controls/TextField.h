#pragma once
#include "base/Ref.h"

#include <QLineEdit>
#include <QPointer>

namespace mkl {

/// Makes a text box a field of a form: its text is selected when the focus comes in, and a line end that is pasted into
/// it becomes a blank. Letting go of the object ends that.
class TextField final : public QObject, public RefCounted {
    Q_OBJECT

public:
    /// The text box may end before its field.
    void setTextBox(QLineEdit* textBox);
    QLineEdit* TextBox() const { return textBox_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    ~TextField() override = default; // only ever in an object variable

private:
    void keepOneLine(const QString& text);

    QPointer<QLineEdit> textBox_;
};

} // namespace mkl
