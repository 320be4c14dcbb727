#pragma once

#include <filesystem>
#include <string>

namespace solvane::host {

/// The program gnuplot on the path or, under Wine, of the Linux system. False with a text that says where to
/// get it.
[[nodiscard]] bool findGnuplot(std::filesystem::path& program, std::string& error);

/// Has gnuplot carry out a script, and returns the bytes of its picture. Its messages go to stderr.
[[nodiscard]] bool runGnuplot(const std::filesystem::path& program, const std::string& script,
                              std::string& picture, std::string& error);

} // namespace solvane::host
