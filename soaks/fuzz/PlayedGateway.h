/// The gateway with an interpreter and a unit that are played: one run an object.
#pragma once

#include "tests/gateway/StandInArray.h"

#include <string>
#include <string_view>
#include <vector>

namespace solvane::soak {

class PlayedGateway {
public:
    /// Begins a run of so many compounds, and of materials of version 1.0 where there are no phases. The unit
    /// answers each request with this block.
    PlayedGateway(std::size_t compounds, const std::vector<std::string>& phases, std::string block);
    /// Ends it, and frees all arrays.
    ~PlayedGateway();
    PlayedGateway(const PlayedGateway&) = delete;
    PlayedGateway& operator=(const PlayedGateway&) = delete;

    /// The outputs; none where the call raised an error.
    std::vector<const mxArray*> call(int outputs, const std::vector<const mxArray*>& arguments);
    /// Of the last call; empty where it succeeded.
    const std::string& error() const;
    /// What reached the unit since the run began.
    const std::vector<std::string>& requests() const;
};

mxArray* numbers(std::size_t rows, std::size_t columns, std::vector<double> values);
mxArray* text(std::string_view characters);

} // namespace solvane::soak
