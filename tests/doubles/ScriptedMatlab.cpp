#include "ScriptedMatlab.h"

#include "channel/DedicatedServer.h"

#include <atomic>
#include <cwchar>

namespace solvane {

namespace {

std::atomic<MatlabBehaviour*> behaviour{nullptr};

constexpr DISPID executeMember = 1;
constexpr DISPID visibleMember = 2;
constexpr DISPID dedicatedMember = 3;

/// Counted by the threads that hold it; units of one process have one application each.
template <class Interface>
class Counted : public Interface {
public:
    virtual ~Counted() = default;
    STDMETHODIMP QueryInterface(REFIID iid, void** result) override {
        if (!result)
            return E_POINTER;
        *result = nullptr;
        if (iid != IID_IUnknown && iid != __uuidof(Interface))
            return E_NOINTERFACE;
        *result = this;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

private:
    std::atomic<ULONG> references_{0};
};

class Application final : public Counted<IDispatch> {
public:
    ~Application() override {
        if (MatlabBehaviour* present = behaviour)
            present->released();
    }

    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }

    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        if (count != 1)
            return E_INVALIDARG;
        if (const HRESULT found = behaviour.load()->findMember(names[0]); FAILED(found))
            return found;
        if (std::wcscmp(names[0], L"Execute") == 0)
            *ids = executeMember;
        else if (std::wcscmp(names[0], L"Visible") == 0)
            *ids = visibleMember;
        else if (std::wcscmp(names[0], dedicatedServerProperty) == 0 && behaviour.load()->isDedicated())
            *ids = dedicatedMember;
        else
            return DISP_E_UNKNOWNNAME;
        return S_OK;
    }

    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO*, UINT*) override {
        if (id == dedicatedMember && (flags & DISPATCH_PROPERTYGET)) {
            result->vt = VT_BOOL;
            result->boolVal = VARIANT_TRUE;
            return S_OK;
        }
        if (parameters->cArgs != 1)
            return DISP_E_BADPARAMCOUNT;
        const VARIANT& argument = parameters->rgvarg[0];
        if (id == executeMember && (flags & DISPATCH_METHOD) && argument.vt == VT_BSTR)
            return behaviour.load()->execute(argument.bstrVal, result);
        const bool named =
            parameters->cNamedArgs == 1 && parameters->rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
        if (id == visibleMember && (flags & DISPATCH_PROPERTYPUT) && named)
            return behaviour.load()->putVisible(argument);
        return DISP_E_MEMBERNOTFOUND;
    }
};

class Factory final : public Counted<IClassFactory> {
public:
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** result) override {
        if (outer)
            return CLASS_E_NOAGGREGATION;
        if (!behaviour)
            return E_UNEXPECTED;
        if (const HRESULT created = behaviour.load()->create(); FAILED(created))
            return created;
        Counted<IDispatch>* application = new Application();
        application->AddRef();
        const HRESULT asked = application->QueryInterface(iid, result);
        application->Release();
        return asked;
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

} // namespace

} // namespace solvane

extern "C" void setMatlabBehaviour(solvane::MatlabBehaviour* behaviour) {
    solvane::behaviour = behaviour;
}

extern "C" void releaseAtProcessEnd(IUnknown* object) {
    static struct Holder {
        IUnknown* held = nullptr;
        ~Holder() { held->Release(); }
    } holder;
    object->AddRef();
    holder.held = object;
}

STDAPI DllGetClassObject(REFCLSID classId, REFIID iid, void** result) {
    if (classId != solvane::scriptedMatlabClass)
        return CLASS_E_CLASSNOTAVAILABLE;
    solvane::Counted<IClassFactory>* factory = new solvane::Factory();
    factory->AddRef();
    const HRESULT asked = factory->QueryInterface(iid, result);
    factory->Release();
    return asked;
}

// The test program is linked to this module, which so stays as long as the program.
STDAPI DllCanUnloadNow() {
    return S_FALSE;
}
