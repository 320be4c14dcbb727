#include "Steps.h"

#include "cases/FilePath.h"
#include "com/CapeError.h"
#include "com/Registry.h"
#include "com/Text.h"
#include "com/Variant.h"
#include "flowsheet/InterfaceRegistration.h"

#include <objbase.h>

#include <array>
#include <cstdint>
#include <cstring>

namespace solvane::host {

namespace {

constexpr char registerAgain[] = "Run setup again. Or register the unit: \"regsvr32 "
                                 "SolvaneUnitOperation.dll\" in its folder, from a prompt that runs as "
                                 "administrator.";
constexpr char registerWordSize[] =
    "Register the module of the simulator's word size: \"regsvr32 SolvaneUnitOperation.dll\" in its folder, "
    "from a prompt that runs as administrator.";
constexpr int ownBits = sizeof(void*) * 8;
constexpr REGSAM otherView = ownBits == 64 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

constexpr wchar_t unitCategory[] = L"\\Implemented Categories\\{678C09A5-7D66-11D2-A67D-00105A42887F}";
constexpr std::array descriptionValues = {L"Name",      L"Description", L"CapeVersion", L"ComponentVersion",
                                          L"VendorURL", L"About"};

std::wstring classKey(const CLSID& classId) {
    std::array<wchar_t, 40> text{};
    StringFromGUID2(classId, text.data(), text.size());
    return std::wstring(L"CLSID\\") + text.data();
}

/// 64 or 32; 0 if the file is neither such module.
int wordSizeOf(const std::string& module) {
    constexpr std::size_t headerPlace = 0x3c;
    constexpr std::size_t machineAfterHeader = 4;
    std::uint32_t header = 0;
    std::uint16_t machine = 0;
    if (module.size() < headerPlace + sizeof header)
        return 0;
    std::memcpy(&header, module.data() + headerPlace, sizeof header);
    if (module.size() < std::size_t{header} + machineAfterHeader + sizeof machine)
        return 0;
    std::memcpy(&machine, module.data() + header + machineAfterHeader, sizeof machine);
    return machine == IMAGE_FILE_MACHINE_AMD64 ? 64 : machine == IMAGE_FILE_MACHINE_I386 ? 32 : 0;
}

Finding notRegistered(const std::string& progId) {
    std::string text = "\"" + progId + "\" is not registered";
    if (readRegistryString(HKEY_LOCAL_MACHINE, L"Software\\Classes\\" + widen(progId) + L"\\CLSID", L"",
                           otherView))
        return {text + " for " + std::to_string(ownBits) + "-bit programs, only for the others",
                registerWordSize};
    return {text, registerAgain};
}

} // namespace

Finding lookAtUnitClass(Machine& machine) {
    const std::string progId = machine.unitCase.progId;
    if (FAILED(CLSIDFromProgID(widen(progId).c_str(), &machine.unitClass)))
        return notRegistered(progId);
    const auto module =
        readRegistryString(HKEY_CLASSES_ROOT, classKey(machine.unitClass) + L"\\InprocServer32", L"");
    if (!module)
        return notRegistered(progId);
    const std::filesystem::path path(*module);
    std::string bytes, error;
    if (!readFile(path, bytes, error))
        return {error + ", but is registered as the unit", registerAgain};
    const int bits = wordSizeOf(bytes);
    if (bits != ownBits)
        return {pathText(path) + " is registered as the unit, but is not a " + std::to_string(ownBits) +
                    "-bit module",
                registerWordSize};
    machine.unitFolder = path.parent_path();
    return {pathText(path) + ", " + std::to_string(bits) + " bits", {}};
}

Finding lookAtCategories(Machine& machine) {
    const std::wstring key = classKey(machine.unitClass);
    RegistryKey category;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, (key + unitCategory).c_str(), 0, KEY_READ, category.put()) !=
        ERROR_SUCCESS)
        return {"Simulators do not list the unit: it is not registered as a CAPE-OPEN unit operation",
                registerAgain};
    std::wstring name, version;
    for (const wchar_t* value : descriptionValues) {
        const auto text = readRegistryString(HKEY_CLASSES_ROOT, key + L"\\CapeDescription", value);
        if (!text)
            return {"CapeDescription has no value " + narrow(value), registerAgain};
        if (value == descriptionValues.front())
            name = *text;
        if (std::wstring_view(value) == L"ComponentVersion")
            version = *text;
    }
    return {narrow(name, CP_UTF8) + " " + narrow(version, CP_UTF8) + ", a CAPE-OPEN unit operation", {}};
}

Finding lookAtModule(Machine& machine) {
    ComRef<IUnknown> factory;
    const HRESULT result = CoGetClassObject(machine.unitClass, CLSCTX_INPROC_SERVER, nullptr,
                                            IID_IClassFactory, factory.putVoid());
    if (SUCCEEDED(result))
        return {"It loads", {}};
    return {"It does not load: " + narrow(FormatHresultText(result), CP_UTF8),
            std::string("Windows may block a file from the internet: choose Unblock in the Properties of the "
                        "unit's files. ") +
                filesAgain};
}

Finding lookAtUnitTypeLibrary(Machine& machine) {
    const auto id = readRegistryString(HKEY_CLASSES_ROOT, classKey(machine.unitClass) + L"\\TypeLib", L"");
    GUID library{};
    ComRef<ITypeLib> loaded;
    if (!id || FAILED(CLSIDFromString(id->c_str(), &library)) ||
        FAILED(LoadRegTypeLib(library, 1, 0, LOCALE_NEUTRAL, loaded.put())))
        return {"The unit's type library is not registered, or its file is gone", registerAgain};
    return {"It loads", {}};
}

Finding lookAtInterfaces(Machine&) {
    if (areInterfacesRegistered())
        return {"The CAPE-OPEN type library loads", {}};
    return {
        "The CAPE-OPEN type library is not registered, or its file is gone: simulators that call a unit from "
        "several threads or processes need it",
        "Run \"SolvaneHost register-interfaces\" as administrator."};
}

} // namespace solvane::host
