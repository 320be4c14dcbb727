/// What every method that a host calls has in common: nothing throws past it, no floating-point trap fires
/// inside it, and its out-pointer is tested and emptied before any work.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cfenv>
#include <new>
#include <utility>

namespace solvane {

/// Masks all floating-point exceptions for its lifetime. Hosts written in Fortran or Delphi unmask them.
class FloatingPointGuard {
public:
    FloatingPointGuard() { std::feholdexcept(&saved_); }
    ~FloatingPointGuard() { std::fesetenv(&saved_); }
    FloatingPointGuard(const FloatingPointGuard&) = delete;
    FloatingPointGuard& operator=(const FloatingPointGuard&) = delete;

private:
    std::fenv_t saved_;
};

/// Runs an interface method's body.
template <class Body>
HRESULT border(Body&& body) noexcept {
    FloatingPointGuard floatingPoint;
    try {
        return std::forward<Body>(body)();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

/// Empties what an out-pointer points to. False for a null pointer, which the method answers with E_POINTER.
template <class T>
bool prepareResult(T* result) {
    if (!result)
        return false;
    *result = T{};
    return true;
}

/// An in-out string is freed and nulled. False for a null pointer.
inline bool prepareMessage(BSTR* message) {
    if (!message)
        return false;
    SysFreeString(*message);
    *message = nullptr;
    return true;
}

} // namespace solvane
