#include "Damage.h"
#include "Door.h"
#include "Folders.h"
#include "Segments.h"
#include "cases/CaseReader.h"
#include "com/Text.h"

#include <array>
#include <exception>

namespace solvane::soak {

namespace {

using namespace std::string_view_literals;

/// Pieces that may confuse a reader of cases.
constexpr std::array snippets = {
    "null"sv,
    "true"sv,
    "-1"sv,
    "0"sv,
    "1e999"sv,
    "-0.0"sv,
    "99999999999999999999"sv,
    "{}"sv,
    "[]"sv,
    "[[[[[["sv,
    "{\"a\":"sv,
    "\""sv,
    ","sv,
    ":"sv,
    "}"sv,
    "]"sv,
    "\\u0000"sv,
    "\\uD800"sv,
    "\xFF"sv,
    "\0"sv,
    "\xEF\xBB\xBF"sv,
    "\"name\": \"A\","sv,
    "\"units\": [],"sv,
    "\"value\": 1,"sv,
    "\"..\\\\x\""sv,
    "\"methane\""sv,
    "\"model\": {},"sv,
};

/// Cases that use everything a case can have, and one with two units.
constexpr std::array cases = {
    R"json({"unit": {"progId": "Some.Unit", "name": "U"}, "generation": "1.0", "profile": "early",
 "compounds": ["Methane", "propane"],
 "feeds": [{"name": "A", "temperature": 300, "pressure": 1e5, "flow": 2, "composition": {"propane": 1}},
  {"name": "B", "pressure": 2e5, "vaporFraction": 0.5, "flow": 0, "composition": {"methane": 0.25, "propane": 0.75}}],
 "products": ["C"],
 "model": {"parameters": [
   {"name": "T", "kind": "real", "mode": "input", "default": 260, "minimum": 100, "maximum": 500,
    "dimensionality": "K"},
   {"name": "n", "kind": "integer", "mode": "input", "value": -3},
   {"name": "on", "kind": "boolean", "mode": "input", "value": true},
   {"name": "how", "kind": "string", "mode": "input", "value": "b", "options": ["a", "b"]},
   {"name": "duty", "kind": "real", "mode": "output", "dimensionality": [2, 1, -3]}],
  "reports": ["Summary"], "script": ["x = 1;", "y = 2;"], "files": [], "echo": true},
 "parameters": {"T": 250, "how": ""}})json"sv,
    R"json({"compounds": ["methane"],
 "streams": [{"name": "S1", "temperature": 300, "pressure": 1e5, "flow": 2, "composition": {"methane": 1}}],
 "units": [{"name": "First", "feeds": {"in": "S1"}, "products": {"top": "S2", "bottom": "S3"},
   "model": {"script": ["x = 1;"]}},
  {"name": "Second", "progId": "Some.Unit", "model": {"script": ["x = 1;"]}, "parameters": {"x": 1.5},
   "feeds": {"b": "S3", "a": "S2"}, "products": {"out": "S4"}}]})json"sv,
};

class CaseDoor final : public Door {
public:
    Verdict attempt(std::uint32_t seed, int number) override {
        Damage damage(seed, number, snippets);
        std::string text(damage.anyOf(cases));
        damage.to(text);
        writeFile(path_, text);
        host::Case result;
        std::string error;
        try {
            if (host::readCase(narrow(path_, CP_UTF8), result, error))
                return {.isAccepted = true};
        } catch (const std::exception& exception) {
            return {.fault = std::string("throws: ") + exception.what()};
        }
        return {.fault = error.find("case.json:") == std::string::npos
                             ? "a refusal that does not name the file: " + error
                             : ""};
    }

private:
    TemporaryFolder temporary_;
    std::wstring path_ = temporary_.path() + L"case.json";
};

} // namespace

void soakCases(const Effort& effort, const Figures& figures) {
    CaseDoor door;
    soakDoor(door, effort, effort.of(5000, 100000), figures);
}

} // namespace solvane::soak
