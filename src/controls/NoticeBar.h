#pragma once
#include <QAbstractButton>
#include <QFrame>
#include <QPointer>

QT_BEGIN_NAMESPACE
class QLabel;
QT_END_NAMESPACE

namespace mkl {

/// A text that does something when it is clicked, or pressed with Enter or the space bar. The mouse gives it no focus.
class LinkButton final : public QAbstractButton {
    Q_OBJECT

public:
    explicit LinkButton(QWidget* parent);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

/// A quiet line that tells something and offers what to do about it. It takes no focus unasked; the Tab key comes to
/// it, and when it goes the focus is again where it came from.
class NoticeBar final : public QFrame {
    Q_OBJECT

public:
    explicit NoticeBar(QWidget* parent);

    QString Text() const;
    QString Action() const { return action_->text(); }
    /// Assistive tools hear of another text at once.
    void setNotice(const QString& text, const QString& action);
    /// Where the focus was before it came here; null if that is gone.
    QWidget* FormerFocus() const { return formerFocus_; }

    bool Visible() const { return !isHidden(); }
    void setVisible(bool visible) override;
    QSize sizeHint() const override;

Q_SIGNALS:
    void ActionClick();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void focusMoved(QWidget* from, const QWidget* to);
    void tell();

    QLabel* const text_;
    LinkButton* const action_;
    QPointer<QWidget> formerFocus_;
};

} // namespace mkl
