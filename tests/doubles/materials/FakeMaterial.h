/// What the doubles of both generations of a host's material have in common.
#pragma once

#include "CallRecord.h"
#include "CapeOpen.h"
#include "FakeStream.h"
#include "com/ComRef.h"
#include "com/Dispatch.h"

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace solvane {

/// A material that holds a FakeStream, records its calls and fails where a test says so. Its copies share its
/// record, where their calls begin with "copy.".
class FakeMaterial : public DispatchImpl<ECapeUser>,
                     public DispatchImpl<ECapeRoot>,
                     public DispatchImpl<ICapeIdentification> {
public:
    explicit FakeMaterial(FakeStream initial) : stream(std::move(initial)) { ++alive; }
    FakeMaterial(const FakeMaterial&) = delete;
    FakeMaterial& operator=(const FakeMaterial&) = delete;

    /// How many materials there are, copies included.
    static inline std::atomic<int> alive = 0;

    FakeStream stream;
    std::shared_ptr<CallRecord> record = std::make_shared<CallRecord>();
    /// What a flash does to the stream; nothing by itself.
    std::function<void(FakeStream&)> onFlash;

    /// Interfaces that this object, or its copies, say they don't have.
    std::vector<IID> hidden;
    std::vector<IID> hiddenOnCopies;

    /// What ICapeIdentification gives. Without a name it does not have that interface.
    std::optional<std::wstring> componentName;

    /// The last failure, as ECapeUser and ECapeRoot tell it.
    std::wstring errorDescription;
    std::wstring errorName;

    // ECapeRoot, ECapeUser
    STDMETHODIMP get_name(BSTR* name) override;
    STDMETHODIMP get_code(LONG* code) override;
    STDMETHODIMP get_description(BSTR* description) override;
    STDMETHODIMP get_scope(BSTR* scope) override;
    STDMETHODIMP get_interfaceName(BSTR* interfaceName) override;
    STDMETHODIMP get_operation(BSTR* operation) override;
    STDMETHODIMP get_moreInfo(BSTR* moreInfo) override;
    // ICapeIdentification
    STDMETHODIMP get_ComponentName(BSTR* name) override;
    STDMETHODIMP put_ComponentName(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_ComponentDescription(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP put_ComponentDescription(BSTR) override { return E_NOTIMPL; }

protected:
    virtual ~FakeMaterial() { --alive; }

    /// QueryInterface, with the object that answers for a generation's own interface, null for another.
    HRESULT query(REFIID iid, IUnknown* own, void** result);

    /// Makes of `copy` a copy of this object but for its stream.
    void adopt(FakeMaterial& copy) const;

    /// Records the call, then lets its body answer or strikes with the fault for it.
    HRESULT answer(const std::string& call, std::initializer_list<VARIANT*> results,
                   const std::function<HRESULT()>& body);
    /// The same for a call that gives an object.
    HRESULT answerObject(const std::string& call, IDispatch** result, const std::function<HRESULT()>& body);
    /// Fails as a material fails: with a code, and a text for it.
    HRESULT fail(HRESULT result, std::wstring description);

    HRESULT getOverall(BSTR property, VARIANT* values);
    HRESULT setOverall(BSTR property, const VARIANT& values);
    HRESULT getOfPhase(BSTR property, BSTR phase, VARIANT* values);
    HRESULT setOfPhase(BSTR property, BSTR phase, const VARIANT& values);
    HRESULT getConstant(const VARIANT& properties, VARIANT* values);
    HRESULT getResult(const VARIANT& properties, VARIANT* values);
    HRESULT calculate(const VARIANT& properties, const std::wstring& phase);
    HRESULT flash();

private:
    HRESULT unknown(BSTR property);

    std::string prefix_;
    std::set<std::wstring> calculated_; ///< property and phase
};

} // namespace solvane
