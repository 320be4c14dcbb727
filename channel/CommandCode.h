/// The commands that a script can give its unit operation, by the code that begins a request.
#pragma once

#include <cstdint>

namespace solvane {

enum class CommandCode : std::uint32_t {
    getFeedProp = 1,
    setProduct = 2,
    setReport = 3,
    getParameter = 4,
    setParameter = 5,
    getCompoundConstant = 6,
    getTDependentProperty = 7,
    getPDependentProperty = 8,
    getSinglePhaseProperty = 9,
    getTwoPhaseProperty = 10,
    getPropertyUnit = 11,
    getUnitName = 12,
    getFeedCount = 13,
    getProductCount = 14,
    getFeedEquilibrium = 15,
    flashEquilibrium = 16,
    flashProperty = 17,
    logMessage = 18,
};

/// They are numbered from 1 without a gap.
inline constexpr std::uint32_t commandCount = 18;

} // namespace solvane
