// What the host's thread does while the script runs.

#include "RuntimeTest.h"
#include "SimulatorWindow.h"

#include <gmock/gmock.h>

#include <thread>

namespace solvane {

namespace {

using testing::Contains;
using testing::Each;
using testing::HasSubstr;

using WaitLoop = RuntimeTest;

TEST_F(WaitLoop, servesPaintMessagesAndLeavesInputQueued) {
    SimulatorWindow window;
    const HostedUnit unit = createUnit();
    const Handle painted(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    window.onPaint = [&] { SetEvent(painted.get()); };
    for (const bool asksWithoutPause : {false, true}) {
        matlab.onRun = [&](const std::wstring& folder) {
            GatewayClient script(folder);
            window.post(SimulatorWindow::inputMessage);
            window.post(WM_PAINT);
            const ULONGLONG begin = GetTickCount64();
            while (WaitForSingleObject(painted.get(), asksWithoutPause ? 0 : 5000) != WAIT_OBJECT_0 &&
                   GetTickCount64() - begin < 5000)
                script.call(request(CommandCode::getUnitName));
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

// The thread already holds the lock of the outer run, but a shared Matlab cannot run two scripts at once. The
// inner unit ends without calling the busy Matlab.
TEST_F(WaitLoop, allowsANestedRunWhereEachUnitHasAMatlab) {
    for (const bool isDedicated : {true, false}) {
        matlab.dedicated = isDedicated;
        SimulatorWindow window;
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

// The other unit's process dies and so loses its turn.
TEST_F(WaitLoop, servesPaintMessagesWhileWaitingForASharedMatlab) {
    SimulatorWindow window;
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
    // A unit that is terminated meanwhile stops waiting, and does not change Matlab's directory.
    window.onPaint = [&] { EXPECT_EQ(leaving.terminate(), S_OK); };
    window.post(WM_PAINT);
    EXPECT_EQ(leaving.calculate(), capeFailure);
    EXPECT_THAT(narrow(leaving.errorDescription()), HasSubstr("terminated while it waited"));
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

// Checking for any message removes it too.
TEST_F(WaitLoop, preservesTheQuitMessage) {
    const HostedUnit unit = createUnit();
    PostQuitMessage(7);
    EXPECT_EQ(unit.calculate(), S_OK);
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) && message.message != WM_QUIT)
        DispatchMessageW(&message);
    EXPECT_EQ(message.message, UINT{WM_QUIT});
    EXPECT_EQ(message.wParam, 7u);
}

TEST_F(WaitLoop, isNotDelayedByAnEndlesslyPaintingWindow) {
    for (const DWORD paintTime : {0, 5}) {
        SimulatorWindow window;
        const HostedUnit unit = createUnit();
        const Handle painted(CreateEventW(nullptr, TRUE, FALSE, nullptr));
        const ULONGLONG begin = GetTickCount64();
        window.onPaint = [&] {
            SetEvent(painted.get());
            Sleep(paintTime);
            if (GetTickCount64() - begin < 5000)
                window.post(WM_PAINT);
        };
        matlab.onRun = [&](const std::wstring& folder) {
            GatewayClient script(folder);
            window.post(WM_PAINT);
            EXPECT_EQ(WaitForSingleObject(painted.get(), 5000), WAIT_OBJECT_0);
            for (int i = 0; i < 100; ++i)
                script.call(request(CommandCode::getUnitName));
            return MatlabAnswer();
        };
        EXPECT_EQ(unit.calculate(), S_OK);
        EXPECT_LT(GetTickCount64() - begin, 2000u) << paintTime;
    }
}

TEST_F(WaitLoop, servesARequestThatArrivesWithTheEnd) {
    ModelBag bag;
    bag.script("").parameter(L"Duty", L"real", Variant(1.0));
    SimulatorWindow window;
    const HostedUnit unit = createUnit(bag);
    const Handle painting(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    const Handle requested(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    // While the host paints, the script sends a command and ends: afterwards both events are set.
    window.onPaint = [&] {
        SetEvent(painting.get());
        WaitForSingleObject(requested.get(), 5000);
        Sleep(100); // until the worker thread signals the end
    };
    matlab.onRun = [&](const std::wstring& folder) {
        window.post(WM_PAINT);
        EXPECT_EQ(WaitForSingleObject(painting.get(), 5000), WAIT_OBJECT_0);
        GatewayClient(folder).send(request(CommandCode::setParameter) << "Duty" << ValueTag::real << 7.0);
        SetEvent(requested.get());
        return MatlabAnswer();
    };
    ASSERT_EQ(unit.calculate(), S_OK);
    EXPECT_EQ(unit.parameter(L"Duty").real(), 7.0);
}

} // namespace

} // namespace solvane
