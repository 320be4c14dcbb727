/// The two small dense solvers that the flashes need. Matrices are square, by rows.
#pragma once

#include <vector>

namespace solvane::host {

/// Solves by elimination with row pivots; `rightSide` becomes the solution. False for a singular matrix.
bool solveLinear(std::vector<double> matrix, std::vector<double>& rightSide);

/// Solves a symmetric system by Cholesky's factors; `rightSide` becomes the solution. False, with
/// `rightSide` unchanged, if the matrix is not clearly positive definite.
bool solvePositiveDefinite(std::vector<double> matrix, std::vector<double>& rightSide);

} // namespace solvane::host
