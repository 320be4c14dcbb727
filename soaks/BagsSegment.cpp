#include "Damage.h"
#include "Door.h"
#include "Folders.h"
#include "HostedUnit.h"
#include "MatlabStandIn.h"
#include "OddVariants.h"
#include "RecordingLog.h"
#include "Segments.h"
#include "com/Text.h"

#include <array>
#include <limits>

namespace solvane::soak {

namespace {

using namespace std::string_view_literals;

constexpr std::array names = {L"calc.m"sv, L"data.txt"sv,  L"..\\x"sv, L"C:\\x"sv,    L"con"sv,
                              L""sv,       L"initRun.m"sv, L"a\0b"sv,  L"unit.xml"sv, L"real"sv,
                              L"output"sv, L"Input"sv,     L"r"sv,     L"\xD800"sv,   L"\u00e9.m"sv,
                              L"1e999"sv,  L"x:y"sv,       L"a/b"sv,   L"-3"sv,       L"TRUE"sv};
constexpr std::array numbers = {0.0,
                                -1.0,
                                1e308,
                                -1e308,
                                4.9e-324,
                                std::numeric_limits<double>::quiet_NaN(),
                                std::numeric_limits<double>::infinity(),
                                2147483648.0};

Variant ofType(VARTYPE type) {
    Variant value;
    value.put()->vt = type;
    return value;
}

Variant damagedText(Damage& damage) {
    std::wstring text(damage.anyOf(names));
    if (damage.oneIn(4))
        text.append(damage.below(3000), static_cast<wchar_t>(1 + damage.below(0xFFFF)));
    return Variant(std::wstring_view(text));
}

Variant damagedList(Damage& damage) {
    std::vector<std::wstring> list(damage.below(6));
    for (std::wstring& entry : list)
        entry = damage.anyOf(names);
    return VariantArray::of(list);
}

Variant damagedValue(Damage& damage) {
    switch (damage.below(13)) {
    case 0:
        return Variant(damage.anyOf(numbers));
    case 1:
        return Variant(static_cast<LONG>(damage.below(SIZE_MAX)));
    case 2:
        return Variant::textOrNull({});
    case 3:
        return twoDimensional(damage.oneIn(2) ? VT_BSTR : VT_UI1);
    case 4:
        return realsFrom(static_cast<LONG>(damage.below(9)) - 4, damage.anyOf(numbers),
                         damage.anyOf(numbers));
    case 5:
        return variants({damagedText(damage), Variant(damage.anyOf(numbers)), listOfVariants()});
    case 6:
        return texts({nullptr, L"calc.m", L"data.txt"});
    case 7: {
        constexpr std::array types = {VT_EMPTY, VT_NULL,  VT_BOOL,     VT_I2,      VT_UI8,     VT_DATE,
                                      VT_CY,    VT_ERROR, VT_DISPATCH, VT_UNKNOWN, VT_DECIMAL, VT_R4};
        return ofType(static_cast<VARTYPE>(damage.anyOf(types)));
    }
    case 8: // a missing array
        return ofType(static_cast<VARTYPE>(VT_ARRAY | (damage.oneIn(2) ? VT_BSTR : VT_UI1)));
    case 9:
    case 10:
        return damagedList(damage);
    default:
        return damagedText(damage);
    }
}

ModelBag wholeModel() {
    ModelBag bag;
    bag.feeds({L"F"})
        .products({L"P"})
        .reports({L"Matlab Output", L"R"})
        .script("x = 1;")
        .file("data.txt", "dd");
    bag.values[L"info level"] = Variant(LONG{1});
    bag.values[L"report \\ R"] = Variant(L"text"sv);
    bag.parameter(L"r", L"real", Variant(1.5)).with(L"r", L"minimum", Variant(0.0));
    bag.with(L"r", L"maximum", Variant(2.0)).with(L"r", L"default", Variant(1.0));
    bag.with(L"r", L"dimensionality", reals({1, 0, -2}));
    bag.parameter(L"i", L"int", Variant(LONG{3})).parameter(L"b", L"bool", Variant(true));
    bag.parameter(L"s", L"string", Variant(L"x"sv)).with(L"s", L"restricted", Variant(true));
    bag.with(L"s", L"options", texts({L"x", L"y"}));
    return bag;
}

class BagDoor final : public Door {
public:
    BagDoor() {
        for (const auto& [key, value] : model_.values)
            keys_.push_back(key);
    }

    Verdict attempt(std::uint32_t seed, int number) override {
        Damage damage(seed, number);
        ModelBag bag = model_;
        for (std::size_t changes = 1 + damage.below(3); changes > 0; --changes) {
            const std::wstring& key = damage.anyOf(keys_);
            if (damage.oneIn(8))
                bag.values.erase(key);
            else
                bag.values[key] = damagedValue(damage);
        }
        RecordingLog log;
        // The unit is new, or takes one model after another.
        if (damage.oneIn(4)) {
            unit_ = HostedUnit(module_);
            matlab_.forgetCalls();
        }
        const HRESULT result = unit_.as<IPersistPropertyBag>()->Load(&bag, &log);
        if (result != S_OK)
            return {.fault = log.lines.empty() && unit_.errorDescription().empty()
                                 ? "refused without a text, code " + std::to_string(result)
                                 : ""};
        ModelBag saved;
        if (unit_.as<IPersistPropertyBag>()->Save(&saved, TRUE, TRUE) != S_OK)
            return {.isAccepted = true, .fault = "can't be saved again: " + narrow(unit_.error())};
        return {.isAccepted = true};
    }

private:
    TemporaryFolder temporary_;
    MatlabStandIn matlab_;
    UnitModule module_;
    HostedUnit unit_{module_};
    const ModelBag model_ = wholeModel();
    std::vector<std::wstring> keys_;
};

} // namespace

void soakBags(const Effort& effort, const Figures& figures) {
    BagDoor door;
    soakDoor(door, effort, effort.of(5000, 100000), figures);
}

} // namespace solvane::soak
