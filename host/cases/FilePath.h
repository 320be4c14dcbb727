#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace solvane::host {

/// The file that a user's path (UTF-8) names. Under Wine it may be an absolute Unix path.
std::filesystem::path filePath(std::string_view path);

/// The path as text for messages, UTF-8.
std::string pathText(const std::filesystem::path& path);

/// The same as from the current folder, with slashes, as editors on any system find it.
std::string pathFromHere(const std::filesystem::path& path);

/// Reads the whole file; false with a text that names it.
bool readFile(const std::filesystem::path& path, std::string& bytes, std::string& error);

/// Replaces the file completely or not at all; false with a text that names it.
bool writeFile(const std::filesystem::path& path, std::string_view bytes, std::string& error);

} // namespace solvane::host
