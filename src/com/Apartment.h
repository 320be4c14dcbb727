/// The COM apartment of a thread.
#pragma once

#include <objbase.h>

namespace solvane {

/// Puts the thread into a single-threaded apartment for its lifetime. A thread that is in an apartment of
/// another kind stays there.
class Apartment {
public:
    Apartment() : entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
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
