#include "CaseDocument.h"
#include "CaseParts.h"
#include "FilePath.h"

namespace solvane::host {

namespace {

bool readUnitModel(const CasePlace& place, const std::filesystem::path& folder, UnitCase& unit) {
    if (!place.value().is_string())
        return readModel(place, folder, unit.model.emplace<UnitModel>());
    ModelFile file;
    if (!readModelFile(place, folder, file))
        return false;
    if (file.path.extension() != ".json") {
        unit.model = std::move(file);
        return true;
    }
    CaseJson json;
    std::string fault;
    if (!parseDocument(file.path, file.bytes, json, fault))
        return place.fail(fault);
    return readModel({json, {}, fault}, file.path.parent_path(), unit.model.emplace<UnitModel>()) ||
           place.fail(pathText(file.path) + ": " + fault);
}

bool readSetting(const CasePlace& place, ParameterValue& value) {
    const CaseJson& json = place.value();
    if (json.is_boolean())
        return read(place, value.emplace<bool>());
    if (json.is_number_integer())
        return read(place, value.emplace<std::int32_t>());
    if (json.is_number())
        return read(place, value.emplace<double>());
    if (!json.is_string())
        return place.fail("expected a number, true, false or a text in quotes");
    value = json.get<std::string>(); // which may be empty
    return true;
}

/// Reads what the only unit of a case and one of several share: "model" and "parameters".
bool readConfiguration(const CasePlace& place, const std::filesystem::path& folder, UnitCase& unit) {
    if (place.value().contains("model") && !readUnitModel(place.member("model"), folder, unit))
        return false;
    if (!place.value().contains("parameters"))
        return true;
    const CasePlace settings = place.member("parameters");
    if (!settings.value().is_object())
        return settings.fail("expected an object of values by parameter");
    for (const auto& [name, value] : settings.value().items()) {
        ParameterSetting& setting = unit.parameters.emplace_back();
        setting.name = name;
        setting.isPlainNumber = value.is_number();
        if (!readSetting(settings.member(name), setting.value))
            return false;
    }
    return true;
}

bool readPorts(const CasePlace& unit, const char* key, std::vector<PortConnection>& ports) {
    if (!unit.value().contains(key))
        return true;
    const CasePlace place = unit.member(key);
    if (!place.value().is_object())
        return place.fail("expected an object of streams by port");
    for (const auto& [port, stream] : place.value().items())
        if (!read(place.member(port), ports.emplace_back(PortConnection{port, {}}).stream))
            return false;
    return true;
}

/// Reads one of several units.
bool readUnit(const CasePlace& place, const std::filesystem::path& folder, UnitCase& unit) {
    return place.isObject({"name", "progId", "model", "parameters", "feeds", "products"}) &&
           place.required("name", unit.name) && place.optional("progId", unit.progId) &&
           readPorts(place, "feeds", unit.feeds) && readPorts(place, "products", unit.products) &&
           readConfiguration(place, folder, unit);
}

} // namespace

bool readOnlyUnit(const CasePlace& root, const std::filesystem::path& folder, Case& result) {
    UnitCase& unit = result.units.emplace_back();
    if (root.value().contains("unit")) {
        const CasePlace place = root.member("unit");
        if (!place.isObject({"progId", "name"}) || !place.optional("progId", unit.progId) ||
            !place.optional("name", unit.name))
            return false;
    }
    std::vector<std::string> names, products;
    for (const FeedStream& feed : result.feeds) {
        names.push_back(feed.name);
        unit.feeds.push_back({feed.name, feed.name});
    }
    if (!root.required("products", products))
        return false;
    for (std::size_t i = 0; i < products.size(); ++i) {
        if (!isNewName(root.member("products").element(i), products[i], names))
            return false;
        unit.products.push_back({products[i], products[i]});
    }
    return readConfiguration(root, folder, unit);
}

bool readUnits(const CasePlace& units, const std::filesystem::path& folder, Case& result) {
    if (!units.value().is_array() || units.value().empty())
        return units.fail("expected a list of at least one unit");
    std::vector<std::string> names;
    for (std::size_t i = 0; i < units.value().size(); ++i) {
        const CasePlace place = units.element(i);
        if (!readUnit(place, folder, result.units.emplace_back()) ||
            !isNewName(place, result.units.back().name, names))
            return false;
    }
    return true;
}

} // namespace solvane::host
