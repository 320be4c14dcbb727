#include "UnitCalls.h"

#include "capeopen/CapeError.h"
#include "cases/Dimensionality.h"
#include "com/Text.h"
#include "com/VariantArray.h"

namespace solvane::host {

namespace {

bool failed(std::string& error, const std::string& call, IUnknown* object, HRESULT result) {
    error = callFailure(call, object, result);
    return false;
}

/// The port of that name. A unit gives its ports as a collection.
bool findPort(ICapeUnit* unit, const std::string& name, ComRef<ICapeUnitPort>& port, std::string& error) {
    ComRef<IDispatch> ports, item;
    HRESULT result = unit->get_ports(ports.put());
    if (FAILED(result))
        return failed(error, "get_ports", unit, result);
    const auto collection = queryInterface<ICapeCollection>(ports.get());
    if (!collection) {
        error = "The unit's ports are not a collection";
        return false;
    }
    Variant id(std::wstring_view(widen(name, CP_UTF8)));
    result = collection->Item(id.get(), item.put());
    if (FAILED(result))
        return failed(error, "Looking for the port \"" + name + "\"", collection.get(), result);
    port = queryInterface<ICapeUnitPort>(item.get());
    if (!port)
        error = "The unit's port \"" + name + "\" has no ICapeUnitPort";
    return static_cast<bool>(port);
}

/// Calls `act(port, connection)` for each connection.
template <class Act>
bool forEachPort(ICapeUnit* unit, const std::vector<Connection>& connections, const char* call, Act act,
                 std::string& error) {
    for (const Connection& connection : connections) {
        ComRef<ICapeUnitPort> port;
        if (!findPort(unit, connection.port, port, error))
            return false;
        const HRESULT result = act(*port, connection);
        if (FAILED(result))
            return failed(error, std::string(call) + " of port \"" + connection.port + "\"", port.get(),
                          result);
    }
    return true;
}

ResultValue resultValue(const Variant& value) {
    switch (value.type()) {
    case VT_R8:
        return value.real();
    case VT_I4:
        return static_cast<std::int32_t>(value.integer());
    case VT_BOOL:
        return value.boolean() != VARIANT_FALSE;
    case VT_BSTR:
        return narrow(value.text(), CP_UTF8);
    default:
        return {};
    }
}

std::string unitOf(IUnknown* parameter) {
    const auto specification = queryInterface<ICapeParameterSpec>(parameter);
    VariantArray exponents;
    std::string error;
    if (!specification || FAILED(specification->get_Dimensionality(exponents.put())) ||
        !readVariantArray(exponents, VT_R8, error))
        return {};
    return unitText(exponents.reals());
}

bool readParameter(IUnknown* item, ParameterResult& result, std::string& error) {
    const auto parameter = queryInterface<ICapeParameter>(item);
    const auto identification = queryInterface<ICapeIdentification>(item);
    if (!parameter || !identification) {
        error = "A parameter of the unit has no ICapeParameter or ICapeIdentification";
        return false;
    }
    Bstr name;
    HRESULT hr = identification->get_ComponentName(name.put());
    if (FAILED(hr))
        return failed(error, "get_ComponentName of a parameter", item, hr);
    result.name = narrow(name.view(), CP_UTF8);
    CapeParamMode mode{};
    hr = parameter->get_Mode(&mode);
    if (FAILED(hr))
        return failed(error, "get_Mode of parameter \"" + result.name + "\"", item, hr);
    Variant value;
    hr = parameter->get_value(value.put());
    if (FAILED(hr))
        return failed(error, "get_value of parameter \"" + result.name + "\"", item, hr);
    result.isInput = mode != CAPE_OUTPUT;
    result.value = resultValue(value);
    result.unit = unitOf(item);
    return true;
}

} // namespace

std::string callFailure(const std::string& call, IUnknown* object, HRESULT result) {
    return call + " failed: " + narrow(DescribeCapeError(object, result), CP_UTF8);
}

bool connectPorts(ICapeUnit* unit, const std::vector<Connection>& connections, std::string& error) {
    return forEachPort(
        unit, connections, "Connect",
        [](ICapeUnitPort& port, const Connection& connection) {
            return port.Connect(connection.material.get());
        },
        error);
}

bool disconnectPorts(ICapeUnit* unit, const std::vector<Connection>& connections, std::string& error) {
    return forEachPort(
        unit, connections, "Disconnect",
        [](ICapeUnitPort& port, const Connection&) { return port.Disconnect(); }, error);
}

bool validate(ICapeUnit* unit, std::string& error) {
    Bstr message;
    VARIANT_BOOL isValid = VARIANT_FALSE;
    const HRESULT result = unit->Validate(message.put(), &isValid);
    if (FAILED(result))
        return failed(error, "Validate", unit, result);
    if (isValid == VARIANT_FALSE)
        error = "The unit is not valid: " + narrow(message.view(), CP_UTF8);
    return isValid != VARIANT_FALSE;
}

bool calculate(ICapeUnit* unit, std::string& error) {
    const HRESULT result = unit->Calculate();
    return SUCCEEDED(result) || failed(error, "Calculate", unit, result);
}

bool readParameters(ICapeUnit* unit, std::vector<ParameterResult>& parameters, std::string& error) {
    const auto utilities = queryInterface<ICapeUtilities>(unit);
    if (!utilities)
        return true;
    ComRef<IDispatch> list;
    HRESULT result = utilities->get_parameters(list.put());
    if (FAILED(result))
        return failed(error, "get_parameters", unit, result);
    const auto collection = queryInterface<ICapeCollection>(list.get());
    LONG count = 0;
    if (!collection || FAILED(collection->Count(&count)))
        return true;
    for (LONG i = 1; i <= count; ++i) {
        ComRef<IDispatch> item;
        result = collection->Item(Variant(i).get(), item.put());
        if (FAILED(result))
            return failed(error, "Item of the parameters", collection.get(), result);
        if (!readParameter(item.get(), parameters.emplace_back(), error))
            return false;
    }
    return true;
}

bool readReports(ICapeUnit* unit, std::vector<ReportResult>& reports, std::string& error) {
    const auto reporter = queryInterface<ICapeUnitReport>(unit);
    if (!reporter)
        return true;
    VariantArray names;
    HRESULT result = reporter->get_reports(names.put());
    if (FAILED(result))
        return failed(error, "get_reports", unit, result);
    std::string fault;
    if (!readVariantArray(names, VT_BSTR, fault)) {
        error = "The unit's list of reports is not one: " + fault;
        return false;
    }
    for (const std::wstring& name : names.texts()) {
        result = reporter->put_selectedReport(Bstr(name).get());
        if (FAILED(result))
            return failed(error, "put_selectedReport", unit, result);
        Bstr text;
        result = reporter->ProduceReport(text.put());
        if (FAILED(result))
            return failed(error, "ProduceReport", unit, result);
        reports.push_back({narrow(name, CP_UTF8), narrow(text.view(), CP_UTF8)});
    }
    return true;
}

} // namespace solvane::host
