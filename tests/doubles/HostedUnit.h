#pragma once

#include "CapeOpen.h"
#include "ModelBag.h"
#include "UnitModule.h"
#include "com/Variant.h"

#include <string>

namespace solvane {

/// A unit with the calls of a host around it, in short. Works through the unit's interfaces only. A call that
/// gives a text gives "?" where it failed.
class HostedUnit {
public:
    explicit HostedUnit(const UnitModule& module) : HostedUnit(module.createUnit()) {}
    explicit HostedUnit(ComRef<IUnknown> unit) : unit_(std::move(unit)) {}

    template <class Interface>
    ComRef<Interface> as() const {
        return unit_.as<Interface>();
    }

    HRESULT load(ModelBag& bag) const;
    HRESULT calculate() const { return as<ICapeUnit>()->Calculate(); }
    HRESULT terminate() const { return as<ICapeUtilities>()->Terminate(); }
    /// Empty for a valid unit.
    std::wstring validate() const;
    CapeValidationStatus status() const;

    /// The last failure: "name | description | scope | interface".
    std::wstring error() const;
    std::wstring errorDescription() const;

    /// Selects the report and produces it.
    std::wstring report(const std::wstring& name) const;
    std::wstring output() const { return report(L"Matlab Output"); }

    /// The parameter or port of that name; empty where there is none.
    ComRef<ICapeParameter> findParameter(const std::wstring& name) const;
    ComRef<ICapeUnitPort> port(const std::wstring& name) const;

    Variant parameter(const std::wstring& name) const;
    HRESULT setParameter(const std::wstring& name, const Variant& value) const;
    HRESULT connect(const std::wstring& port, IDispatch* material) const;
    HRESULT disconnect(const std::wstring& port) const;

    void release() { unit_.reset(); }

private:
    ComRef<IUnknown> unit_;
};

} // namespace solvane
