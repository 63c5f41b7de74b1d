#pragma once
#include "base/PropertyBag.h"
#include "base/types.h"

#include <QWidget>

namespace mkl {

/// Base of the visual controls: a widget that holds constituent controls and measures in twips. A derived control
/// initialises in its constructor and terminates in its destructor.
class UserControl : public QWidget {
    Q_OBJECT

public:
    explicit UserControl(QWidget* parent = nullptr);
    ~UserControl() override;

    /// True at run time of the host, false while it is being designed.
    bool UserMode() const { return userMode_; }
    void setUserMode(bool userMode) { userMode_ = userMode; }

    Single ScaleWidth() const;  ///< inner size in twips, which is all of it: the control has no frame
    Single ScaleHeight() const; ///< likewise
    Single TextWidth(const QString& text) const;
    Single TextHeight(const QString& text) const;

    Long hWnd() const; ///< number of the control's window
    /// The constituent control that has the focus, or had it last; null before any had it.
    QWidget* ActiveControl() const;
    /// All constituent controls.
    QList<QWidget*> Controls() const;

    /// Persistence in the host's bag; the base has no properties of its own to keep.
    virtual void InitProperties() {}
    virtual void ReadProperties(const PropertyBag&) {}
    virtual void WriteProperties(PropertyBag&) const {}

protected:
    /// A key pressed in the control or a constituent, before the latter sees it. KeyCode is the key's virtual code
    /// (F1 = 112), Shift as in mouse events. Setting KeyCode to 0 swallows the key.
    virtual void KeyDown(Integer& KeyCode, Integer& Shift);
    /// The focus came from outside into the control.
    virtual void EnterFocus() {}
    /// The control got another size.
    virtual void ResizeControl() {}

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void watch(QObject* object);
    bool swallows(const QKeyEvent& event);
    void focusMoved(const QWidget* from, const QWidget* to);

    bool userMode_ = true;
};

} // namespace mkl
