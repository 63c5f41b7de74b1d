#pragma once
#include "base/types.h"
#include "controls/KeyPreview.h"

#include <QDialog>
#include <QPointer>

namespace mkl {

/// A modal form. It belongs to the procedure that makes it, and ending that procedure unloads it. It stands over its
/// owner's window, but is no child of it: should the owner be deleted while the form is shown, the form hides as
/// cancelled and the procedure goes on with it. Whether it was confirmed is told by what it holds, not by a result.
class Form : public QDialog {
    Q_OBJECT

public:
    /// owner: the control on whose behalf the form asks; may be nullptr.
    explicit Form(QWidget* owner = nullptr);

    QString Caption() const { return windowTitle(); }
    void setCaption(const QString& caption) { setWindowTitle(caption); }

    /// Stands over that control's window from now on, and ends with it.
    void setOwner(QWidget* owner);
    /// Shows the form through the form runner in force, and returns when it is hidden. Where the owner has been
    /// deleted before, it counts as cancelled at once.
    void Show();
    /// Ends Show.
    void Hide() { hide(); }

    /// Inner size in twips; the frame belongs to the window system and is not counted.
    Single Width() const;
    Single Height() const;
    void setWidth(Single twips);
    void setHeight(Single twips);
    Single ScaleWidth() const { return Width(); }
    Single ScaleHeight() const { return Height(); }
    /// Whether the user can change the size; true unless told otherwise.
    void setSizable(bool sizable);

    /// The form is closed by other means than its buttons: by its frame, by the end of its owner or by a runner that
    /// does not answer it.
    void reject() final;

protected:
    /// A key pressed in the form, before the control that has the focus sees it. KeyCode is the key's virtual code
    /// (Esc = 27), Shift the sum of 1 Shift, 2 Ctrl, 4 Alt. Setting KeyCode to 0 swallows the key.
    virtual void KeyDown(Integer& /*KeyCode*/, Integer& /*Shift*/) {}
    /// The form is about to come up.
    virtual void Activate() {}
    /// The form was closed without an answer; it is still shown. Puts what it holds into the cancelled state.
    virtual void Cancelled() {}
    /// The form got another size.
    virtual void ResizeForm() {}

    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void standOverOwner();
    void release();
    void holdSize();

    KeyPreview keys_;
    bool sizable_ = true;
    bool owned_ = false;
    bool wasShown_ = false;
    QPointer<QWidget> owner_;
};

} // namespace mkl
