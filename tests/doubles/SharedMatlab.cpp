// SharedMatlab: a Matlab.Application that all its clients share, in a process of its own, which carries out
// one command after another and keeps its folder between them. Started otherwise than by COM, it is a client:
// the process of a simulator that calculates one unit often.

#include "Folders.h"
#include "HostTest.h"
#include "HostedUnit.h"
#include "ScriptedMatlab.h"
#include "com/ClassFactory.h"
#include "com/LastingStub.h"
#include "com/Text.h"
#include "engine/ClientWatch.h"

#include <array>
#include <cstdio>
#include <cwchar>
#include <span>

namespace solvane {

namespace {

ComModule thisProgram;

// ---- the server

std::wstring currentFolder;

/// What a Matlab prints: the script of the current folder prints itself.
std::wstring execute(const std::wstring& command) {
    const std::wstring cd = L"cd '";
    if (command.starts_with(cd)) {
        currentFolder = command.substr(cd.size(), command.size() - cd.size() - 1);
    } else if (command == L"pwd") {
        return currentFolder;
    } else if (command == L"runUnit") {
        const std::wstring script = widen(readFile(currentFolder + L"\\unitCalc.m"));
        const std::wstring hold = L"%hold ";
        if (const std::size_t place = script.find(hold); place != std::wstring::npos)
            WaitForSingleObject(
                Handle(OpenEventW(SYNCHRONIZE, FALSE, script.substr(place + hold.size()).c_str())).get(),
                10000);
        return script;
    }
    return {};
}

class Application : public CComObjectRoot, public IDispatch {
public:
    static std::span<const InterfaceEntry> interfaceTable() {
        static constexpr std::array table = {interfaceEntry<Application, IDispatch>()};
        return table;
    }
    HRESULT FinalConstruct() { return S_OK; }

    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        *ids = 1;
        return std::wcscmp(names[0], L"Execute") == 0 ? S_OK : DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO*,
                        UINT*) override {
        *result = Variant(execute(parameters->rgvarg[0].bstrVal)).release();
        return S_OK;
    }
};

/// Until the process of its first client ends.
int serve() {
    engine::endWithClient();
    const Apartment apartment;
    const LastingStub factories(IID_IClassFactory), objects(IID_IDispatch);
    ComRef<IUnknown> factory;
    DWORD registered = 0;
    createClassFactory(createInstance<Application>, factory.putVoid());
    if (FAILED(CoRegisterClassObject(scriptedMatlabClass, factory.get(), CLSCTX_LOCAL_SERVER,
                                     REGCLS_MULTIPLEUSE, &registered)))
        return 1;
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    return 0;
}

// ---- the client

/// How many runs failed, or ran another unit's script.
int calculate(const std::wstring& name, int runs) {
    const Apartment apartment;
    const UnitModule module;
    ModelBag bag;
    const HostedUnit unit(module);
    if (FAILED(unit.load(bag.script("%" + narrow(name)))))
        return runs;
    int astray = 0;
    for (int i = 0; i < runs; ++i) {
        const std::wstring output = SUCCEEDED(unit.calculate()) ? unit.output() : unit.errorDescription();
        if (!output.ends_with(L"%" + name) && ++astray == 1)
            std::printf("%ls, run %d: %ls\n", name.c_str(), i, output.c_str());
    }
    return astray;
}

} // namespace

} // namespace solvane

/// `SharedMatlab NAME RUNS` is a client, whose exit code is the count of the runs that went astray.
int main(int count, char** arguments) {
    if (count != 3)
        return solvane::serve();
    return solvane::calculate(solvane::widen(arguments[1]), std::atoi(arguments[2]));
}
