// Units on several threads of one process.

#include "FakeMaterial11.h"
#include "RuntimeTest.h"

#include <atomic>
#include <thread>

namespace solvane {

namespace {

using Apartments = RuntimeTest;

Handle makeEvent() {
    return Handle(CreateEventW(nullptr, FALSE, FALSE, nullptr));
}

TEST_F(Apartments, serializeTheRunsOfTwoThreads) {
    const Handle secondMayStart = makeEvent();
    const Handle secondStarted = makeEvent();
    const Handle secondReachedMatlab = makeEvent(); // or its material
    std::atomic<int> inScript{0};
    std::atomic<int> runs{0};
    matlab.onRun = [&](const std::wstring&) {
        EXPECT_EQ(++inScript, 1);
        if (++runs == 1) {
            SetEvent(secondMayStart.get());
            EXPECT_EQ(WaitForSingleObject(secondStarted.get(), 5000), WAIT_OBJECT_0);
            // The other unit waits for the lock, not for Matlab, and has not read its lists.
            EXPECT_EQ(WaitForSingleObject(secondReachedMatlab.get(), 200), DWORD{WAIT_TIMEOUT});
        }
        --inScript;
        return printed(std::to_wstring(runs));
    };
    matlab.onCommand = [&](const std::wstring& command) {
        if (runs > 0 && command.starts_with(L"cd "))
            SetEvent(secondReachedMatlab.get());
        return MatlabAnswer();
    };
    const HostedUnit first = createUnit();
    std::thread second([&] {
        const Apartment ownApartment;
        ModelBag bag;
        const HostedUnit unit = createUnit(bag.script("").feeds({L"Feed"}));
        const auto material = FakeMaterial11::create();
        EXPECT_EQ(unit.connect(L"Feed", material->dispatch()), S_OK);
        EXPECT_EQ(WaitForSingleObject(secondMayStart.get(), 5000), WAIT_OBJECT_0);
        material->record->onCall = [&](const std::string& call) {
            if (call.starts_with("copy."))
                SetEvent(secondReachedMatlab.get());
        };
        SetEvent(secondStarted.get());
        EXPECT_EQ(unit.calculate(), S_OK);
        EXPECT_EQ(unit.output(), L"2");
    });
    EXPECT_EQ(first.calculate(), S_OK);
    second.join();
    EXPECT_EQ(runs, 2);
}

/// Serves the calls of other apartments until the event is set.
void serveUntil(HANDLE event) {
    DWORD index = 0;
    EXPECT_EQ(CoWaitForMultipleHandles(0, 30000, 1, &event, &index), S_OK);
}

/// Marshals an object of this apartment to `body`, which runs on a thread of another apartment. This thread
/// runs `meanwhile` and then serves the calls of `body`.
void useFromAnotherApartment(
    IUnknown* object, COINIT kind, const std::function<void(IUnknown* proxy)>& body,
    const std::function<void()>& meanwhile = [] {}) {
    ComRef<IStream> stream;
    ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(IID_IUnknown, object, stream.put()), S_OK);
    const Handle done = makeEvent();
    std::thread thread([&] {
        const Apartment apartment(kind);
        ComRef<IUnknown> proxy;
        EXPECT_EQ(CoGetInterfaceAndReleaseStream(stream.release(), IID_IUnknown, proxy.putVoid()), S_OK);
        if (proxy)
            body(proxy.get());
        proxy.reset();
        SetEvent(done.get());
    });
    meanwhile();
    serveUntil(done.get());
    thread.join();
}

// The interfaces are dual, so their marshalling comes from the registered type library.
TEST_F(Apartments, reachAUnitThroughProxies) {
    ModelBag bag;
    bag.script("").parameter(L"Duty", L"real", Variant(1.0)).feeds({L"Feed"});
    const HostedUnit unit = createUnit(bag);
    DWORD scriptThread = 0;
    matlab.onRun = [&](const std::wstring& folder) {
        scriptThread = GetCurrentThreadId();
        APTTYPE kind = APTTYPE_CURRENT;
        APTTYPEQUALIFIER ignored;
        EXPECT_EQ(CoGetApartmentType(&kind, &ignored), S_OK);
        EXPECT_EQ(kind, APTTYPE_STA);
        GatewayClient script(folder);
        script.expect(request(CommandCode::setParameter) << "Duty" << ValueTag::real << 7.0, succeeded());
        script.expect(request(CommandCode::getFeedCount), succeeded() << 1u);
        return printed(L"Evaluation error: far away");
    };
    ASSERT_EQ(unit.connect(L"Feed", FakeMaterial11::create()->dispatch()), S_OK);
    useFromAnotherApartment(unit.as<IUnknown>().get(), COINIT_MULTITHREADED, [&](IUnknown* proxy) {
        const HostedUnit remote{ComRef<IUnknown>(proxy)};
        ASSERT_TRUE(remote.as<ICapeUnit>()) << "the CAPE-OPEN type library is not registered";
        EXPECT_EQ(remote.validate(), L"");
        EXPECT_EQ(remote.calculate(), capeFailure);
        EXPECT_EQ(remote.error(), L"Calculate failed | far away | Calculate | ICapeUnit");
        EXPECT_EQ(remote.output(), L"Evaluation error: far awayfar away");
        EXPECT_EQ(remote.parameter(L"Duty").real(), 7.0);
        EXPECT_EQ(remote.disconnect(L"Feed"), S_OK);
        EXPECT_EQ(remote.validate(), L"Feed port \"Feed\" is not connected");
    });
    EXPECT_NE(scriptThread, GetCurrentThreadId());
}

// Units of two apartments, one with the other's material: the thread that waits for the run has to serve the
// material. It serves calls to its own unit too.
TEST_F(Apartments, serveTheMaterialOfARunThatTheyWaitFor) {
    const HostedUnit waiting = createUnit();
    const auto material = FakeMaterial11::create();
    bool isTerminated = false;
    material->record->onCall = [&](const std::string& call) {
        isTerminated |= call.starts_with("GetOverallProp") && waiting.terminate() == S_OK;
    };
    const Handle inScript = makeEvent();
    const Handle isAboutToWait = makeEvent();
    matlab.onRun = [&](const std::wstring& folder) {
        GatewayClient script(folder);
        SetEvent(inScript.get());
        EXPECT_EQ(WaitForSingleObject(isAboutToWait.get(), 5000), WAIT_OBJECT_0);
        Sleep(100); // it waits
        script.expect(request(CommandCode::getFeedProp) << 1 << "temperature", succeeded() << 0u << 300.0);
        return MatlabAnswer();
    };
    useFromAnotherApartment(
        material->dispatch(), COINIT_APARTMENTTHREADED,
        [&](IUnknown* proxy) {
            ModelBag bag;
            const HostedUnit unit = createUnit(bag.script("").feeds({L"Feed"}));
            EXPECT_EQ(unit.connect(L"Feed", queryInterface<IDispatch>(proxy).get()), S_OK);
            EXPECT_EQ(unit.calculate(), S_OK);
        },
        [&] {
            serveUntil(inScript.get());
            SetEvent(isAboutToWait.get());
            EXPECT_EQ(waiting.calculate(), capeFailure);
            EXPECT_TRUE(isTerminated);
            EXPECT_EQ(waiting.validate(), L"Terminate has been called on unit operation");
        });
}

// The outer run waits for its material, and so for the inner run: that must not wait for the outer one's
// lock.
TEST_F(Apartments, allowANestedRunOnTheThreadOfAMaterial) {
    matlab.dedicated = true;
    const HostedUnit inner = createUnit();
    HRESULT innerResult = E_PENDING;
    const auto material = FakeMaterial11::create();
    material->record->onCall = [&](const std::string& call) {
        if (call.starts_with("copy.GetPhaseList"))
            innerResult = inner.calculate();
    };
    useFromAnotherApartment(material->dispatch(), COINIT_APARTMENTTHREADED, [&](IUnknown* proxy) {
        ModelBag bag;
        const HostedUnit outer = createUnit(bag.script("").feeds({L"Feed"}));
        EXPECT_EQ(outer.connect(L"Feed", queryInterface<IDispatch>(proxy).get()), S_OK);
        EXPECT_EQ(outer.calculate(), S_OK);
    });
    EXPECT_EQ(innerResult, S_OK);
}

// The unit is called through a proxy while it calls the material through one.
TEST_F(Apartments, letAMaterialOfAnotherApartmentCallBack) {
    ModelBag bag;
    const HostedUnit unit = createUnit(bag.script("").feeds({L"Feed"}));
    useFromAnotherApartment(unit.as<IUnknown>().get(), COINIT_APARTMENTTHREADED, [&](IUnknown* proxy) {
        const HostedUnit remote{ComRef<IUnknown>(proxy)};
        const auto material = FakeMaterial11::create();
        HRESULT calculated = S_OK, terminated = E_FAIL;
        material->record->onCall = [&](const std::string& call) {
            if (!call.starts_with("CreateMaterial"))
                return;
            calculated = remote.calculate();
            terminated = remote.terminate();
        };
        EXPECT_EQ(remote.connect(L"Feed", material->dispatch()), S_OK);
        EXPECT_EQ(remote.calculate(), capeFailure);
        EXPECT_EQ(remote.errorDescription(), L"Terminate has been called on unit operation");
        EXPECT_EQ(calculated, capeFailure);
        EXPECT_EQ(terminated, S_OK);
    });
}

} // namespace

} // namespace solvane
