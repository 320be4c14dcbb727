#include "Engine.h"

#include "Folders.h"
#include "UnitModule.h"
#include "com/Handle.h"
#include "com/Variant.h"
#include "runtime/MatlabCreation.h"

namespace solvane {

Engine::Engine() {
    CLSID classId;
    if (SUCCEEDED(CLSIDFromProgID(L"Matlab.Application", &classId)))
        createMatlabApplication(classId, application_);
}

std::wstring Engine::execute(const std::wstring& command) const {
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

std::wstring workingFolderIn(const std::wstring& temporary) {
    for (const std::wstring& name : namesIn(temporary))
        if (name.starts_with(L"{"))
            return temporary + name + L"\\";
    return {};
}

void addPaths(const Engine& engine, const std::wstring& folder) {
    const std::wstring module = UnitModule::builtPath();
    engine.execute(L"addpath '" + module.substr(0, module.rfind(L'\\')) + L"'");
    engine.execute(L"addpath '" + folder + L"'");
}

bool runBare(const Engine& engine, const std::wstring& folder) {
    const std::wstring id = folder.substr(folder.rfind(L'{'), 38);
    const Handle block(
        CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 2048, id.c_str()));
    engine.execute(L"cd '" + folder + L"'");
    return engine.execute(L"runUnit").ends_with(L"MATLAB done\n");
}

} // namespace solvane
