#include "AutomationCall.h"

#include "channel/DedicatedServer.h"
#include "com/CapeError.h"

#include <algorithm>
#include <array>

namespace solvane {

namespace {

// The failures of a call to an object whose process has ended.
constexpr std::array codesOfLostServers = {
    RPC_E_DISCONNECTED,
    RPC_E_SERVER_DIED,
    RPC_E_SERVER_DIED_DNE,
    HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE),
    HRESULT_FROM_WIN32(RPC_S_CALL_FAILED),
    HRESULT_FROM_WIN32(RPC_S_CALL_FAILED_DNE),
    CO_E_OBJNOTCONNECTED,
};

HRESULT findMember(IDispatch* object, const wchar_t* name, DISPID& id) {
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    return object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
}

/// The server's own description of a failure; may be empty.
std::wstring takeDescription(EXCEPINFO& exception) {
    if (exception.pfnDeferredFillIn)
        exception.pfnDeferredFillIn(&exception);
    Bstr description, source, helpFile;
    *description.put() = exception.bstrDescription;
    *source.put() = exception.bstrSource;
    *helpFile.put() = exception.bstrHelpFile;
    return std::wstring(description.view());
}

bool call(std::wstring& output, WORD flags, VARIANT* result, IDispatch* object, const wchar_t* name,
          DISPPARAMS& parameters) {
    DISPID id = 0;
    HRESULT hr = findMember(object, name, id);
    if (FAILED(hr)) {
        output = std::wstring(L"GetIDsOfNames failed for ") + name + L": " + FormatHresultText(hr);
        return false;
    }
    EXCEPINFO exception{};
    hr = object->Invoke(id, IID_NULL, LOCALE_SYSTEM_DEFAULT, flags, &parameters, result, &exception, nullptr);
    const std::wstring cause = takeDescription(exception);
    if (FAILED(hr)) {
        output = std::wstring(L"Call to ") + name + L" failed: " + FormatHresultText(hr);
        // "Exception occurred." alone would hide the reason from the user.
        if (hr == DISP_E_EXCEPTION && !cause.empty())
            output += L": " + cause;
        return false;
    }
    return true;
}

} // namespace

bool invokeMethod(std::wstring& output, VARIANT* result, IDispatch* object, const wchar_t* name,
                  std::span<VARIANT> arguments) {
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    return call(output, DISPATCH_METHOD, result, object, name, parameters);
}

bool putProperty(std::wstring& output, IDispatch* object, const wchar_t* name, const VARIANT& value) {
    VARIANT argument = value;
    DISPID propertyPut = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{&argument, &propertyPut, 1, 1};
    return call(output, DISPATCH_PROPERTYPUT, nullptr, object, name, parameters);
}

bool executeCommand(IDispatch* application, const std::wstring& command, std::wstring& output) {
    const Variant text{std::wstring_view(command)};
    VARIANT argument = text.get();
    Variant printed;
    if (!invokeMethod(output, printed.put(), application, L"Execute", {&argument, 1}))
        return false;
    if (printed.type() == VT_BSTR)
        output = printed.text();
    else if (printed.type() != VT_EMPTY)
        output = L"<unknown return value>";
    return true;
}

bool isServerDedicated(IDispatch* application) {
    DISPPARAMS none{};
    Variant answer;
    std::wstring error;
    return call(error, DISPATCH_PROPERTYGET, answer.put(), application, dedicatedServerProperty, none) &&
           answer.type() == VT_BOOL && answer.boolean() != VARIANT_FALSE;
}

bool isServerGone(IDispatch* application) {
    DISPID id = 0;
    return std::ranges::find(codesOfLostServers, findMember(application, L"Execute", id)) !=
           codesOfLostServers.end();
}

} // namespace solvane
