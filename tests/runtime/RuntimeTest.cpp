#include "RuntimeTest.h"

#include <thread>

namespace solvane {

bool isMutexFree(const wchar_t* name) {
    bool isFree = false;
    std::thread([&] {
        const Handle mutex(CreateMutexW(nullptr, FALSE, name));
        isFree = WaitForSingleObject(mutex.get(), 0) == WAIT_OBJECT_0;
        if (isFree)
            ReleaseMutex(mutex.get());
    }).join();
    return isFree;
}

void RuntimeTest::calculate(ModelBag& bag, const std::function<void(GatewayClient& script)>& script) {
    const HostedUnit unit = createUnit(bag);
    matlab.onRun = [&](const std::wstring& folder) {
        GatewayClient client(folder);
        if (client.isOpen())
            script(client);
        return MatlabAnswer();
    };
    EXPECT_EQ(unit.calculate(), S_OK) << testing::PrintToString(unit.error());
    matlab.onRun = nullptr;
}

} // namespace solvane
