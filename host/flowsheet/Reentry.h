/// Calls on a unit during its own calculation, as some hosts make them.
#pragma once

#include "UnitSession.h"

#include <windows.h>

#include <array>

namespace solvane::host {

/// Makes the profile's calls once in the first material call of a calculation and, if the profile says so,
/// once while a window of the host paints. Their outcome goes to the log.
class Reentry {
public:
    /// All three must outlive it.
    Reentry(UnitSession& session, const Profile& profile, const LogSink& log);
    ~Reentry();
    Reentry(const Reentry&) = delete;
    Reentry& operator=(const Reentry&) = delete;

    /// Enclose the unit's Calculate: calls are made only between them.
    void begin();
    void end();

    /// To be called in each material call.
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
