#include "Reentry.h"

#include "ModelStream.h"
#include "ParameterCalls.h"
#include "UnitCalls.h"

#include <algorithm>
#include <utility>

namespace solvane::host {

namespace {

bool look(UnitSession& session, std::string& error) {
    std::vector<ModelParameter> parameters;
    std::vector<ReportResult> reports;
    CapeValidationStatus status{};
    return readParameters(session.unit(), parameters, error) && readReports(session.unit(), reports, error) &&
           (SUCCEEDED(session.unit()->get_ValStatus(&status)) ||
            callFailed(error, "get_ValStatus", session.unit(), E_FAIL));
}

bool save(UnitSession& session, std::string& error) {
    std::string bytes;
    return saveModelFile(session.unit(), bytes, error);
}

struct CallRow {
    ReentrantCall call;
    const char* name;
    bool (*make)(UnitSession& session, std::string& error);
};

constexpr std::array callTable{
    CallRow{ReentrantCall::look, "reading parameters and reports", look},
    CallRow{ReentrantCall::validate, "Validate",
            [](UnitSession& session, std::string& error) { return validate(session.unit(), error); }},
    CallRow{ReentrantCall::save, "Save", save},
    CallRow{ReentrantCall::calculate, "Calculate",
            [](UnitSession& session, std::string& error) { return calculate(session.unit(), error); }},
    CallRow{ReentrantCall::terminate, "Terminate",
            [](UnitSession& session, std::string& error) { return session.terminate(error); }},
    CallRow{ReentrantCall::release, "Release",
            [](UnitSession& session, std::string&) {
                session.release();
                return true;
            }},
};

constexpr std::array placeNames{"in a material call", "while painting"};

} // namespace

Reentry::Reentry(UnitSession& session, const Profile& profile, const LogSink& log)
    : session_(session), profile_(profile), log_(log) {
    if (!profile_.reentersWhilePainting)
        return;
    window_ = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Reentry::receive));
}

Reentry::~Reentry() {
    if (window_)
        DestroyWindow(window_);
}

void Reentry::begin() {
    calculates_ = true;
    done_ = {};
    if (window_)
        PostMessageW(window_, WM_PAINT, 0, 0);
}

void Reentry::end() {
    calculates_ = false;
}

void Reentry::onMaterialCall() {
    act(inMaterial);
}

LRESULT CALLBACK Reentry::receive(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (message != WM_PAINT)
        return DefWindowProcW(window, message, w, l);
    reinterpret_cast<Reentry*>(GetWindowLongPtrW(window, GWLP_USERDATA))->act(inPaint);
    return 0;
}

void Reentry::act(Place place) {
    // The calls below may call materials again.
    if (!calculates_ || std::exchange(done_[place], true))
        return;
    for (const ReentrantCall call : profile_.reentrantCalls) {
        if (!session_.unit())
            return; // already released
        const auto row = std::ranges::find(callTable, call, &CallRow::call);
        std::string error;
        const bool made = row->make(session_, error);
        log_(std::string(row->name) + " " + placeNames[place] + ": " + (made ? "done" : error));
    }
}

} // namespace solvane::host
