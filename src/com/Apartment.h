/// The COM apartment of a thread.
#pragma once

#include <objbase.h>

namespace solvane {

/// Puts the thread into an apartment of this kind for its lifetime. A thread that is in an apartment of
/// another kind stays there.
class Apartment {
public:
    explicit Apartment(COINIT kind = COINIT_APARTMENTTHREADED)
        : entered_(SUCCEEDED(CoInitializeEx(nullptr, kind))) {}
    ~Apartment() {
        if (entered_)
            CoUninitialize();
    }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

private:
    bool entered_;
};

} // namespace solvane
