#pragma once
#include "controls/TextField.h"
#include "core/DataTools.h"
#include "core/SqlTools.h"
#include "core/StringTools.h"
#include "core/WindowTools.h"

namespace mkl {

/// The tools of a control; one per control, made when it is created and dropped when it ends.
class FunctionLibrary final : public RefCounted {
public:
    const mkl::SqlTools& SqlTools() const { return sqlTools_; }
    const mkl::StringTools& StringTools() const { return stringTools_; }
    const mkl::WindowTools& WindowTools() const { return windowTools_; }
    const mkl::DataTools& DataTools() const { return dataTools_; }
    /// A fresh text-field object, to be bound to a text box.
    Ref<TextField> NewTextField() const { return makeRef<TextField>(); }

private:
    mkl::SqlTools sqlTools_;
    mkl::StringTools stringTools_;
    mkl::WindowTools windowTools_;
    mkl::DataTools dataTools_;
};

} // namespace mkl
