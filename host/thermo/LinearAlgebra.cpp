#include "LinearAlgebra.h"

#include <cmath>
#include <utility>

namespace solvane::host {

bool solveLinear(std::vector<double>& matrix, std::vector<double>& rightSide) {
    const std::size_t n = rightSide.size();
    const auto at = [&](std::size_t row, std::size_t column) -> double& { return matrix[row * n + column]; };
    for (std::size_t k = 0; k < n; ++k) {
        std::size_t pivot = k;
        for (std::size_t row = k + 1; row < n; ++row)
            if (std::abs(at(row, k)) > std::abs(at(pivot, k)))
                pivot = row;
        if (!(std::abs(at(pivot, k)) > 0) || !std::isfinite(at(pivot, k)))
            return false;
        if (pivot != k) {
            for (std::size_t column = k; column < n; ++column)
                std::swap(at(k, column), at(pivot, column));
            std::swap(rightSide[k], rightSide[pivot]);
        }
        for (std::size_t row = k + 1; row < n; ++row) {
            const double factor = at(row, k) / at(k, k);
            if (factor == 0)
                continue;
            for (std::size_t column = k + 1; column < n; ++column)
                at(row, column) -= factor * at(k, column);
            rightSide[row] -= factor * rightSide[k];
        }
    }
    for (std::size_t k = n; k-- > 0;) {
        for (std::size_t column = k + 1; column < n; ++column)
            rightSide[k] -= at(k, column) * rightSide[column];
        rightSide[k] /= at(k, k);
    }
    return true;
}

bool solvePositiveDefinite(std::vector<double>& matrix, std::vector<double>& rightSide) {
    const std::size_t n = rightSide.size();
    const auto at = [&](std::size_t row, std::size_t column) -> double& { return matrix[row * n + column]; };
    for (std::size_t k = 0; k < n; ++k) {
        const double original = at(k, k);
        for (std::size_t j = 0; j < k; ++j)
            at(k, k) -= at(k, j) * at(k, j) * at(j, j);
        if (!(at(k, k) > 1e-12 * std::abs(original)))
            return false;
        for (std::size_t row = k + 1; row < n; ++row) {
            for (std::size_t j = 0; j < k; ++j)
                at(row, k) -= at(row, j) * at(k, j) * at(j, j);
            at(row, k) /= at(k, k);
        }
    }
    for (std::size_t row = 0; row < n; ++row)
        for (std::size_t j = 0; j < row; ++j)
            rightSide[row] -= at(row, j) * rightSide[j];
    for (std::size_t row = n; row-- > 0;) {
        rightSide[row] /= at(row, row);
        for (std::size_t j = row + 1; j < n; ++j)
            rightSide[row] -= at(j, row) * rightSide[j];
    }
    return true;
}

} // namespace solvane::host
