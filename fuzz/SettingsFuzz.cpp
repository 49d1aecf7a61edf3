// Any text as the settings file: what it sets stays in range, goes through the writer and back, and doesn't depend on
// how the text is laid out.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "FuzzTarget.h"
#include "editor/Settings.h"

namespace kelvane {
namespace {

using fuzz::Require;

Mod Parsed(std::string_view text, Mod mod = {}) {
  ParseSettings(text, mod);
  return mod;
}

// What the two hold of settings; the writer names all of them.
bool Same(const Mod& a, const Mod& b) {
  return FormatSettings(a) == FormatSettings(b);
}

// The opposite of all of `mod`.
Mod Opposite(const Mod& mod) {
  Mod other;
  other.cFirstColTrans = !mod.cFirstColTrans;
  other.cImpt32bitMode = 2 - mod.cImpt32bitMode.Int();
  other.cNoUpdatBak = !mod.cNoUpdatBak;
  other.cNoUpdatChk = !mod.cNoUpdatChk;
  other.cNoCompression = !mod.cNoCompression;
  other.cExpert = !mod.cExpert;
  return other;
}

// `text` with `replacement` for every `character`.
std::string Replaced(std::string_view text, char character, std::string_view replacement) {
  std::string out;
  for (const char each : text) {
    if (each == character) {
      out += replacement;
    } else {
      out.push_back(each);
    }
  }
  return out;
}

std::string UpperCase(std::string_view text) {
  std::string out(text);
  for (char& character : out) {
    character = character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
  }
  return out;
}

// Every line as a comment.
std::string CommentedOut(std::string_view text) {
  return ";" + Replaced(Replaced(text, '\r', "\r;"), '\n', "\n;");
}

void Run(std::string_view text) {
  const Mod set = Parsed(text);
  Require(set.cImpt32bitMode >= Int16(0) && set.cImpt32bitMode <= Int16(2), "the mode of import is 0 to 2");
  Require(Same(Parsed(FormatSettings(set), Opposite(set)), set),
          "what was written reads back, whatever was set before");
  Require(Same(Parsed(text, set), set), "reading it again changes nothing");

  const Mod before = Opposite(set);
  const Mod after = Parsed(text, before);
  for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1)) {
    Require(Same(Parsed(text.substr(at + 1), Parsed(text.substr(0, at), before)), after), "each line stands alone");
  }
  Require(Same(Parsed(Replaced(text, '\n', "\r\n"), before), after), "lines may end in CR LF");
  Require(Same(Parsed(Replaced(text, '\n', "\r"), before), after), "lines may end in CR");
  Require(Same(Parsed(Replaced(text, ' ', "  "), before), after), "blanks don't count");
  Require(Same(Parsed(UpperCase(text), before), after), "case doesn't count");
  Require(Same(Parsed(CommentedOut(text), before), before), "comments set nothing");
}

}  // namespace
}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kelvane::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
