#include "container/Labels.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "common/Encoding.h"

namespace kelvane {

std::string ReadLabel(RcoFile& file, std::int32_t position) {
  if (position < 0) {
    return "<No label>";
  }
  constexpr std::size_t kLongestRead = 255;
  const std::int64_t before = file.Position();
  std::array<std::uint8_t, kLongestRead> buffer{};
  file.Seek(position);
  file.Read(buffer);
  file.Seek(before);
  const auto nul = std::find(buffer.begin(), buffer.end(), std::uint8_t{0});
  if (nul == buffer.end()) {
    return "<Error retrieving label>";
  }
  return Latin1ToUtf8(ByteView(buffer.begin(), nul));
}

std::string FileNameOfLabel(std::string_view label) {
  std::string name(label);
  if (name == "." || name == "..") {
    return std::string(name.size(), '_');
  }
  std::replace(name.begin(), name.end(), '/', '_');
  std::replace(name.begin(), name.end(), static_cast<char>(std::filesystem::path::preferred_separator), '_');
  return name;
}

}  // namespace kelvane
