#pragma once
#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QDialog;
QT_END_NAMESPACE

namespace mkl {

/// Runs modal forms. Replaceable, so that tests fill them in and close them.
class FormRunner {
public:
    virtual ~FormRunner() = default;
    /// Shows the form until it is closed; gives its QDialog::DialogCode.
    virtual int run(QDialog& form) = 0;
};

/// The runner in force; real modal dialogs unless another was set.
FormRunner& formRunner();
/// Puts another runner in force and returns the former one; nullptr restores the dialogs. The caller keeps ownership.
FormRunner* setFormRunner(FormRunner* runner);

} // namespace mkl
