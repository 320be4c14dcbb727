#include "HostValues.h"

#include "HostTexts.h"
#include "com/Text.h"

namespace solvane {

bool checkReals(VariantArray& values, std::size_t count, const char* wrongCount, std::string& error) {
    return readVariantArray(values, VT_R8, error) && (values.count() == count || fail(error, wrongCount));
}

bool readReals(VariantArray& values, std::size_t count, const char* wrongCount, std::vector<double>& reals,
               std::string& error) {
    if (!checkReals(values, count, wrongCount, error))
        return false;
    reals = values.reals();
    return true;
}

bool readScalar(VariantArray& values, const char* wrongCount, double& scalar, std::string& error) {
    if (!checkReals(values, 1, wrongCount, error))
        return false;
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
