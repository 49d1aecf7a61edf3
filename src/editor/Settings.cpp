#include "editor/Settings.h"

#include <algorithm>
#include <array>

#include "common/Bytes.h"
#include "common/Files.h"

namespace kelvane {

namespace {

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string_view()
                                         : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// The line as it is compared: in lower case and without blanks.
std::string Cleaned(std::string_view line) {
  std::string cleaned;
  for (const char character : line) {
    if (character != ' ') {
      cleaned.push_back(character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character);
    }
  }
  return cleaned;
}

struct Flag {
  std::string_view start;
  bool Mod::*field;
};

constexpr std::string_view kImportMode = "impt32bitmode=";
constexpr std::array<Flag, 5> kFlags = {{{"imptsetfirstcolastrans=", &Mod::cFirstColTrans},
                                         {"noupdatbak=", &Mod::cNoUpdatBak},
                                         {"noupdatchk=", &Mod::cNoUpdatChk},
                                         {"nocompression=", &Mod::cNoCompression},
                                         {"expertmode=", &Mod::cExpert}}};

// The value of one digit; 0 for any other character.
int DigitOf(char character) {
  return character >= '0' && character <= '9' ? character - '0' : 0;
}

void ParseLine(std::string_view line, Mod& mod) {
  const std::string cleaned = Cleaned(line);
  if (cleaned.starts_with(';') || cleaned.find('=') == std::string::npos) {
    return;
  }
  const std::string_view value = Trimmed(line.substr(line.find('=') + 1));
  if (cleaned.starts_with(kImportMode)) {
    if (value.size() == 1) {
      mod.cImpt32bitMode = DigitOf(value.front());
    }
    if (mod.cImpt32bitMode < Int16(0) || mod.cImpt32bitMode > Int16(2)) {
      mod.cImpt32bitMode = 1;  // a bad digit lets the editor decide
    }
    return;
  }
  for (const Flag& flag : kFlags) {
    if (cleaned.starts_with(flag.start) && value.size() == 1) {
      mod.*flag.field = DigitOf(value.front()) != 0;
    }
  }
}

}  // namespace

std::filesystem::path SettingsPath(const Mod& mod, const std::filesystem::path& executable) {
  std::filesystem::path name = executable.stem();
  name += ".ini";
  return mod.cAppPath / name;
}

void ParseSettings(std::string_view text, Mod& mod) {
  // A line ends at CR, LF or both: between the two stands an empty line, which sets nothing.
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
    ParseLine(line, mod);
    text.remove_prefix(std::min(line.size() + 1, text.size()));
  }
}

std::string FormatSettings(const Mod& mod) {
  const auto flag = [](bool value) { return value ? "1\n" : "0\n"; };
  return std::string(";For 4/8bit BMP importing...\n") + "ImptSetFirstColAsTrans = " + flag(mod.cFirstColTrans) + "\n" +
         ";For 32bit BMP importing...\n" + "; 0 = Always convert to palette\n" + "; 1 = Auto-decide\n" +
         "; 2 = Always use 32 bit GIMs\n" + "Impt32bitMode = " + std::to_string(mod.cImpt32bitMode.Int()) + "\n\n" +
         ";Set to 1 to disable making a .bak file \n" + "NoUpdatBak = " + flag(mod.cNoUpdatBak) + "\n" +
         ";Disable the file update checker (may fix problems on Wine)\n" + "NoUpdatChk = " + flag(mod.cNoUpdatChk) +
         "\n" + ";Disable image/model compression\n" + "NoCompression = " + flag(mod.cNoCompression) + "\n" +
         ";Enter 'expert' mode by default\n" + "ExpertMode = " + flag(mod.cExpert) + "\n";
}

void ReadSettings(const std::filesystem::path& path, Mod& mod) {
  if (FileExists(path)) {
    const Bytes text = ReadWholeFile(path);
    ParseSettings(std::string(text.begin(), text.end()), mod);
  }
}

void WriteSettings(const std::filesystem::path& path, const Mod& mod) {
  const std::string text = FormatSettings(mod);
  SaveStaged(path, Bytes(text.begin(), text.end()));
}

}  // namespace kelvane
