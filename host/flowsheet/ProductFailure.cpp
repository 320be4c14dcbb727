#include "ProductFailure.h"

#include "results/ScriptError.h"

#include <algorithm>
#include <charconv>
#include <regex>
#include <vector>

namespace solvane::host {

namespace {

/// Adds the lines that call setProduct for the product to `stated`, those that calculate its number to
/// `calculated`. The file's name is empty for the script.
void findCalls(const std::string& file, std::string_view text, int product, std::vector<ErrorPlace>& stated,
               std::vector<ErrorPlace>& calculated) {
    static const std::regex call(R"(^[^%#]*\bsetProduct\s*\(\s*([^,()]*))"), number(R"(\d+\s*)");
    constexpr std::size_t longest = 2000; // regular expressions recurse with each character
    for (long line = 1; !text.empty(); ++line) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string code(text.substr(0, std::min(end, longest)));
        text.remove_prefix(std::min(end + 1, text.size()));
        std::smatch match;
        if (!std::regex_search(code, match, call))
            continue;
        if (!std::regex_match(match.str(1), number))
            calculated.push_back({file, line, 0});
        else if (match.str(1) == std::to_string(product))
            stated.push_back({file, line, 0});
    }
}

std::vector<ErrorPlace> callsFor(const UnitModel& model, int product) {
    std::vector<ErrorPlace> stated, calculated;
    findCalls("", model.script.bytes, product, stated, calculated);
    for (const ModelFile& file : model.files)
        if (file.name.ends_with(".m"))
            findCalls(file.name, file.bytes, product, stated, calculated);
    return stated.empty() ? calculated : stated;
}

} // namespace

void addProductPlace(const Case& flowsheet, RunFailure& failure, std::string& error) {
    constexpr std::string_view text = "Failed to flash product ";
    const auto unit = std::ranges::find(flowsheet.units, failure.unit, &UnitCase::name);
    const auto* model = unit == flowsheet.units.end() ? nullptr : std::get_if<UnitModel>(&unit->model);
    const std::size_t at = failure.message.find(text);
    if (!model || at == failure.message.npos)
        return;
    int product = 0;
    const char* const end = failure.message.data() + failure.message.size();
    std::from_chars(failure.message.data() + at + text.size(), end, product);
    const std::vector<ErrorPlace> calls = callsFor(*model, product);
    if (calls.size() == 1) {
        failure.scriptError = scriptErrorAt(model, calls.front());
        failure.scriptError->message = failure.message.substr(at);
        return;
    }
    std::string places;
    for (const ErrorPlace& call : calls)
        places.append(places.empty() ? "; it is set at " : ", ")
            .append(placeText(scriptErrorAt(model, call)));
    failure.message += places;
    error += places;
}

} // namespace solvane::host
