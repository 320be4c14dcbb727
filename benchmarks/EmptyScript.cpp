#include "EmptyScript.h"

#include "Folders.h"
#include "HostedUnit.h"
#include "Verdict.h"
#include "com/Text.h"

#include <chrono>
#include <cstdio>
#include <functional>

namespace solvane {

namespace {

constexpr int turns = 80;

/// A client of the engine beside the unit's own.
class Engine {
public:
    Engine() {
        CLSID classId;
        if (SUCCEEDED(CLSIDFromProgID(L"Matlab.Application", &classId)))
            CoCreateInstance(classId, nullptr, CLSCTX_ALL, IID_IDispatch, application_.putVoid());
    }
    explicit operator bool() const { return static_cast<bool>(application_); }

    std::wstring execute(const std::wstring& command) {
        LPOLESTR name = const_cast<LPOLESTR>(L"Execute");
        DISPID id = 0;
        application_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
        const Variant text{std::wstring_view(command)};
        VARIANT argument = text.get();
        DISPPARAMS parameters{&argument, nullptr, 1, 0};
        Variant printed;
        const HRESULT called = application_->Invoke(id, IID_NULL, LOCALE_SYSTEM_DEFAULT, DISPATCH_METHOD,
                                                    &parameters, printed.put(), nullptr, nullptr);
        return SUCCEEDED(called) && printed.type() == VT_BSTR ? std::wstring(printed.text()) : L"?";
    }

private:
    ComRef<IDispatch> application_;
};

double milliseconds(const std::function<bool()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    if (!work())
        return -1;
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

/// The unit's working folder: the only one with a name in braces in a temporary folder of our own.
std::wstring workingFolderIn(const std::wstring& temporary) {
    for (const std::wstring& name : namesIn(temporary))
        if (name.starts_with(L"{"))
            return temporary + name + L"\\";
    return {};
}

} // namespace

bool compareEmptyScript() {
    const TemporaryFolder temporary;
    const UnitModule module;
    const HostedUnit unit(module);
    ModelBag bag;
    bag.script("");
    Engine engine;
    if (!engine || FAILED(unit.load(bag)) || FAILED(unit.calculate())) {
        std::printf("  no run on the real engine: %s\n",
                    narrow(unit.validate() + unit.errorDescription()).c_str());
        return false;
    }

    const std::wstring folder = workingFolderIn(temporary.path());
    const std::wstring modulePath = UnitModule::builtPath();
    engine.execute(L"addpath '" + modulePath.substr(0, modulePath.rfind(L'\\')) + L"'");
    engine.execute(L"addpath '" + folder + L"'");
    // The gateway opens a block; nobody answers in it, since an empty script asks nothing.
    const std::string id = narrow(folder.substr(temporary.path().size(), 38));
    const auto calculate = [&] { return milliseconds([&] { return SUCCEEDED(unit.calculate()); }); };
    const auto executeBare = [&] {
        const Handle block(
            CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 2048, id.c_str()));
        return milliseconds([&] {
            engine.execute(L"cd '" + folder + L"'");
            return engine.execute(L"runUnit").ends_with(L"MATLAB done\n");
        });
    };
    std::vector<double> calculations, commands;
    for (int turn = 0; turn <= turns; ++turn) {
        // Who comes second finds the machine's caches warm, so they take turns in that too.
        const bool calculatesFirst = turn % 2 == 0;
        double calculation = calculatesFirst ? calculate() : 0;
        const double bare = executeBare();
        if (!calculatesFirst)
            calculation = calculate();
        if (calculation < 0 || bare < 0) {
            std::printf("  a run failed: %s\n", narrow(unit.output()).c_str());
            return false;
        }
        if (turn > 0) {
            calculations.push_back(calculation);
            commands.push_back(bare);
        }
    }
    std::printf("  Calculate %.2f ms, bare commands %.2f ms\n", median(calculations), median(commands));
    return printAtMost("(c) Calculate / bare commands", median(ratios(calculations, commands)), 1.10);
}

} // namespace solvane
