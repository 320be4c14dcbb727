#include "Console.h"

#include <algorithm>

namespace solvane::host {

void print(std::FILE* stream, std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fflush(stream);
}

std::string visible(std::string_view text) {
    std::string shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool isLineEnd = c == '\n' || text.substr(i, 2) == "\r\n";
        if (static_cast<unsigned char>(c) >= ' ' || c == '\t' || isLineEnd)
            shown += c;
        else if (c == '\r')
            shown += "\\r";
        else
            shown += {'\\', 'x', "0123456789ABCDEF"[c / 16], "0123456789ABCDEF"[c % 16]};
    }
    return shown;
}

std::string padded(std::string text, std::size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

ExitCode complain(ExitCode code, const std::string& error) {
    print(stderr, "error: " + visible(error) + "\n");
    return code;
}

ExitCode complain(Fault fault, const std::string& error) {
    if (fault != Fault::machine)
        return complain(fault == Fault::model ? badUsage : calculationFailed, error);
    return complain(calculationFailed,
                    error + "\n\"SolvaneHost doctor\" shows what is wrong with this machine and "
                            "what to do.");
}

ExitCode stopCode(StopReason reason) {
    return reason == StopReason::interruption ? interrupted : calculationFailed;
}

void printUnitLine(std::string_view unit, std::string_view line) {
    print(stderr, "[" + std::string(unit) + "] " + visible(line) + "\n");
}

} // namespace solvane::host
