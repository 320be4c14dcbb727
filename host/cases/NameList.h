/// Names in messages.
#pragma once

#include <functional>
#include <string>

namespace solvane::host {

/// The elements' names, separated by commas.
template <class Range, class Projection = std::identity>
std::string nameList(Range&& elements, Projection name = {}) {
    std::string names;
    for (auto&& element : elements)
        names.append(names.empty() ? "" : ", ").append(std::invoke(name, element));
    return names;
}

} // namespace solvane::host
