/// Calls on a material as a unit makes them, with plain values as results.
#pragma once

#include "CapeOpen.h"
#include "com/Text.h"
#include "com/VariantArray.h"
#include "materials/Material.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace solvane::host {

/// Five compounds that form two phases: the feed of the tests.
inline const std::vector<std::string> gasNames{"methane", "ethane", "propane", "n-butane", "n-pentane"};
inline const std::vector<double> gasFractions{0.50, 0.20, 0.15, 0.10, 0.05};

std::shared_ptr<StreamState> newState(const std::vector<std::string>& names = gasNames,
                                      MaterialRules rules = {});

/// VT_ARRAY of doubles or strings.
Variant reals(std::vector<double> values);
Variant texts(std::vector<std::wstring> values);

/// The elements of an answer, which must be a one-dimensional array from 0 of exactly this type.
std::vector<double> realsOf(const Variant& answer);
std::vector<std::wstring> textsOf(const Variant& answer);
std::vector<LONG> integersOf(const Variant& answer);

/// The object's last failure.
struct FailureTexts {
    std::wstring name, description, interfaceName, operation;
    LONG code = 0;
};
FailureTexts failureOf(IUnknown* object);

/// One material, called through the interfaces of either generation.
class MaterialCalls {
public:
    MaterialCalls(Generation generation, std::shared_ptr<StreamState> state)
        : generation_(generation), material_(createMaterial(generation, std::move(state), L"S1")) {}

    template <class T>
    ComRef<T> as() const {
        return material_.as<T>();
    }
    IDispatch* object() const { return material_.get(); }

    /// `phase` is "overall" or a label; temperature and pressure go without a basis.
    HRESULT set(const wchar_t* property, std::vector<double> values, const wchar_t* phase = L"overall");
    HRESULT get(const wchar_t* property, std::vector<double>& values, const wchar_t* phase = L"overall");
    HRESULT calculate(const wchar_t* property, const wchar_t* phase);
    /// Flashes the tests' feed, by default into two phases.
    HRESULT flash(double temperature = 260, double pressure = 2e6);
    std::vector<std::wstring> presentPhases();

    double scalar(const wchar_t* property, const wchar_t* phase = L"overall");
    std::vector<double> vector(const wchar_t* property, const wchar_t* phase = L"overall");
    /// The sum over the phases of phase fraction and calculated value.
    double mixtureValue(const wchar_t* property);

private:
    Generation generation_;
    ComRef<IDispatch> material_;
};

} // namespace solvane::host
