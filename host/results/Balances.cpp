#include "Balances.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <functional>
#include <string_view>

namespace solvane::host {

namespace {

constexpr double keptPart = 1e-5;

template <class Value>
double sum(std::span<const StreamResult* const> streams, const Value& perMole) {
    double total = 0;
    for (const StreamResult* stream : streams)
        total += stream->totalFlow * perMole(*stream);
    return total;
}

/// Adds the atoms in `moles` of a compound with this formula, such as "C2H6".
void addElements(std::string_view formula, const Flows& moles, std::vector<ElementFlow>& elements) {
    while (!formula.empty()) {
        const auto symbolEnd =
            std::find_if_not(formula.begin() + 1, formula.end(), [](char c) { return c >= 'a' && c <= 'z'; });
        const auto length = static_cast<std::size_t>(symbolEnd - formula.begin());
        const std::string symbol(formula.substr(0, length));
        formula.remove_prefix(length);
        int count = 1;
        const auto countEnd = std::from_chars(formula.data(), formula.data() + formula.size(), count).ptr;
        formula.remove_prefix(static_cast<std::size_t>(countEnd - formula.data()));
        auto element = std::ranges::find(elements, symbol, &ElementFlow::symbol);
        if (element == elements.end())
            element = elements.insert(elements.end(), {symbol, {}});
        element->moles.in += count * moles.in;
        element->moles.out += count * moles.out;
    }
}

} // namespace

bool isKept(const Flows& flows) {
    return std::abs(flows.out - flows.in) <= keptPart * std::max(std::abs(flows.in), std::abs(flows.out));
}

Balance balanceOf(const std::string& unit, std::span<const Compound* const> compounds,
                  std::span<const StreamResult* const> feeds, std::span<const StreamResult* const> products) {
    const auto flows = [&](const auto& perMole) {
        return Flows{sum(feeds, perMole), sum(products, perMole)};
    };
    Balance balance{.unit = unit};
    balance.mass = flows([&](const StreamResult& stream) { return molarMass(compounds, stream.fraction); });
    bool keepsCompounds = true;
    for (std::size_t i = 0; i < compounds.size(); ++i) {
        const Flows moles = flows([i](const StreamResult& stream) { return stream.fraction.at(i); });
        balance.moles = {balance.moles.in + moles.in, balance.moles.out + moles.out};
        keepsCompounds = keepsCompounds && isKept(moles);
        addElements(compounds[i]->formula, moles, balance.elements);
    }
    balance.reacts = isKept(balance.mass) && !keepsCompounds;
    balance.sensible = flows(std::mem_fn(&StreamResult::enthalpy));
    balance.enthalpy = balance.reacts ? flows(std::mem_fn(&StreamResult::enthalpyF)) : balance.sensible;
    balance.entropy = flows(std::mem_fn(&StreamResult::entropy));
    return balance;
}

} // namespace solvane::host
