#pragma once

#include <string>

namespace solvane {

/// Prepares a model's document, in place, for the XML library. False with a text for a document that would
/// take unlimited time or memory, in any encoding that the library supports: one with declarations, since an
/// entity may expand to any number of others and a default attribute applies to every element, or one with
/// more bytes, elements, comments, attributes or unknown references
/// than a model can have.
///
/// Removes references to characters that XML does not allow: the writer creates them for control characters
/// and characters beyond 16 bits in Matlab's output, and the library would stop there. Leaves a file that
/// cannot be read for the library to reject.
[[nodiscard]] bool prepareDocument(const std::string& path, std::string& error);

} // namespace solvane
