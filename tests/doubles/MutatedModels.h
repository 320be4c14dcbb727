#pragma once

#include "Container.h"
#include "HostStream.h"

#include <cstdint>

namespace solvane {

/// A model with something of everything, and what becomes of it by damage.
class MutatedModels {
public:
    /// The folder is for files on the way.
    explicit MutatedModels(std::wstring folder);

    /// A stream with damage to its bytes, to those of its container, or to the document in it; or one with a
    /// document that was made to do harm.
    HostStream mutated(std::uint32_t seed, int number) const;
    const std::string& container() const { return container_; }

private:
    std::wstring folder_;
    std::vector<Entry> model_;
    std::string container_;
};

} // namespace solvane
