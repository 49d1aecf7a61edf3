// Presses cmdReplaceAll on a file of every kind of resource; the folder is `out`.
#pragma once

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "resources/ReplaceFixture.h"

namespace kelvane::test {

class ReplaceAllFixture : public ReplaceFixture {
 protected:
  ReplaceAllFixture() { OpenScreen(FullScreen()); }

  void ReplaceAll() {
    prompts.ExpectFolder("选择输出目录", out.Path());
    prompts.ExpectTell("完成", Icon::Information);
    CmdReplaceAll(Context());
  }

  void EmptyOut() const {
    for (const std::string& name : out.Names()) {
      std::filesystem::remove_all(out / name);
    }
  }

  // A GIM that is expected to be stored deflated, with its length in the entry.
  void SetGim(int row, const Bytes& gim) {
    ImageSpec& image = screen.images[static_cast<std::size_t>(row)];
    image.data = DeflateWrapped(gim);
    image.unpackedSize = LengthOf(gim);
    image.compression = 1;
  }
  [[nodiscard]] static std::int32_t LengthOf(const Bytes& bytes) { return static_cast<std::int32_t>(bytes.size()); }
};

}  // namespace kelvane::test
