// A unit is built from nothing in the window alone. A host then calculates the model file that this test
// leaves.

#include "Program.h"
#include "UiTest.h"
#include "com/Text.h"

namespace solvane {
namespace {

using WholeStory = UiTest;

constexpr wchar_t script[] = L"F = getFeedProp(1, 'totalFlow');\r\n"
                             L"z = getFeedProp(1, 'fraction');\r\n"
                             L"T = getParameter('temperature');\r\n"
                             L"setProduct(1, half(F), z, 'temperature', T, 'pressure', 1e5);\r\n"
                             L"setReport('Summary', sprintf('%g mol/s', half(F)));\r\n";

TEST_F(WholeStory, buildsTestsSavesAndLoadsAUnit) {
    const std::wstring helper = temporary.path() + L"half.m";
    writeFile(helper, "function y = half(x)\ny = x/2;\n");
    const std::wstring model = builtFile(L"..\\tests\\BuiltInWindow.svm");
    DeleteFileW(model.c_str());
    writeFile(model, ""); // the dialog for saving asks for a file that is there
    std::wstring tested;
    matlab.onRun = [&](const std::wstring& folder) {
        tested = widen(readFile(folder + L"calc.m"));
        return MatlabAnswer();
    };
    EXPECT_EQ(edit([&](WindowDriver& user) {
                  user.press(L"&Add");
                  user.endLabel(IDC_PORT_FEEDS, L"Feed");
                  user.press(L"A&dd");
                  user.endLabel(IDC_PORT_PRODUCTS, L"Product");

                  user.pickTab(L"Parameters");
                  enter(user, L"&Add", L"Add parameter:", L"temperature", IDC_PARAMETER_NAME);
                  user.await(L"Real parameter \"temperature\":");
                  user.type(IDC_PARAMETER_VALUE, L"350");
                  user.type(IDC_PARAMETER_EXPONENT + 4, L"1");
                  user.press(L"OK");

                  user.pickTab(L"Reports");
                  enter(user, L"&Add", L"Add report:", L"Summary");
                  user.answer(L"Report added:");

                  user.pickTab(L"Additional files");
                  user.press(L"&Browse");
                  user.enterFile(L"Open model file:", helper);

                  user.pickTab(L"Matlab");
                  user.type(IDC_MATLAB_SCRIPT, script);
                  user.press(L"&Test");
                  saveModel(user, model);
              }),
              S_OK);
    EXPECT_EQ(tested, script);

    const HostedUnit second(module);
    WindowDriver::edit(second, [&](WindowDriver& user) {
        loadModel(user, model);
        user.pickTab(L"Ports");
    });
    ModelBag built, loaded;
    ASSERT_EQ(unit.as<IPersistPropertyBag>()->Save(&built, TRUE, TRUE), S_OK);
    ASSERT_EQ(second.as<IPersistPropertyBag>()->Save(&loaded, TRUE, TRUE), S_OK);
    EXPECT_EQ(built.written, loaded.written);
    EXPECT_EQ(loaded.texts(L"feeds"), std::vector<std::wstring>{L"Feed"});
    EXPECT_EQ(loaded.texts(L"products"), std::vector<std::wstring>{L"Product"});
    EXPECT_EQ(loaded.value(L"temperature \\ value").real(), 350);
    EXPECT_EQ(loaded.value(L"file \\ calc.m").text(), script);
    EXPECT_EQ(loaded.texts(L"files"), (std::vector<std::wstring>{L"half.m", L"calc.m"}));
}

} // namespace
} // namespace solvane
