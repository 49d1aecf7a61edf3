// The settings file beside the program: 8-bit text, one setting a line.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "common/Mod.h"

namespace kelvane {

// `cAppPath` + base name of the executable + ".ini": a program file of another name has settings of its own.
[[nodiscard]] std::filesystem::path SettingsPath(const Mod& mod, const std::filesystem::path& executable);

// Takes over what the text sets, line by line, so that the last line of a key wins. A line that is malformed, names no
// key or gives a value of more or less than one character sets nothing; only the mode of import is kept in its range
// even then. A character that is no digit counts as 0.
void ParseSettings(std::string_view text, Mod& mod);
// The whole text of the file, comments and all, with line feeds.
[[nodiscard]] std::string FormatSettings(const Mod& mod);

// A file that isn't there sets nothing. Failures: those of files.
void ReadSettings(const std::filesystem::path& path, Mod& mod);
// Rewrites the whole file. Failures: those of files.
void WriteSettings(const std::filesystem::path& path, const Mod& mod);

}  // namespace kelvane
