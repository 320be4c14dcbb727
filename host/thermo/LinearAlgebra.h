/// The two small dense solvers that the flashes need. Matrices are square, by rows.
#pragma once

#include <vector>

namespace solvane::host {

// Both overwrite the matrix.

/// Solves by elimination with row pivots; `rightSide` becomes the solution. False for a singular matrix.
bool solveLinear(std::vector<double>& matrix, std::vector<double>& rightSide);

/// Solves a symmetric system by its factors L D L^T; `rightSide` becomes the solution. Reads the lower
/// triangle only. False, with `rightSide` unchanged, if the matrix is not clearly positive definite.
bool solvePositiveDefinite(std::vector<double>& matrix, std::vector<double>& rightSide);

} // namespace solvane::host
