#include "pages/StringArea.h"

#include <algorithm>

#include "common/Bytes.h"
#include "common/Encoding.h"

namespace kelvane {

std::vector<AreaString> ReadAreaStrings(RcoFile& file, std::int32_t offset, std::int32_t byteLength) {
  file.Seek(offset);
  RequireArraySize(byteLength);
  // What lies behind the end of the file reads as NULs, which hold no string.
  const ByteView image = file.Image();
  const ByteView area = image.subspan(std::min(static_cast<std::size_t>(offset), image.size()));
  const ByteView bytes = area.first(std::min(static_cast<std::size_t>(byteLength), area.size()));

  std::vector<AreaString> strings;
  for (auto at = bytes.begin(); at < bytes.end(); ++at) {
    const auto nul = std::find(at, bytes.end(), std::uint8_t{0});
    if (nul != at) {
      strings.push_back({static_cast<std::int32_t>(at - bytes.begin()), Latin1ToUtf8(ByteView(at, nul))});
    }
    at = nul;
    if (at == bytes.end()) {
      break;
    }
  }
  return strings;
}

}  // namespace kelvane
