// Units on a Matlab that serves several clients.

#include "LateBound.h"
#include "Program.h"
#include "RuntimeTest.h"

#include <gmock/gmock.h>

#include <thread>

namespace solvane {

namespace {

using testing::Contains;

using SharedMatlab = RuntimeTest;

TEST_F(SharedMatlab, keepsRunsOfTwoProcessesInTheirFolders) {
    matlab.registration.setSharedServer();
    ComRef<IDispatch> application;
    ASSERT_EQ(CoCreateInstance(scriptedMatlabClass, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch,
                               application.putVoid()),
              S_OK);
    Program first(L"SharedMatlab.exe first 200"), second(L"SharedMatlab.exe second 200");
    for (Program* client : {&first, &second}) {
        const Outcome outcome = client->wait();
        EXPECT_EQ(outcome.exitCode, 0u) << outcome.printed;
    }
    // The next client must not find Matlab in the folder of a destroyed unit.
    Variant pwd(std::wstring_view(L"pwd"));
    EXPECT_EQ(LateBound(application.get()).call(L"Execute", DISPATCH_METHOD, {pwd.get()}).value.text(),
              temporary.path() + L"SolvaneUnitMEXMatlab.Application.9.14");
}

// Both may happen inside that script's run, which then waits for it.
TEST_F(SharedMatlab, letsUnitsBeginAndEndDuringAnothersScript) {
    matlab.registration.setSharedServer();
    const Handle release(CreateEventW(nullptr, TRUE, FALSE, L"SharedMatlabTest"));
    ModelBag bag;
    bag.script("%hold SharedMatlabTest");
    const HostedUnit leaving = createUnit(); // before Matlab is busy
    std::thread other([&] {
        const Apartment own;
        const HostedUnit unit = createUnit(bag);
        EXPECT_EQ(unit.calculate(), S_OK);
    });
    while (isMutexFree(sharedMatlabMutex))
        Sleep(10);
    Sleep(100); // until the script runs
    const ULONGLONG begin = GetTickCount64();
    EXPECT_EQ(leaving.terminate(), S_OK);
    const HostedUnit coming = createUnit();
    EXPECT_LT(GetTickCount64() - begin, 5000u);
    SetEvent(release.get());
    other.join();
    EXPECT_EQ(coming.calculate(), S_OK);
}

// Another user's mutex of the same name, in the same session.
TEST_F(SharedMatlab, runsEvenIfTheSystemDeniesTheTurn) {
    ACL nobody{};
    InitializeAcl(&nobody, sizeof nobody, ACL_REVISION);
    SECURITY_DESCRIPTOR security{};
    InitializeSecurityDescriptor(&security, SECURITY_DESCRIPTOR_REVISION);
    SetSecurityDescriptorDacl(&security, TRUE, &nobody, FALSE);
    SECURITY_ATTRIBUTES attributes{sizeof attributes, &security, FALSE};
    const Handle denied(CreateMutexW(&attributes, TRUE, sharedMatlabMutex));
    ASSERT_FALSE(Handle(CreateMutexW(nullptr, FALSE, sharedMatlabMutex)));
    const HostedUnit unit = createUnit();
    EXPECT_EQ(unit.calculate(), S_OK);
    EXPECT_EQ(unit.terminate(), S_OK);
    EXPECT_THAT(matlab.calls(),
                Contains(L"cd '" + temporary.path() + L"SolvaneUnitMEXMatlab.Application.9.14'"));
}

} // namespace

} // namespace solvane
