#include "HostedUnit.h"

#include <gtest/gtest.h>

namespace solvane {

namespace {

constexpr wchar_t failedCall[] = L"?";

ComRef<IDispatch> item(const ComRef<ICapeCollection>& collection, const std::wstring& name) {
    ComRef<IDispatch> found;
    if (collection)
        collection->Item(Variant(std::wstring_view(name)).get(), found.put());
    return found;
}

} // namespace

HRESULT HostedUnit::load(ModelBag& bag) const {
    return as<IPersistPropertyBag>()->Load(&bag, nullptr);
}

std::wstring HostedUnit::validate() const {
    Bstr message;
    VARIANT_BOOL isValid = VARIANT_FALSE;
    if (FAILED(as<ICapeUnit>()->Validate(message.put(), &isValid)))
        return failedCall;
    return isValid ? L"" : std::wstring(message.view());
}

CapeValidationStatus HostedUnit::status() const {
    CapeValidationStatus status = CAPE_INVALID;
    EXPECT_EQ(as<ICapeUnit>()->get_ValStatus(&status), S_OK);
    return status;
}

std::wstring HostedUnit::error() const {
    Bstr name, description, scope, interfaceName;
    const auto user = as<ECapeUser>();
    if (FAILED(as<ECapeRoot>()->get_name(name.put())) || FAILED(user->get_description(description.put())) ||
        FAILED(user->get_scope(scope.put())) || FAILED(user->get_interfaceName(interfaceName.put())))
        return failedCall;
    const std::wstring between = L" | ";
    return std::wstring(name.view()) + between + std::wstring(description.view()) + between +
           std::wstring(scope.view()) + between + std::wstring(interfaceName.view());
}

std::wstring HostedUnit::errorDescription() const {
    Bstr description;
    return FAILED(as<ECapeUser>()->get_description(description.put())) ? failedCall
                                                                       : std::wstring(description.view());
}

std::wstring HostedUnit::report(const std::wstring& name) const {
    const auto reports = as<ICapeUnitReport>();
    Bstr text;
    if (FAILED(reports->put_selectedReport(Bstr(name).get())) || FAILED(reports->ProduceReport(text.put())))
        return failedCall;
    return std::wstring(text.view());
}

ComRef<ICapeParameter> HostedUnit::findParameter(const std::wstring& name) const {
    ComRef<IDispatch> parameters;
    as<ICapeUtilities>()->get_parameters(parameters.put());
    return item(parameters.as<ICapeCollection>(), name).as<ICapeParameter>();
}

Variant HostedUnit::parameter(const std::wstring& name) const {
    Variant value;
    if (const auto parameter = findParameter(name))
        parameter->get_value(value.put());
    return value;
}

HRESULT HostedUnit::setParameter(const std::wstring& name, const Variant& value) const {
    const auto parameter = findParameter(name);
    return parameter ? parameter->put_value(value.get()) : E_INVALIDARG;
}

ComRef<ICapeUnitPort> HostedUnit::port(const std::wstring& name) const {
    return item(as<ICapeCollection>(), name).as<ICapeUnitPort>();
}

HRESULT HostedUnit::connect(const std::wstring& name, IDispatch* material) const {
    const auto found = port(name);
    return found ? found->Connect(material) : E_INVALIDARG;
}

HRESULT HostedUnit::disconnect(const std::wstring& name) const {
    const auto found = port(name);
    return found ? found->Disconnect() : E_INVALIDARG;
}

} // namespace solvane
