#pragma once
// Answers modal forms by a list of functions, each of which does what a user would do with the form on show.
#include "controls/FormRunner.h"

#include <QDialog>
#include <QList>
#include <QPointer>
#include <QStringList>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

namespace mkl {

/// Presses a key in the control of the form that has the focus.
inline void pressKey(QDialog& form, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* const focus = form.focusWidget();
    QTest::keyClick(focus ? focus : &form, key, modifiers);
}

/// Types digits and plain letters where the focus is.
inline void typeText(QDialog& form, const QString& text) {
    QWidget* const focus = form.focusWidget();
    QTest::keyClicks(focus ? focus : &form, text);
}

/// Clicks into the middle of the control of that name.
inline void clickOn(QDialog& form, const QString& name) {
    auto* const control = form.findChild<QWidget*>(name);
    ASSERT_NE(control, nullptr) << "no control " << name.toStdString();
    ASSERT_TRUE(control->isVisible()) << name.toStdString() << " is hidden";
    QTest::mouseClick(control, Qt::LeftButton);
}

/// Closes the form by its frame.
inline void closeForm(QDialog& form) {
    form.close();
}

/// The forms really show and run their own event loop; each is answered as soon as it is active. One that nobody
/// answers, or that its answer leaves open, fails the test and is closed as cancelled.
class ScriptedForms final : public FormRunner {
public:
    using Answer = std::function<void(QDialog&)>;

    explicit ScriptedForms(QList<Answer> list = {})
        : answers(std::move(list))
        , former_(setFormRunner(this)) {}
    ~ScriptedForms() override {
        setFormRunner(former_);
        EXPECT_TRUE(answers.isEmpty()) << answers.size() << " answers without a form";
    }
    Q_DISABLE_COPY_MOVE(ScriptedForms)

    int run(QDialog& form) override {
        shown.append(form.objectName());
        const Answer answer = answers.isEmpty() ? Answer() : answers.takeFirst();
        QTimer::singleShot(0, &form, [&form, answer] { answerWith(answer, &form); });
        return form.exec();
    }

    QList<Answer> answers; ///< taken from the front
    QStringList shown;     ///< the names of the forms, in their order

private:
    static void answerWith(const Answer& answer, const QPointer<QDialog>& form) {
        EXPECT_TRUE(QTest::qWaitForWindowActive(form));
        if (answer && form) answer(*form);
        if (!form || !form->isVisible()) return;
        ADD_FAILURE() << "the form " << form->objectName().toStdString() << " was left without an answer";
        form->reject();
    }

    FormRunner* former_;
};

} // namespace mkl
