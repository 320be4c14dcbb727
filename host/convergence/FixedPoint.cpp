#include "FixedPoint.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace solvane::host {

namespace {

// Wegstein's weights of the former guess. Below 0 it goes beyond the image, above 0 it stops short of it, for
// a variable that swings.
constexpr double lowestWeight = -5;
constexpr double highestWeight = 0.5;

/// How small the divisor of Broyden's update may be, relative to the lengths of its factors.
constexpr double leastDivisor = 1e-12;

std::vector<double> difference(const std::vector<double>& first, const std::vector<double>& second) {
    std::vector<double> result(first.size());
    std::ranges::transform(first, second, result.begin(), std::minus());
    return result;
}

double dot(const double* first, const double* second, std::size_t size) {
    return std::inner_product(first, first + size, second, 0.0);
}

/// Weight of the former guess for a variable that changed by `step`, and its image by `change`.
double weightOf(double step, double change) {
    // A slope of 1 or more, or none, says nothing about where the fixed point lies.
    if (step == 0 || !(change / step < 1))
        return 0;
    return std::clamp(change / (change - step), lowestWeight, highestWeight);
}

/// Changes the inverse as little as possible so that it maps the change of the residual to that of the guess.
void updateInverse(std::vector<double>& inverse, const std::vector<double>& step,
                   const std::vector<double>& change) {
    const std::size_t size = step.size();
    std::vector<double> mapped(size), row(size); // inverse * change, step * inverse
    for (std::size_t i = 0; i < size; ++i) {
        mapped[i] = dot(&inverse[i * size], change.data(), size);
        for (std::size_t j = 0; j < size; ++j)
            row[j] += step[i] * inverse[i * size + j];
    }
    const double divisor = dot(step.data(), mapped.data(), size);
    const double lengths =
        std::sqrt(dot(step.data(), step.data(), size) * dot(mapped.data(), mapped.data(), size));
    if (!(std::abs(divisor) > leastDivisor * lengths))
        return;
    for (std::size_t i = 0; i < size; ++i)
        for (std::size_t j = 0; j < size; ++j)
            inverse[i * size + j] += (step[i] - mapped[i]) * row[j] / divisor;
}

} // namespace

std::vector<double> FixedPoint::next(const std::vector<double>& guess, const std::vector<double>& image) {
    std::vector<double> result = image;
    if (method_ == FixedPointMethod::broyden)
        result = broyden(guess, image);
    else if (method_ == FixedPointMethod::wegstein && !guess_.empty())
        result = wegstein(guess, image);
    guess_ = guess;
    image_ = image;
    return result;
}

std::vector<double> FixedPoint::wegstein(const std::vector<double>& guess,
                                         const std::vector<double>& image) const {
    std::vector<double> result(guess.size());
    for (std::size_t i = 0; i < guess.size(); ++i) {
        const double weight = weightOf(guess[i] - guess_[i], image[i] - image_[i]);
        result[i] = weight * guess[i] + (1 - weight) * image[i];
    }
    return result;
}

std::vector<double> FixedPoint::broyden(const std::vector<double>& guess, const std::vector<double>& image) {
    const std::size_t size = guess.size();
    const std::vector<double> residual = difference(image, guess);
    if (guess_.empty()) {
        inverse_.assign(size * size, 0);
        for (std::size_t i = 0; i < size; ++i)
            inverse_[i * size + i] = -1; // as if the image did not depend on the guess
    } else {
        updateInverse(inverse_, difference(guess, guess_), difference(residual, difference(image_, guess_)));
    }
    std::vector<double> result = guess;
    for (std::size_t i = 0; i < size; ++i)
        result[i] -= dot(&inverse_[i * size], residual.data(), size);
    return result;
}

} // namespace solvane::host
