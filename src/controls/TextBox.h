#pragma once
#include <QLineEdit>

namespace mkl {

/// A line of text to type in, or, hidden, to keep a text in.
class TextBox final : public QLineEdit {
    Q_OBJECT

public:
    explicit TextBox(QWidget* parent)
        : QLineEdit(parent) {}

    QString Text() const { return text(); }
};

} // namespace mkl
