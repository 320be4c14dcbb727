#include "RuntimeTest.h"

#include <ranges>

namespace solvane {

std::wstring RuntimeTest::workingFolder() {
    const std::wstring before = L"addpath '";
    for (const std::wstring& call : matlab.calls() | std::views::reverse)
        if (call.starts_with(before) && call.ends_with(L"\\'"))
            return call.substr(before.size(), call.size() - before.size() - 1);
    return {};
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
