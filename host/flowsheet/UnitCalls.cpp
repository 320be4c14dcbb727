#include "UnitCalls.h"

#include "cases/NameList.h"
#include "com/CapeError.h"
#include "com/Text.h"
#include "com/VariantArray.h"
#include "results/Abridged.h"

namespace solvane::host {

namespace {

/// The names of the ports, for the message that one is missing.
std::string portList(ICapeUnit* unit) {
    std::vector<std::string> names, products;
    std::string ignored;
    static_cast<void>(readPorts(unit, names, products, ignored));
    names.insert(names.end(), products.begin(), products.end());
    return names.empty() ? "; the unit has none" : "; the unit's ports: " + nameList(names);
}

/// Finds the port of that name in the unit's collection.
bool findPort(ICapeUnit* unit, const std::string& name, ComRef<ICapeUnitPort>& port, std::string& error) {
    ComRef<IDispatch> ports, item;
    HRESULT result = unit->get_ports(ports.put());
    if (FAILED(result))
        return callFailed(error, "get_ports", unit, result);
    const auto collection = queryInterface<ICapeCollection>(ports.get());
    if (!collection) {
        error = "The unit's ports are not a collection";
        return false;
    }
    Variant id(std::wstring_view(widen(name, CP_UTF8)));
    result = collection->Item(id.get(), item.put());
    if (FAILED(result)) {
        error =
            callFailure("Looking for the port \"" + name + "\"", collection.get(), result) + portList(unit);
        return false;
    }
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
            return callFailed(error, std::string(call) + " of port \"" + connection.port + "\"", port.get(),
                              result);
    }
    return true;
}

} // namespace

std::string callFailure(const std::string& call, IUnknown* object, HRESULT result) {
    return call + " failed: " + narrow(DescribeCapeError(object, result), CP_UTF8);
}

bool callFailed(std::string& error, const std::string& call, IUnknown* object, HRESULT result) {
    error = callFailure(call, object, result);
    return false;
}

bool readPorts(ICapeUnit* unit, std::vector<std::string>& feeds, std::vector<std::string>& products,
               std::string& error) {
    ComRef<IDispatch> ports;
    HRESULT result = unit->get_ports(ports.put());
    if (FAILED(result))
        return callFailed(error, "get_ports", unit, result);
    const auto collection = queryInterface<ICapeCollection>(ports.get());
    LONG count = 0;
    if (collection)
        collection->Count(&count);
    for (LONG i = 1; i <= count; ++i) {
        ComRef<IDispatch> item;
        result = collection->Item(Variant(i).get(), item.put());
        if (FAILED(result))
            return callFailed(error, "Item of the ports", collection.get(), result);
        const auto port = queryInterface<ICapeUnitPort>(item.get());
        const auto identification = queryInterface<ICapeIdentification>(item.get());
        Bstr name;
        CapePortDirection direction{};
        if (!port || !identification || FAILED(identification->get_ComponentName(name.put())) ||
            FAILED(port->get_direction(&direction))) {
            error = "Port " + std::to_string(i) + " of the unit has no name or direction";
            return false;
        }
        (direction == CAPE_INLET ? feeds : products).push_back(narrow(name.view(), CP_UTF8));
    }
    return true;
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
        return callFailed(error, "Validate", unit, result);
    if (isValid == VARIANT_FALSE)
        error = "The unit is not valid: " + narrow(message.view(), CP_UTF8);
    return isValid != VARIANT_FALSE;
}

bool calculate(ICapeUnit* unit, std::string& error) {
    const HRESULT result = unit->Calculate();
    return SUCCEEDED(result) || callFailed(error, "Calculate", unit, result);
}

bool readReportNames(ICapeUnit* unit, std::vector<std::string>& names, std::string& error) {
    const auto reporter = queryInterface<ICapeUnitReport>(unit);
    if (!reporter)
        return true;
    VariantArray list;
    const HRESULT result = reporter->get_reports(list.put());
    if (FAILED(result))
        return callFailed(error, "get_reports", unit, result);
    std::string fault;
    if (!readVariantArray(list, VT_BSTR, fault)) {
        error = "The unit's list of reports is invalid: " + fault;
        return false;
    }
    for (const std::wstring& name : list.texts())
        names.push_back(narrow(name, CP_UTF8));
    return true;
}

bool readReports(ICapeUnit* unit, std::vector<ReportResult>& reports, std::string& error) {
    std::vector<std::string> names;
    if (!readReportNames(unit, names, error))
        return false;
    const auto reporter = queryInterface<ICapeUnitReport>(unit);
    for (const std::string& name : names) {
        HRESULT result = reporter->put_selectedReport(Bstr(widen(name, CP_UTF8)).get());
        if (FAILED(result))
            return callFailed(error, "put_selectedReport", unit, result);
        Bstr text;
        result = reporter->ProduceReport(text.put());
        if (FAILED(result))
            return callFailed(error, "ProduceReport", unit, result);
        reports.push_back({name, abridged(narrow(text.view(), CP_UTF8))});
    }
    return true;
}

} // namespace solvane::host
