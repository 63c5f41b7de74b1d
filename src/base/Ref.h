#pragma once
// Object variables: counted references, of which an empty one is an error when used.
#include "base/RunTimeError.h"

#include <atomic>
#include <utility>

namespace mkl {

/// Base of everything that an object variable can hold. Not copyable: two variables share one object.
class RefCounted {
public:
    RefCounted() = default;
    RefCounted(const RefCounted&) = delete;
    RefCounted& operator=(const RefCounted&) = delete;

    void retain() const noexcept { count_.fetch_add(1, std::memory_order_relaxed); }
    void release() const noexcept {
        if (count_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
    }

protected:
    virtual ~RefCounted() = 0; // never an object by itself

private:
    mutable std::atomic<int> count_{0};
};

inline RefCounted::~RefCounted() = default;

/// An object variable. Using an empty one raises run-time error 91; get() does not.
template<class T>
class Ref {
public:
    Ref() = default;
    Ref(std::nullptr_t) {}
    Ref(T* object)
        : object_(object) {
        if (object_) object_->retain();
    }
    Ref(const Ref& other)
        : Ref(other.object_) {}
    Ref(Ref&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)) {}
    template<class U>
    Ref(const Ref<U>& other)
        : Ref(other.get()) {}
    Ref& operator=(Ref other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Ref() {
        if (object_) object_->release();
    }

    T* get() const { return object_; }
    T* operator->() const { return &used(); }
    T& operator*() const { return used(); }
    explicit operator bool() const { return object_ != nullptr; }
    bool operator==(const Ref& other) const { return object_ == other.object_; }
    bool operator==(std::nullptr_t) const { return object_ == nullptr; }
    void reset() { *this = Ref(); }

private:
    T& used() const {
        if (!object_) throwError(err::ObjectNotSet);
        return *object_;
    }

    T* object_ = nullptr;
};

template<class T, class... Arguments>
Ref<T> makeRef(Arguments&&... arguments) {
    return Ref<T>(new T(std::forward<Arguments>(arguments)...));
}

} // namespace mkl
