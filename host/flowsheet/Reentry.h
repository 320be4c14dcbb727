/// Calls on a unit from inside its own calculation, as hosts make them.
#pragma once

#include "UnitSession.h"

#include <windows.h>

#include <array>
#include <span>

namespace solvane::host {

/// Makes its calls once in the first material call of a calculation, and once while a window of the host
/// paints. What comes of them goes to the log.
class Reentry {
public:
    /// The session and the log outlive it.
    Reentry(UnitSession& session, std::span<const ReentrantCall> calls, const LogSink& log);
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
    std::span<const ReentrantCall> calls_;
    const LogSink& log_;
    HWND window_ = nullptr;
    bool calculates_ = false;
    std::array<bool, 2> done_{}; ///< by place
};

} // namespace solvane::host
