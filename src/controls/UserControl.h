#pragma once
#include "base/PropertyBag.h"
#include "base/types.h"
#include "controls/KeyPreview.h"

#include <QVariant>
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

    /// Persistence in the host's bag: a new control gets the defaults of bagProperties, a stored one what the bag
    /// holds. Both set the properties one by one.
    virtual void InitProperties();
    virtual void ReadProperties(const PropertyBag& bag);
    virtual void WriteProperties(PropertyBag& bag) const;

Q_SIGNALS:
    /// A property of the bag was set, so that the host has something to store. Not raised while a bag is read.
    void PropertyChanged(const QString& PropertyName);

protected:
    struct BagProperty {
        const char* name; ///< of the property, and its key in the bag
        QVariant defaultValue;
    };
    /// The properties that the bag keeps, in the order in which they are set and stored.
    virtual QList<BagProperty> bagProperties() const { return {}; }
    /// To be called behind the setting of such a property.
    void propertyChanged(const QString& name);

    /// Whether the properties are just being set from a bag.
    bool readsProperties() const { return reading_; }

    /// A key pressed in the control or a constituent, before the latter sees it. KeyCode is the key's virtual code
    /// (F1 = 112), Shift as in mouse events. Setting KeyCode to 0 swallows the key.
    virtual void KeyDown(Integer& KeyCode, Integer& Shift);
    /// The focus came from outside into the control.
    virtual void EnterFocus() {}
    /// The control got another size.
    virtual void ResizeControl() {}

    void resizeEvent(QResizeEvent* event) override;

private:
    void focusMoved(const QWidget* from, const QWidget* to);

    KeyPreview keys_;
    bool userMode_ = true;
    bool reading_ = false; // the properties are being set from a bag
};

} // namespace mkl
