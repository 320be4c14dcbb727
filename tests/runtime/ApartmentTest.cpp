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

TEST_F(Apartments, runsOfTwoThreadsGoOneAfterTheOther) {
    const Handle secondMayStart = makeEvent();
    const Handle secondStarted = makeEvent();
    const Handle secondReachedMatlab = makeEvent();
    std::atomic<int> inScript{0};
    std::atomic<int> runs{0};
    matlab.onRun = [&](const std::wstring&) {
        EXPECT_EQ(++inScript, 1);
        if (++runs == 1) {
            SetEvent(secondMayStart.get());
            EXPECT_EQ(WaitForSingleObject(secondStarted.get(), 5000), WAIT_OBJECT_0);
            // The other unit waits for the lock, not at Matlab's door.
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
        const HostedUnit unit = createUnit();
        EXPECT_EQ(WaitForSingleObject(secondMayStart.get(), 5000), WAIT_OBJECT_0);
        SetEvent(secondStarted.get());
        EXPECT_EQ(unit.calculate(), S_OK);
        EXPECT_EQ(unit.output(), L"2");
    });
    EXPECT_EQ(first.calculate(), S_OK);
    second.join();
    EXPECT_EQ(runs, 2);
}

/// Marshals an object of this apartment to `body`, which runs on a thread of the multi-threaded apartment
/// while this one serves its calls.
void useFromAnotherApartment(IUnknown* object, const std::function<void(IUnknown* proxy)>& body) {
    ComRef<IStream> stream;
    ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(IID_IUnknown, object, stream.put()), S_OK);
    const Handle done = makeEvent();
    std::thread thread([&] {
        const Apartment multiThreaded(COINIT_MULTITHREADED);
        ComRef<IUnknown> proxy;
        EXPECT_EQ(CoGetInterfaceAndReleaseStream(stream.release(), IID_IUnknown, proxy.putVoid()), S_OK);
        if (proxy)
            body(proxy.get());
        proxy.reset();
        SetEvent(done.get());
    });
    HANDLE event = done.get();
    DWORD index = 0;
    EXPECT_EQ(CoWaitForMultipleHandles(0, 30000, 1, &event, &index), S_OK);
    thread.join();
}

// The interfaces are dual, so their marshalling comes from the registered type library.
TEST_F(Apartments, aUnitIsUsedThroughProxies) {
    ModelBag bag;
    bag.script("").parameter(L"Duty", L"real", Variant(1.0)).feeds({L"Feed"});
    const HostedUnit unit = createUnit(bag);
    DWORD scriptThread = 0;
    matlab.onRun = [&](const std::wstring& folder) {
        scriptThread = GetCurrentThreadId();
        GatewayClient script(folder);
        script.expect(request(5) << "Duty" << 0u << 7.0, succeeded());
        script.expect(request(13), succeeded() << 1u);
        return printed(L"Evaluation error: far away");
    };
    ASSERT_EQ(unit.connect(L"Feed", FakeMaterial11::create()->dispatch()), S_OK);
    useFromAnotherApartment(unit.as<IUnknown>().get(), [&](IUnknown* proxy) {
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

} // namespace

} // namespace solvane
