#include "controls/FormRunner.h"

#include <QDialog>

namespace mkl {

namespace {

class DialogRunner final : public FormRunner {
public:
    int run(QDialog& form) override { return form.exec(); }
};

DialogRunner dialogRunner;
FormRunner* current = &dialogRunner;

} // namespace

FormRunner& formRunner() {
    return *current;
}

FormRunner* setFormRunner(FormRunner* runner) {
    FormRunner* former = current;
    current = runner ? runner : &dialogRunner;
    return former;
}

} // namespace mkl
