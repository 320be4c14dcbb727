#include "HostValues.h"

#include "HostTexts.h"
#include "com/Text.h"

namespace solvane {

bool readReals(VariantArray& values, std::size_t count, const char* wrongCount, std::vector<double>& reals,
               std::string& error) {
    if (!readVariantArray(values, VT_R8, error))
        return false;
    if (values.count() != count)
        return fail(error, wrongCount);
    reals = values.reals();
    return true;
}

bool readScalar(VariantArray& values, const char* wrongCount, double& scalar, std::string& error) {
    if (!readVariantArray(values, VT_R8, error))
        return false;
    if (values.count() != 1)
        return fail(error, wrongCount);
    scalar = values.realsInPlace().front();
    return true;
}

bool readPresentPhases(IUnknown& material, HRESULT hr, VariantArray& labels, std::vector<PhaseLabel>& phases,
                       std::string& error) {
    if (FAILED(hr))
        return fail(error,
                    "Failed to get list of present phases from material: " + describeFailure(material, hr));
    if (!readVariantArray(labels, VT_BSTR, error))
        return fail(error, "Invalid list of present phases from material: " + error);
    for (const std::wstring& label : labels.texts())
        phases.push_back({Bstr(label), scriptText(label), labels.isNullText(phases.size())});
    return true;
}

bool isOverallLabel(const PhaseLabel& phase) {
    return compareNoCase(phase.host.view(), hostTexts.overall.view()) == 0;
}

} // namespace solvane
