#include "AutomationObject.h"

#include "ClientWatch.h"
#include "OctaveSession.h"
#include "channel/DedicatedServer.h"
#include "com/Border.h"
#include "com/Text.h"
#include "com/Variant.h"

#include <algorithm>
#include <array>

namespace solvane::engine {

namespace {

enum Member : DISPID { executeMember = 1, visibleMember, quitMember, dedicatedMember };

struct MemberName {
    const wchar_t* name;
    Member member;
};

constexpr std::array memberNames = {
    MemberName{L"Execute", executeMember},
    MemberName{L"Visible", visibleMember},
    MemberName{L"Quit", quitMember},
    MemberName{dedicatedServerProperty, dedicatedMember},
};

/// The only argument of a member, converted if the client sent it as another type.
HRESULT readOnlyArgument(DISPPARAMS& parameters, VARTYPE type, Variant& argument, UINT* argumentError) {
    if (parameters.cArgs != 1)
        return DISP_E_BADPARAMCOUNT;
    const HRESULT converted = VariantChangeType(argument.put(), &parameters.rgvarg[0], 0, type);
    if (FAILED(converted) && argumentError)
        *argumentError = 0;
    return converted;
}

/// The record's code differs from the result of the call, which only says that there is a record.
void describe(EXCEPINFO* exception, HRESULT code, const std::wstring& text) {
    if (!exception)
        return;
    *exception = {};
    exception->bstrSource = newBstr(L"OctaveAutomationServer");
    exception->bstrDescription = newBstr(text);
    exception->scode = code == DISP_E_EXCEPTION ? E_FAIL : code;
}

// The time for a reply to leave, in milliseconds.
constexpr UINT replyTime = 200;

void CALLBACK endNow(HWND, UINT, UINT_PTR, DWORD) {
    PostQuitMessage(0);
}

/// Ends the process when another thread has sent the reply to the call in progress. A process that ends
/// earlier fails the client's call with RPC_S_CALL_FAILED, or hangs in CoUninitialize.
void endAfterReply() {
    if (!SetTimer(nullptr, 0, replyTime, endNow))
        PostQuitMessage(0);
}

} // namespace

CAutomationObject::~CAutomationObject() {
    endAfterReply();
}

std::span<const InterfaceEntry> CAutomationObject::interfaceTable() {
    static constexpr std::array table = {interfaceEntry<CAutomationObject, IDispatch>()};
    return table;
}

HRESULT CAutomationObject::FinalConstruct() {
    OctaveSession::current().waitUntilReady();
    return S_OK;
}

STDMETHODIMP CAutomationObject::GetTypeInfoCount(UINT* count) {
    return prepareResult(count) ? S_OK : E_POINTER;
}

STDMETHODIMP CAutomationObject::GetTypeInfo(UINT, LCID, ITypeInfo** result) {
    return prepareResult(result) ? DISP_E_BADINDEX : E_POINTER;
}

STDMETHODIMP CAutomationObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (!names || !ids || std::find(names, names + count, nullptr) != names + count)
        return E_POINTER;
    HRESULT result = S_OK;
    for (UINT i = 0; i < count; ++i) {
        ids[i] = DISPID_UNKNOWN;
        // Only the first name is a member; the others would be names of arguments, which have no names here.
        for (const MemberName& entry : memberNames)
            if (i == 0 && compareNoCase(names[0], entry.name) == 0)
                ids[0] = entry.member;
        if (ids[i] == DISPID_UNKNOWN)
            result = DISP_E_UNKNOWNNAME;
    }
    return result;
}

STDMETHODIMP CAutomationObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                       VARIANT* result, EXCEPINFO* exception, UINT* argumentError) {
    return border([&]() -> HRESULT {
        if (!parameters)
            return E_POINTER;
        switch (id) {
        case executeMember:
            return flags & DISPATCH_METHOD ? execute(*parameters, result, exception, argumentError)
                                           : DISP_E_MEMBERNOTFOUND;
        case visibleMember:
            return visible(flags, *parameters, result, argumentError);
        case quitMember:
            return flags & DISPATCH_METHOD ? quit(*parameters) : DISP_E_MEMBERNOTFOUND;
        case dedicatedMember:
            return flags & DISPATCH_PROPERTYGET ? isDedicated(*parameters, result) : DISP_E_MEMBERNOTFOUND;
        default:
            return DISP_E_MEMBERNOTFOUND;
        }
    });
}

HRESULT CAutomationObject::execute(DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argumentError) {
    Variant command;
    const HRESULT taken = readOnlyArgument(parameters, VT_BSTR, command, argumentError);
    if (FAILED(taken))
        return taken;
    std::wstring output;
    std::wstring error;
    const CallerWatch watch(OctaveProcess::abandon);
    const HRESULT executed = OctaveSession::current().execute(std::wstring(command.text()), output, error);
    if (FAILED(executed))
        describe(exception, executed, error);
    else if (result)
        *result = Variant(output).release();
    return executed;
}

HRESULT CAutomationObject::visible(WORD flags, DISPPARAMS& parameters, VARIANT* result, UINT* argumentError) {
    if (flags & DISPATCH_PROPERTYPUT) {
        Variant value;
        const HRESULT taken = readOnlyArgument(parameters, VT_I4, value, argumentError);
        if (SUCCEEDED(taken))
            visible_ = value.integer() != 0;
        return taken;
    }
    if (!(flags & DISPATCH_PROPERTYGET))
        return DISP_E_MEMBERNOTFOUND;
    if (parameters.cArgs != 0)
        return DISP_E_BADPARAMCOUNT;
    if (result)
        *result = Variant(visible_).release();
    return S_OK;
}

HRESULT CAutomationObject::isDedicated(DISPPARAMS& parameters, VARIANT* result) {
    if (parameters.cArgs != 0)
        return DISP_E_BADPARAMCOUNT;
    if (result)
        *result = Variant(true).release();
    return S_OK;
}

HRESULT CAutomationObject::quit(DISPPARAMS& parameters) {
    if (parameters.cArgs != 0)
        return DISP_E_BADPARAMCOUNT;
    OctaveSession::current().end();
    endAfterReply();
    return S_OK;
}

} // namespace solvane::engine
