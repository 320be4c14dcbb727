/// Reading a unit's answer, field by field, and what each form of answer gives to the script.
#pragma once

#include "Run.h"
#include "mex/MexFunctions.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace solvane::gateway {

/// Reads an answer from its status word on, and fetches more of it only when a field needs more than came
/// with the exchange. Each reader returns false with an error text where the block ends too early.
class Reply {
public:
    Reply(Transport& transport, std::string firstBytes)
        : transport_(transport), bytes_(std::move(firstBytes)) {}

    bool word(std::uint32_t& number, std::string& error);
    bool number(double& number, std::string& error);
    bool numbers(std::uint64_t count, std::vector<double>& numbers, std::string& error);
    /// The bytes up to a NUL.
    bool text(std::string& text, std::string& error);
    /// Up to `count` bytes that follow, fewer if the block ends before.
    std::string_view rest(std::size_t count);

private:
    bool have(std::uint64_t count, std::string& error);
    bool copy(void* target, std::uint64_t count, std::string& error);

    Transport& transport_;
    std::string bytes_;
    std::size_t position_ = 0;
};

/// Sets the outputs from an answer behind its status word. Outputs that the script didn't ask for stay unset.
using Unpack = bool(Reply& reply, const Run& run, std::span<mxArray*> outputs, std::string& error);

Unpack unpackNothing, unpackCount, unpackNumber, unpackText, unpackVector, unpackShaped, unpackParameter,
    unpackConstants, unpackEquilibrium;

} // namespace solvane::gateway
