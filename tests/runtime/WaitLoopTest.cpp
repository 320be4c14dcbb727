// What the host's thread does while the script runs.

#include "RuntimeTest.h"

#include <gmock/gmock.h>

#include <thread>

namespace solvane {

namespace {

using testing::Contains;
using testing::Each;
using testing::HasSubstr;

constexpr UINT inputMessage = WM_KEYDOWN;

/// A window of the host's, without a place on the screen.
class HostWindow {
public:
    HostWindow()
        : window_(
              CreateWindowExW(0, L"Static", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
        SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&receive));
    }
    ~HostWindow() { DestroyWindow(window_); }
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    void post(UINT message) { EXPECT_TRUE(PostMessageW(window_, message, 0, 0)); }

    std::function<void()> onPaint;
    int inputs = 0;

private:
    static LRESULT CALLBACK receive(HWND window, UINT message, WPARAM w, LPARAM l) {
        auto& self = *reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message == WM_PAINT && self.onPaint)
            self.onPaint();
        if (message == inputMessage)
            ++self.inputs;
        return message == WM_PAINT ? 0 : DefWindowProcW(window, message, w, l);
    }

    HWND window_;
};

using WaitLoop = RuntimeTest;

TEST_F(WaitLoop, theHostPaintsDuringTheRunAndItsInputWaits) {
    HostWindow window;
    const HostedUnit unit = createUnit();
    const Handle painted(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    window.onPaint = [&] { SetEvent(painted.get()); };
    for (const bool asksWithoutPause : {false, true}) {
        matlab.onRun = [&](const std::wstring& folder) {
            GatewayClient script(folder);
            window.post(inputMessage);
            window.post(WM_PAINT);
            const ULONGLONG begin = GetTickCount64();
            while (WaitForSingleObject(painted.get(), asksWithoutPause ? 0 : 5000) != WAIT_OBJECT_0 &&
                   GetTickCount64() - begin < 5000)
                script.call(request(12));
            EXPECT_LT(GetTickCount64() - begin, 2000u);
            return MatlabAnswer();
        };
        ASSERT_EQ(unit.calculate(), S_OK);
    }
    EXPECT_EQ(window.inputs, 0);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&message);
    EXPECT_EQ(window.inputs, 2);
}

// The lock of the outer run is the thread's own, but a Matlab that both share cannot run two scripts at once.
// The inner unit's end does not ask the busy Matlab for anything.
TEST_F(WaitLoop, aRunThatAPaintMessageStartsInsideAnotherPassesWhereEachUnitHasAMatlab) {
    for (const bool isDedicated : {true, false}) {
        matlab.dedicated = isDedicated;
        HostWindow window;
        const HostedUnit outer = createUnit();
        const HostedUnit inner = createUnit();
        const Handle innerDone(CreateEventW(nullptr, FALSE, FALSE, nullptr));
        HRESULT innerResult = E_PENDING;
        window.onPaint = [&] {
            innerResult = inner.calculate();
            if (!isDedicated) {
                EXPECT_THAT(narrow(inner.errorDescription()), HasSubstr("Matlab runs one script at a time"));
                EXPECT_EQ(inner.terminate(), S_OK);
            }
            SetEvent(innerDone.get());
        };
        int runs = 0;
        matlab.onRun = [&](const std::wstring&) {
            if (++runs == 1) {
                window.post(WM_PAINT);
                EXPECT_EQ(WaitForSingleObject(innerDone.get(), 5000), WAIT_OBJECT_0);
            }
            return printed(std::to_wstring(runs));
        };
        EXPECT_EQ(outer.calculate(), S_OK);
        EXPECT_EQ(innerResult, isDedicated ? S_OK : capeFailure);
        EXPECT_EQ(runs, isDedicated ? 2 : 1);
        EXPECT_EQ(outer.calculate(), S_OK);
    }
}

// The other's process dies, which gives its turn away.
TEST_F(WaitLoop, theHostPaintsWhileTheUnitWaitsForAnothersTurnOnASharedMatlab) {
    HostWindow window;
    const HostedUnit unit = createUnit();
    const HostedUnit leaving = createUnit();
    const Handle taken(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    const Handle painted(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    std::thread other([&] {
        const Handle turn(CreateMutexW(nullptr, FALSE, sharedMatlabMutex));
        EXPECT_EQ(WaitForSingleObject(turn.get(), 5000), WAIT_OBJECT_0);
        SetEvent(taken.get());
        EXPECT_EQ(WaitForSingleObject(painted.get(), 10000), WAIT_OBJECT_0);
    });
    ASSERT_EQ(WaitForSingleObject(taken.get(), 5000), WAIT_OBJECT_0);
    matlab.forgetCalls();
    // A unit that ends meanwhile leaves Matlab where the other wants it.
    EXPECT_EQ(leaving.terminate(), S_OK);
    EXPECT_THAT(matlab.calls(), Each(L"release"));
    window.onPaint = [&] {
        EXPECT_THAT(matlab.calls(), Each(L"release"));
        SetEvent(painted.get());
    };
    window.post(WM_PAINT);
    EXPECT_EQ(unit.calculate(), S_OK);
    EXPECT_THAT(matlab.calls(), Contains(L"runUnit"));
    other.join();
}

TEST_F(WaitLoop, aRequestThatArrivesWithTheEndIsStillServed) {
    ModelBag bag;
    bag.script("").parameter(L"Duty", L"real", Variant(1.0));
    HostWindow window;
    const HostedUnit unit = createUnit(bag);
    const Handle painting(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    const Handle requested(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    // While the host paints, the script sends a command and ends: the host comes back to both events.
    window.onPaint = [&] {
        SetEvent(painting.get());
        WaitForSingleObject(requested.get(), 5000);
        Sleep(100); // the worker thread tells the end
    };
    matlab.onRun = [&](const std::wstring& folder) {
        window.post(WM_PAINT);
        EXPECT_EQ(WaitForSingleObject(painting.get(), 5000), WAIT_OBJECT_0);
        GatewayClient(folder).send(request(5) << "Duty" << 0u << 7.0);
        SetEvent(requested.get());
        return MatlabAnswer();
    };
    ASSERT_EQ(unit.calculate(), S_OK);
    EXPECT_EQ(unit.parameter(L"Duty").real(), 7.0);
}

} // namespace

} // namespace solvane
