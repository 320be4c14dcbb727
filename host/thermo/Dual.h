/// A number with its derivative to one variable, so that a formula written for any number also gives its own
/// derivative, exact except for rounding.
#pragma once

#include <cmath>

namespace solvane::host {

struct Dual {
    double value = 0;
    double slope = 0;

    constexpr Dual() = default;
    constexpr Dual(double number, double derivative = 0) : value(number), slope(derivative) {}

    friend constexpr Dual operator-(const Dual& x) { return {-x.value, -x.slope}; }
    friend constexpr Dual operator+(const Dual& x, const Dual& y) {
        return {x.value + y.value, x.slope + y.slope};
    }
    friend constexpr Dual operator-(const Dual& x, const Dual& y) {
        return {x.value - y.value, x.slope - y.slope};
    }
    friend constexpr Dual operator*(const Dual& x, const Dual& y) {
        return {x.value * y.value, x.slope * y.value + x.value * y.slope};
    }
    friend constexpr Dual operator/(const Dual& x, const Dual& y) {
        return {x.value / y.value, (x.slope - x.value / y.value * y.slope) / y.value};
    }
    constexpr Dual& operator+=(const Dual& x) { return *this = *this + x; }
};

/// By the chain rule. A constant stays constant where the function is infinitely steep.
inline Dual chained(const Dual& x, double value, double derivative) {
    return {value, x.slope == 0 ? 0 : derivative * x.slope};
}

inline Dual sqrt(const Dual& x) {
    return chained(x, std::sqrt(x.value), 0.5 / std::sqrt(x.value));
}

inline Dual exp(const Dual& x) {
    return chained(x, std::exp(x.value), std::exp(x.value));
}

inline Dual expm1(const Dual& x) {
    return chained(x, std::expm1(x.value), std::exp(x.value));
}

inline Dual log(const Dual& x) {
    return chained(x, std::log(x.value), 1 / x.value);
}

inline Dual log1p(const Dual& x) {
    return chained(x, std::log1p(x.value), 1 / (1 + x.value));
}

inline Dual pow(const Dual& x, double exponent) {
    return chained(x, std::pow(x.value, exponent), exponent * std::pow(x.value, exponent - 1));
}

/// x ln x, which is 0 at 0.
inline double timesLog(double x) {
    return x > 0 ? x * std::log(x) : 0;
}

inline Dual timesLog(const Dual& x) {
    return chained(x, timesLog(x.value), std::log(x.value) + 1);
}

inline double plain(double x) {
    return x;
}

inline double plain(const Dual& x) {
    return x.value;
}

/// The number with another value and the same derivative.
inline double withValue(double, double value) {
    return value;
}

inline Dual withValue(const Dual& x, double value) {
    return {value, x.slope};
}

} // namespace solvane::host
