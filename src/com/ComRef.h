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

    /// Releases the current object and returns the place where a function stores its reference.
    T** put() {
        reset();
        return &object_;
    }
    void** putVoid() { return reinterpret_cast<void**>(put()); }

    /// Empties the field before it releases the object, since a release may call back.
    void reset() {
        if (T* object = std::exchange(object_, nullptr))
            object->Release();
    }
    T* release() { return std::exchange(object_, nullptr); }

    /// Another interface of the same object; empty if the object does not have it.
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

/// Queries any COM object for an interface; empty if the object does not have it.
template <class T>
ComRef<T> queryInterface(IUnknown* object) {
    ComRef<T> result;
    if (object)
        object->QueryInterface(__uuidof(T), result.putVoid());
    return result;
}

} // namespace solvane
