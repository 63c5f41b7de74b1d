#include "core/Finder.h"

namespace mkl {

Ref<FindDialog> Finder::FindDialog() {
    if (!dialog_) {
        dialog_ = makeRef<mkl::FindDialog>();
        connect(dialog_.get(), &mkl::FindDialog::RecordFound, this, &Finder::RecordFound);
    }
    return dialog_;
}

} // namespace mkl
