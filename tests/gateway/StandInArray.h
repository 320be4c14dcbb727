/// The arrays of an interpreter that isn't there: as much of one as the gateway touches.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

enum class ArrayKind { number, integer, logical, text, cell };

struct mxArray_tag {
    ArrayKind kind = ArrayKind::number;
    std::size_t rows = 0;
    std::size_t columns = 0;
    bool isComplex = false;
    bool isSparse = false;
    std::vector<double> numbers{}; ///< of the kinds number, integer and logical
    std::string characters{};      ///< raw bytes, of one or two for each character
    std::vector<mxArray_tag*> cells{};
};
using mxArray = mxArray_tag;

/// All arrays of a module, which live until it forgets them.
inline std::deque<mxArray>& standInArrays() {
    static std::deque<mxArray> arrays;
    return arrays;
}
inline mxArray* keep(mxArray array) {
    return &standInArrays().emplace_back(std::move(array));
}

/// What the test program hands to the stand-in libraries.
struct StandInHooks {
    void (*raise)(const char* message) = nullptr;
    mxArray* (*globalVariable)(const char* name) = nullptr;
    int locks = 0;
};
