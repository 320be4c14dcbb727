#include "Damage.h"

#include <algorithm>

namespace solvane {

void Damage::to(std::string& bytes) {
    for (std::size_t count = 1 + below(3); count > 0; --count)
        once(bytes);
}

void Damage::once(std::string& bytes) {
    const std::size_t place = below(bytes.size() + 1);
    const std::size_t length = std::min(below(16), bytes.size() - place);
    switch (below(6)) {
    case 0:
        if (place < bytes.size())
            bytes[place] = static_cast<char>(bytes[place] ^ (1 << below(8)));
        break;
    case 1:
        if (!snippets_.empty())
            bytes.replace(place, length, anyOf(snippets_));
        break;
    case 2:
        if (!snippets_.empty())
            bytes.insert(place, anyOf(snippets_));
        break;
    case 3:
        bytes.erase(place, length);
        break;
    case 4:
        bytes.insert(below(bytes.size() + 1), bytes.substr(place, below(200)));
        break;
    case 5:
        if (oneIn(8))
            bytes.resize(place);
        break;
    }
}

} // namespace solvane
