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

/// How many secants Anderson's acceleration combines, and the part of one that newer ones must leave over.
constexpr std::size_t mostSecants = 5;
constexpr double leastRemainder = 1e-8;

std::vector<double> difference(const std::vector<double>& first, const std::vector<double>& second) {
    std::vector<double> result(first.size());
    std::ranges::transform(first, second, result.begin(), std::minus());
    return result;
}

double dot(const double* first, const double* second, std::size_t size) {
    return std::inner_product(first, first + size, second, 0.0);
}

double dot(const std::vector<double>& first, const std::vector<double>& second) {
    return dot(first.data(), second.data(), first.size());
}

void subtract(std::vector<double>& from, double factor, const std::vector<double>& vector) {
    for (std::size_t i = 0; i < from.size(); ++i)
        from[i] -= factor * vector[i];
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
    const double divisor = dot(step, mapped);
    const double lengths = std::sqrt(dot(step, step) * dot(mapped, mapped));
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
    else if (method_ == FixedPointMethod::anderson)
        result = anderson(guess, image);
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

std::vector<double> FixedPoint::anderson(const std::vector<double>& guess, const std::vector<double>& image) {
    Secant rest{difference(image, guess), image};
    if (!guess_.empty()) {
        secants_.insert(secants_.begin(),
                        {difference(rest.residual, difference(image_, guess_)), difference(image, image_)});
        if (secants_.size() > mostSecants)
            secants_.pop_back();
    }
    // Gram-Schmidt's orthogonalization of the residuals takes the images along, so that what is left of the
    // residual is the least, and what is left of the image belongs to it.
    std::vector<Secant> basis;
    for (Secant secant : secants_) {
        const double square = dot(secant.residual, secant.residual);
        for (const Secant& unit : basis) {
            const double share = dot(unit.residual, secant.residual);
            subtract(secant.residual, share, unit.residual);
            subtract(secant.image, share, unit.image);
        }
        const double remainder = dot(secant.residual, secant.residual);
        if (!(remainder > leastRemainder * leastRemainder * square))
            continue;
        for (std::vector<double>* part : {&secant.residual, &secant.image})
            for (double& value : *part)
                value /= std::sqrt(remainder);
        const double share = dot(secant.residual, rest.residual);
        subtract(rest.residual, share, secant.residual);
        subtract(rest.image, share, secant.image);
        basis.push_back(std::move(secant));
    }
    return rest.image;
}

} // namespace solvane::host
