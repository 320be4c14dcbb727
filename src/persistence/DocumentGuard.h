#pragma once

#include <string>

namespace solvane {

/// Makes a document that came with a model fit for the XML library, in its place. False with a text for one
/// that is made to take time or memory without end, in any encoding that the library knows: with
/// declarations, since an entity may stand for any number of others and a default attribute comes with every
/// element, or with more bytes, elements, comments, attributes or
/// unknown references than a model can have.
///
/// References to what is no character of XML are taken out: the writer makes them of control characters and
/// of characters beyond 16 bits in Matlab's output, and the library would read no further. A file that can't
/// be read is left for the library to refuse.
[[nodiscard]] bool prepareDocument(const std::string& path, std::string& error);

} // namespace solvane
