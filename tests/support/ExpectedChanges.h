// What a file holds after a change, worked out from what it held before.
#pragma once

#include <string>

#include "support/RcoWalk.h"

namespace kelvane::test {

// The kinds of resources as indexes of RcoContents::resources.
enum ResourceKind : std::size_t { kImages = 0, kSounds = 1, kModels = 2 };

// What is put into a sound's entry beside its data.
struct Channels {
  bool stereo = false;
  std::int32_t size1 = 0;
  std::int32_t size2 = 0;
};

// New data for resource `n` of a kind. Images and models are marked as compressed or not, unless they are no GIM; what
// has the field, and isn't the last of its table, gets the unpacked size.
[[nodiscard]] RcoContents WithData(const RcoContents& before, std::size_t kind, std::size_t n, const Bytes& data,
                                   bool compressed, std::int32_t unpackedSize, const Channels& channels);

[[nodiscard]] RcoContents WithString(const RcoContents& before, std::size_t text, std::size_t language,
                                     std::u16string_view string);

// A new entry in front of resource `n` of a kind, which is neither its first nor the last of all. `extra` is the
// unpacked size, or of a sound the size of the second channel.
[[nodiscard]] RcoContents WithResource(const WalkedRco& before, std::size_t kind, std::size_t n,
                                       const std::string& label, const Bytes& data, std::int32_t extra);

// A new text without strings in front of another.
[[nodiscard]] RcoContents WithText(const WalkedRco& before, std::size_t n, const std::string& label);

// A new page in front of another one of the same depth. `body` are its bytes behind the head.
[[nodiscard]] RcoContents WithPage(const WalkedRco& before, std::size_t n, const std::string& label,
                                   std::uint8_t entryClass, const Bytes& body);

}  // namespace kelvane::test
