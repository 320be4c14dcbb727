#pragma once

#include <unknwn.h>

#include <utility>

namespace solvane {

/// Owns one reference to a COM object.
///     ComRef<ITypeLib> library;
///     if (FAILED(LoadTypeLib(path, library.put()))) ...
template <class T>
class ComRef {
public:
    ComRef() = default;
    ComRef(const ComRef& other) : ComRef(other.object_) {}
    ComRef(ComRef&& other) noexcept : object_(other.release()) {}
    ~ComRef() { reset(); }

    ComRef& operator=(ComRef other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    /// Adds a reference of its own.
    explicit ComRef(T* object) : object_(object) {
        if (object_)
            object_->AddRef();
    }

    /// Takes over the caller's reference.
    static ComRef adopt(T* object) {
        ComRef reference;
        reference.object_ = object;
        return reference;
    }

    T* get() const { return object_; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }

    /// The place for a function that returns a reference; what was held is released first.
    T** put() {
        reset();
        return &object_;
    }
    void** putVoid() { return reinterpret_cast<void**>(put()); }

    /// The field is empty before the object is released, since a release may call back.
    void reset() {
        if (T* object = std::exchange(object_, nullptr))
            object->Release();
    }
    T* release() { return std::exchange(object_, nullptr); }

    /// The same object through another interface, empty where it has none.
    template <class Other>
    ComRef<Other> as() const {
        ComRef<Other> other;
        if (object_)
            object_->QueryInterface(__uuidof(Other), other.putVoid());
        return other;
    }

private:
    T* object_ = nullptr;
};

/// Asks any COM object for an interface; empty where it has none.
template <class T>
ComRef<T> queryInterface(IUnknown* object) {
    ComRef<T> result;
    if (object)
        object->QueryInterface(__uuidof(T), result.putVoid());
    return result;
}

} // namespace solvane
