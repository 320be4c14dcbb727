#pragma once

namespace solvane {

/// A unit with 10 MB of additional files, saved to a stream and loaded from it, against zlib's work on the
/// same bytes in memory. Prints the figures; false where a goal is missed.
bool compareModelFiles();

} // namespace solvane
