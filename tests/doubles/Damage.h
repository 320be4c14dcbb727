/// Random damage to what a reader gets, made from numbers alone, so that a failure can be repeated.
#pragma once

#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <string_view>

namespace solvane {

class Damage {
public:
    /// `number` counts the inputs of a seed. The snippets are what the reader may stumble over.
    Damage(std::uint32_t seed, int number, std::span<const std::string_view> snippets = {})
        : random_(seed * 0x9E3779B9u + static_cast<std::uint32_t>(number)), snippets_(snippets) {}

    /// A random number below the limit; 0 for 0.
    std::size_t below(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }
    /// True once in so many times.
    bool oneIn(std::size_t count) { return below(count) == 0; }
    /// Any of a list that is not empty.
    template <class List>
    const auto& anyOf(const List& list) {
        return list[below(std::size(list))];
    }

    /// Up to three changes: bits, snippets, pieces left out, repeated or cut off.
    void to(std::string& bytes);

private:
    void once(std::string& bytes);

    std::mt19937 random_;
    std::span<const std::string_view> snippets_;
};

} // namespace solvane
