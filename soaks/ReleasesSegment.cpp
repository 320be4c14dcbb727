// A client that releases its object right after a call: under Wine both sides could wait for ever.

#include "MatlabRegistration.h"
#include "Progress.h"
#include "ScriptedMatlab.h"
#include "Segments.h"
#include "com/Apartment.h"
#include "com/ComRef.h"

#include <atomic>
#include <thread>

namespace solvane::soak {

namespace {

/// Far longer than any call takes, in milliseconds.
constexpr DWORD patience = 20000;

// A client that hangs still uses them when the segment has returned.
std::atomic<int> released = 0;
std::atomic<int> failures = 0;

bool callOnce(IDispatch* application) {
    LPOLESTR name = const_cast<LPOLESTR>(L"Execute");
    DISPID id = 0;
    return SUCCEEDED(application->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id));
}

void useAndRelease(int rounds) {
    const Apartment apartment;
    while (released < rounds) {
        ComRef<IDispatch> application;
        CoCreateInstance(scriptedMatlabClass, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch,
                         application.putVoid());
        failures += application && callOnce(application.get()) ? 0 : 1;
        application.reset();
        ++released;
    }
}

} // namespace

void soakReleases(const Effort& effort, const Figures& figures) {
    const int rounds = effort.of(2000, 50000);
    MatlabRegistration registration;
    registration.setSharedServer();
    Progress progress("objects released right after a call", rounds);
    std::thread(useAndRelease, rounds).detach();
    ULONGLONG lastChange = GetTickCount64();
    for (int seen = 0; seen < rounds && GetTickCount64() - lastChange < patience; Sleep(100))
        if (const int now = released; now != seen) {
            seen = now;
            lastChange = GetTickCount64();
            progress.at(seen);
        }
    figures.put("objects released right after a call", released);
    figures.put("calls that failed", failures);
    figures.put("clients that hung", released < rounds ? 1 : 0);
}

} // namespace solvane::soak
