/// Calls on a unit from inside its own calculation, as hosts make them.
#pragma once

#include "UnitSession.h"

#include <windows.h>

#include <array>

namespace solvane::host {

/// Makes the profile's calls once in the first material call of a calculation, and, where the profile has it
/// so, once while a window of the host paints. What comes of them goes to the log.
class Reentry {
public:
    /// All three outlive it.
    Reentry(UnitSession& session, const Profile& profile, const LogSink& log);
    ~Reentry();
    Reentry(const Reentry&) = delete;
    Reentry& operator=(const Reentry&) = delete;

    /// Around the unit's Calculate: only then are calls made.
    void begin();
    void end();

    /// A material is being called.
    void onMaterialCall();

private:
    enum Place { inMaterial, inPaint };
    static LRESULT CALLBACK receive(HWND window, UINT message, WPARAM w, LPARAM l);
    void act(Place place);

    UnitSession& session_;
    const Profile& profile_;
    const LogSink& log_;
    HWND window_ = nullptr;
    bool calculates_ = false;
    std::array<bool, 2> done_{}; ///< by place
};

} // namespace solvane::host
