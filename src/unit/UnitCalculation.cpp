// ICapeUnit: validation and calculation.

#include "CSolvaneUnitOp.h"
#include "com/Text.h"
#include "persistence/PrivateModel.h"
#include "runtime/CalculationDriver.h"
#include "thermo/CalculationMaterial.h"

#include <algorithm>

namespace solvane {

namespace {

constexpr wchar_t unitInterface[] = L"ICapeUnit";

bool areAllConnected(const std::vector<ComRef<CPort>>& ports, const wchar_t* word, std::wstring& message) {
    for (const ComRef<CPort>& port : ports)
        if (!port->isConnected()) {
            message = std::wstring(word) + L" port \"" + port->componentName + L"\" is not connected";
            return false;
        }
    return true;
}

bool haveIdenticalCompounds(const CSolvaneUnitOp& unit, std::wstring& message) {
    const std::vector<ComRef<CPort>> ports = unit.allPorts();
    if (ports.empty())
        return true;
    std::vector<std::wstring> reference;
    if (!readCompoundList(*ports.front(), reference, message))
        return false;
    for (std::size_t i = 1; i < ports.size(); ++i) {
        std::vector<std::wstring> compounds;
        if (!readCompoundList(*ports[i], compounds, message))
            return false;
        if (!std::ranges::equal(reference, compounds, [](const std::wstring& a, const std::wstring& b) {
                return compareNoCase(a, b) == 0;
            })) {
            message = L"Materials connected to all ports must have identical compound lists";
            return false;
        }
    }
    if (reference.empty()) {
        message = L"Materials connected to ports do not expose compounds";
        return false;
    }
    return true;
}

} // namespace

STDMETHODIMP CSolvaneUnitOp::get_ValStatus(CapeValidationStatus* status) {
    return border([&]() -> HRESULT {
        if (!prepareResult(status))
            return E_POINTER;
        if (!startupOk)
            return raiseStopped(L"get_ValStatus", unitInterface);
        *status = valStatus;
        return S_OK;
    });
}

STDMETHODIMP CSolvaneUnitOp::Validate(BSTR* message, VARIANT_BOOL* isValid) {
    return border([&]() -> HRESULT {
        if (!message || !prepareResult(isValid))
            return E_POINTER;
        prepareMessage(message);
        std::wstring refusal;
        if (!mayBegin(*this, UnitActivity::validating, refusal)) {
            *message = newBstr(refusal);
            return S_OK;
        }
        const ActivityScope scope(*this, UnitActivity::validating);
        valStatus = CAPE_INVALID; // a host that connects a port from inside a material resets it
        // Tests the text, not startupOk: it is set after Terminate too.
        std::wstring failure = widen(startupError);
        const bool valid = failure.empty() && areAllConnected(feedPorts, L"Feed", failure) &&
                           areAllConnected(productPorts, L"Product", failure) &&
                           haveIdenticalCompounds(*this, failure);
        if (!valid)
            *message = newBstr(failure);
        *isValid = valid ? VARIANT_TRUE : VARIANT_FALSE;
        if (valid && valStatus == CAPE_INVALID)
            valStatus = CAPE_VALID;
        return S_OK;
    });
}

STDMETHODIMP CSolvaneUnitOp::Calculate() {
    return border([&]() -> HRESULT {
        if (!startupOk)
            return raiseStopped(L"Calculate", unitInterface);
        std::wstring error;
        if (!mayBegin(*this, UnitActivity::calculating, error))
            return raise(L"Calculate failed", error, L"Calculate", unitInterface);
        const ActivityScope scope(*this, UnitActivity::calculating);
        LoadPrivateModel(*this, scope);
        // If the run fails from here on, the reports say so instead of showing the last run's.
        outputText = L"Matlab output not available\r\n";
        std::ranges::fill(reportTexts, L"Report not available...\r\n");
        if (valStatus != CAPE_VALID) {
            Bstr message;
            VARIANT_BOOL isValid = VARIANT_FALSE;
            const HRESULT validated = Validate(message.put(), &isValid);
            if (FAILED(validated))
                return validated;
            if (!isValid) {
                // The text after the colon is the object's last failure; Validate reports the reason.
                SetError(L"Unit is not valid", L"Unit is not valid: " + errorDescription, L"Calculate",
                         errorInterface);
                outputText = errorDescription + L"\r\n";
                return capeFailure;
            }
        }
        if (runCalculation(*this, error))
            return S_OK;
        outputText += error;
        return raise(L"Calculate failed", error, L"Calculate", unitInterface);
    });
}

} // namespace solvane
