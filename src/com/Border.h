/// What every method that a host calls has in common: no exception leaves it, no floating-point trap fires
/// inside it, and it tests and empties its out-pointer before it does any work.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <new>
#include <utility>

namespace solvane {

/// Masks all floating-point exceptions, of the SSE and of the x87 unit, for its lifetime. Hosts written in
/// Fortran or Delphi unmask them. (The compiler's own feholdexcept leaves the SSE unit's unmasked.)
class FloatingPointGuard {
public:
    FloatingPointGuard() {
        __asm__ volatile("stmxcsr %0\n\tfnstcw %1" : "=m"(sse_), "=m"(x87_));
        load((sse_ | sseMasks) & ~sseFlags, static_cast<unsigned short>(x87_ | x87Masks));
    }
    ~FloatingPointGuard() { load(sse_, x87_); }
    FloatingPointGuard(const FloatingPointGuard&) = delete;
    FloatingPointGuard& operator=(const FloatingPointGuard&) = delete;

private:
    static constexpr unsigned sseMasks = 0x1F80;
    static constexpr unsigned sseFlags = 0x3F;
    static constexpr unsigned short x87Masks = 0x3F;

    /// Clears the x87 unit's flags first: an exception raised under the mask would otherwise fire now.
    static void load(unsigned sse, unsigned short x87) {
        __asm__ volatile("fnclex\n\tfldcw %0\n\tldmxcsr %1" : : "m"(x87), "m"(sse));
    }

    unsigned sse_;
    unsigned short x87_;
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

/// Empties what an out-pointer points to. False for a null pointer: the method then returns E_POINTER.
template <class T>
[[nodiscard]] bool prepareResult(T* result) {
    if (!result)
        return false;
    *result = T{};
    return true;
}

/// Frees an in-out string and sets it to null. False for a null pointer.
inline bool prepareMessage(BSTR* message) {
    if (!message)
        return false;
    SysFreeString(*message);
    *message = nullptr;
    return true;
}

} // namespace solvane
