// ICapeUnitReport: Matlab's output of the last run, and the reports that the script fills. A stopped unit
// raises its error before it checks for a null pointer.

#include "CSolvaneUnitOp.h"
#include "com/VariantArray.h"
#include "unit/model/ReportNames.h"

namespace solvane {

namespace {

constexpr wchar_t unitReport[] = L"ICapeUnitReport";

} // namespace

STDMETHODIMP CSolvaneUnitOp::get_reports(VARIANT* reports) {
    return border([&]() -> HRESULT {
        const bool hasPlace = prepareResult(reports);
        if (!startupOk)
            return raiseStopped(L"get_reports", unitReport);
        if (!hasPlace)
            return E_POINTER;
        *reports = VariantArray::of(allReportNames(*this)).release();
        return S_OK;
    });
}

STDMETHODIMP CSolvaneUnitOp::get_selectedReport(BSTR* report) {
    return border([&]() -> HRESULT {
        const bool hasPlace = prepareResult(report);
        if (!startupOk)
            return raiseStopped(L"get_selectedReport", unitReport);
        if (!hasPlace)
            return E_POINTER;
        *report = newBstr(selectedReport);
        return S_OK;
    });
}

STDMETHODIMP CSolvaneUnitOp::put_selectedReport(BSTR report) {
    return border([&]() -> HRESULT {
        if (!startupOk)
            return raiseStopped(L"put_selectedReport", unitReport);
        const std::wstring name(callersText(report));
        if (!isOutputReport(name) && !findReport(*this, name))
            return raise(L"Invalid report name", L"Invalid report name: no such report",
                         L"put_selectedReport", unitReport);
        selectedReport = name;
        return S_OK;
    });
}

STDMETHODIMP CSolvaneUnitOp::ProduceReport(BSTR* message) {
    return border([&]() -> HRESULT {
        const bool hasPlace = prepareMessage(message);
        if (!startupOk)
            return raiseStopped(L"ProduceReport", unitReport);
        if (!hasPlace)
            return E_POINTER;
        if (isOutputReport(selectedReport)) {
            *message = newBstr(outputText);
            return S_OK;
        }
        if (const auto index = findReport(*this, selectedReport)) {
            *message = newBstr(reportTexts[*index]);
            return S_OK;
        }
        // The scope names the operation that selected the report.
        return raise(L"Invalid report name", L"Invalid report name: selected report does not exist",
                     L"put_selectedReport", unitReport);
    });
}

} // namespace solvane
