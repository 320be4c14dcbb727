#include "RuntimeTest.h"

namespace solvane {

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
