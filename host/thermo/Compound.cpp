#include "Compound.h"

#include <algorithm>
#include <limits>

namespace solvane::host {

namespace {

constexpr double unknown = std::numeric_limits<double>::quiet_NaN();

// Critical constants, acentric factors, boiling and freezing points and heat capacities: R. C.
// Reid, J. M. Prausnitz, B. E. Poling, The Properties of Gases and Liquids, 4th edition (1987), Appendix A;
// carbon dioxide's sublimation point is the usual 194.7 K. Formation properties and absolute entropies:
// Perry's Chemical Engineers' Handbook, 8th edition, section 2 (from the DIPPR compilation). Molecular
// weights: from the atomic weights C 12.011, H 1.008, N 14.007, O 15.999. Dipole moments: R. D. Nelson, D. R.
// Lide, A. A. Maryott, NSRDS-NBS 10 (1967). Association: T.-H. Chung et al., Ind. Eng. Chem. Res. 27 (1988)
// 671. Rackett parameters: C. F. Spencer, R. P. Danner, J. Chem. Eng. Data 17 (1972) 236. Parachors: the
// customary values that surface tensions and densities of the liquids give, as in O. R. Quayle, Chem. Rev. 53
// (1953) 439. Liquid densities: J. A. Riddick, W. B. Bunger, T. K. Sakano, Organic Solvents, 4th edition
// (1986).
// clang-format off
constexpr std::array compoundTable{
    Compound{"methane", "CH4", "74-82-8", 16.043, 190.4, 46.0e5, 0.011, 111.6,
             {1.925e+1, 5.213e-2, 1.197e-5, -1.132e-8}, -74520, -50490, 186.27,
             "methane", "C", 99.2e-6, 90.7, 0, 0, 0.2892, 72.6, unknown},
    Compound{"ethane", "C2H6", "74-84-0", 30.070, 305.4, 48.8e5, 0.099, 184.6,
             {5.409e+0, 1.781e-1, -6.938e-5, 8.713e-9}, -83820, -31920, 229.12,
             "ethane", "CC", 148.3e-6, 89.9, 0, 0, 0.2808, 110.5, unknown},
    Compound{"propane", "C3H8", "74-98-6", 44.097, 369.8, 42.5e5, 0.153, 231.1,
             {-4.224e+0, 3.063e-1, -1.586e-4, 3.215e-8}, -104680, -24390, 270.20,
             "propane", "CCC", 203e-6, 85.5, 0.084, 0, 0.2766, 150.8, unknown},
    Compound{"n-butane", "C4H10", "106-97-8", 58.124, 425.2, 38.0e5, 0.199, 272.7,
             {9.487e+0, 3.313e-1, -1.108e-4, -2.822e-9}, -125790, -16700, 309.91,
             "butane", "CCCC", 255e-6, 134.8, 0, 0, 0.2730, 190.3, unknown},
    Compound{"n-pentane", "C5H12", "109-66-0", 72.151, 469.7, 33.7e5, 0.251, 309.2,
             {-3.626e+0, 4.873e-1, -2.580e-4, 5.305e-8}, -146760, -8813, 349.45,
             "pentane", "CCCCC", 304e-6, 143.4, 0, 0, 0.2684, 231.0, 621.39e3 / 72.151},
    Compound{"nitrogen", "N2", "7727-37-9", 28.014, 126.2, 33.9e5, 0.039, 77.4,
             {3.115e+1, -1.357e-2, 2.680e-5, -1.168e-8}, 0, 0, 191.50,
             "dinitrogen", "N#N", 89.8e-6, 63.3, 0, 0, 0.2900, 60.4, unknown},
    Compound{"carbon dioxide", "CO2", "124-38-9", 44.009, 304.1, 73.8e5, 0.239, 194.7,
             {1.980e+1, 7.344e-2, -5.602e-5, 1.715e-8}, -393510, -394370, 213.68,
             "carbon dioxide", "O=C=O", 93.9e-6, unknown, 0, 0, 0.2722, 77.5, unknown},
    Compound{"water", "H2O", "7732-18-5", 18.015, 647.3, 221.2e5, 0.344, 373.2,
             {3.224e+1, 1.924e-3, 1.055e-5, -3.596e-9}, -241814, -228590, 188.72,
             "water", "O", 57.1e-6, 273.2, 1.85, 0.076, 0.2338, 52.6, 997.05e3 / 18.015},
    Compound{"benzene", "C6H6", "71-43-2", 78.114, 562.2, 48.9e5, 0.212, 353.2,
             {-3.392e+1, 4.739e-1, -3.017e-4, 7.130e-8}, 82880, 129600, 269.30,
             "benzene", "c1ccccc1", 259e-6, 278.7, 0, 0, 0.2698, 206.1, 873.6e3 / 78.114},
    Compound{"toluene", "C7H8", "108-88-3", 92.141, 591.8, 41.0e5, 0.263, 383.8,
             {-2.435e+1, 5.125e-1, -2.765e-4, 4.911e-8}, 50170, 122200, 320.99,
             "toluene", "Cc1ccccc1", 316e-6, 178.0, 0.36, 0, 0.2644, 245.5, 862.19e3 / 92.141},
    Compound{"carbon monoxide", "CO", "630-08-0", 28.010, 132.9, 35.0e5, 0.066, 81.7,
             {3.087e+1, -1.285e-2, 2.789e-5, -1.272e-8}, -110530, -137150, 197.54,
             "carbon monoxide", "[C-]#[O+]", 93.2e-6, 68.1, 0.112, 0, 0.2896, 61.6, unknown},
    Compound{"hydrogen", "H2", "1333-74-0", 2.016, 33.0, 12.9e5, -0.216, 20.3,
             {2.714e+1, 9.274e-3, -1.381e-5, 7.645e-9}, 0, 0, 130.57,
             "dihydrogen", "[H][H]", 64.3e-6, 14.0, 0, 0, 0.3218, 34.2, unknown},
    Compound{"oxygen", "O2", "7782-44-7", 31.998, 154.6, 50.4e5, 0.025, 90.2,
             {2.811e+1, -3.680e-6, 1.746e-5, -1.065e-8}, 0, 0, 205.04,
             "dioxygen", "O=O", 73.4e-6, 54.4, 0, 0, 0.2890, 54.0, unknown},
};
// clang-format on

char lowered(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

} // namespace

double molarMass(std::span<const Compound* const> compounds, std::span<const double> fractions) {
    constexpr double gramsPerKilogram = 1000;
    double mass = 0;
    for (std::size_t i = 0; i < compounds.size(); ++i)
        mass += fractions[i] * compounds[i]->molecularWeight / gramsPerKilogram;
    return mass;
}

std::span<const Compound> allCompounds() {
    return compoundTable;
}

const Compound* findCompound(std::string_view name) {
    const auto found = std::ranges::find_if(compoundTable, [name](const Compound& compound) {
        return std::ranges::equal(compound.name, name, {}, lowered, lowered);
    });
    return found == compoundTable.end() ? nullptr : &*found;
}

} // namespace solvane::host
