#include "imaging/cGIFparser.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "common/RuntimeFailure.h"
#include "imaging/OneFrameGif.h"
#include "imaging/modParsers.h"

namespace kelvane {

namespace {

constexpr std::int32_t kHeaderBytes = 13;  // with the logical screen
constexpr std::int32_t kFlagsAt = 10;
constexpr std::int32_t kScreenSizeAt = 6;
constexpr std::int32_t kControlBytes = 8;
constexpr std::int32_t kDescriptorBytes = 10;
constexpr std::uint8_t kHasTable = 0x80;
constexpr std::uint8_t kExtension = 0x21;
constexpr std::uint8_t kImage = 0x2C;
constexpr std::uint8_t kTrailer = 0x3B;
constexpr std::uint8_t kApplication = 255;
constexpr std::uint8_t kGraphicControl = 249;

std::uint8_t Lower(std::uint8_t letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<std::uint8_t>(letter + 32) : letter;
}

bool HasSignature(ByteView gif) {
  constexpr std::string_view kNewer = "gif89a";
  constexpr std::string_view kOlder = "gif87a";
  const auto matches = [gif](std::string_view name) {
    return std::equal(name.begin(), name.end(), gif.begin(), [](char wanted, std::uint8_t found) {
      return static_cast<std::uint8_t>(wanted) == Lower(found);
    });
  };
  return gif.size() >= kNewer.size() && (matches(kNewer) || matches(kOlder));
}

// The colours of a table by the flags byte that tells of it.
std::int32_t ColoursOf(std::uint8_t flags) {
  return 2 << (flags & 7);
}

// The pixels that indexes stand for.
class Palette {
 public:
  // Three bytes a colour, red first, from the start of `table`, of which 256 count. Index `transparent` is all zero,
  // and so is one without a colour.
  Palette(ByteView table, std::uint8_t alpha, std::int32_t transparent)
      : known_(std::min<std::size_t>(table.size() / 3, 256)), transparent_(transparent) {
    for (std::size_t i = 0; i < known_; ++i) {
      pixels_[i] = {table[3 * i + 2], table[3 * i + 1], table[3 * i], alpha};
    }
    if (transparent >= 0) {
      pixels_[static_cast<std::size_t>(transparent)] = {};
    }
  }

  // Whether there is a colour for each of the indexes that need one.
  [[nodiscard]] bool Covers(ByteView indexes) const {
    return known_ == 256 ||
           std::ranges::all_of(indexes, [this](std::uint8_t index) { return index < known_ || index == transparent_; });
  }

  // 4 bytes a pixel.
  void Paint(ByteView indexes, std::uint8_t* target) const {
    for (const std::uint8_t index : indexes) {
      std::memcpy(target, pixels_[index].data(), 4);
      target += 4;
    }
  }

 private:
  std::array<std::array<std::uint8_t, 4>, 256> pixels_{};
  std::size_t known_;
  std::int32_t transparent_;
};

}  // namespace

bool cGIFparser::LoadStream(ByteView inStream, c32bppDIB& cHost, std::int32_t streamStart, std::int32_t streamLength) {
  gifData_ = SpanOf(inStream, streamStart, streamLength);
  try {
    return ParseGifSource(cHost);
  } catch (const RuntimeFailure&) {
    return false;
  }
}

bool cGIFparser::ParseGifSource(c32bppDIB& cHost) {
  if (!HasSignature(gifData_)) {
    return false;
  }
  Frame frame;
  if (!WalkToFrame(frame) || frame.colours == 0) {
    return false;
  }
  const Bytes rebuilt = Rebuild(frame);
  if (!frame.transparentFlag) {
    return RenderRebuiltGif(rebuilt, -1, 0, cHost);
  }
  const std::int32_t tableOffset = frame.localTable ? frame.imageStart + kDescriptorBytes : kHeaderBytes;
  return RenderRebuiltGif(rebuilt, frame.transIndex, tableOffset, cHost);
}

// Finds the first frame and the graphic control that counts for it. False for a block that GIF doesn't have; failure 9
// where the data ends first.
bool cGIFparser::WalkToFrame(Frame& frame) const {
  const std::uint8_t flags = At(gifData_, kFlagsAt);
  if ((flags & kHasTable) != 0) {
    frame.colours = ColoursOf(flags);
    frame.headerSize += 3 * frame.colours;
  }
  std::int32_t position = frame.headerSize;
  while (At(gifData_, position) != kImage) {
    if (gifData_[static_cast<std::size_t>(position)] == 0) {
      ++position;
    } else if (gifData_[static_cast<std::size_t>(position)] == kExtension) {
      position = WalkExtension(frame, position);
    } else {
      return false;
    }
  }
  frame.imageStart = position;
  const std::uint8_t packed = At(gifData_, std::int64_t{position} + 9);
  position += kDescriptorBytes;
  if ((packed & kHasTable) != 0) {
    frame.colours = ColoursOf(packed);
    frame.localTable = true;
    position += 3 * frame.colours;
  }
  ++position;  // the size of the LZW codes
  SkipSubBlocks(position);
  frame.imageEnd = position - 1;
  return true;
}

// Notes the graphic control, the last one before the frame being the one that counts; the position behind the block.
std::int32_t cGIFparser::WalkExtension(Frame& frame, std::int32_t position) const {
  const std::uint8_t label = At(gifData_, std::int64_t{position} + 1);
  if (label == kGraphicControl) {
    frame.controlStart = position;
    frame.transparentFlag = (At(gifData_, std::int64_t{position} + 3) & 1) != 0;
    if (frame.transparentFlag) {
      frame.transIndex = At(gifData_, std::int64_t{position} + 6);
    }
    return position + kControlBytes;
  }
  position += 2;
  if (label == kApplication) {
    position += 1 + At(gifData_, position);
  }
  SkipSubBlocks(position);
  return position;
}

void cGIFparser::SkipSubBlocks(std::int32_t& position) const {
  while (At(gifData_, position) != 0) {
    position += gifData_[static_cast<std::size_t>(position)] + 1;
  }
  ++position;
}

// A GIF of that frame alone, which fills its screen wherever it lay in the animation.
Bytes cGIFparser::Rebuild(const Frame& frame) const {
  Bytes rebuilt;
  Append(rebuilt, SpanOf(gifData_, 0, frame.headerSize));
  if (frame.controlStart >= 0) {
    Append(rebuilt, SpanOf(gifData_, frame.controlStart, kControlBytes));
  }
  const auto descriptor = static_cast<std::int64_t>(rebuilt.size());
  Append(rebuilt, SpanOf(gifData_, frame.imageStart, frame.imageEnd - frame.imageStart + 1));
  rebuilt.push_back(kTrailer);
  WriteI32(rebuilt, descriptor + 1, 0);
  WriteI32(rebuilt, kScreenSizeAt, ReadI32(rebuilt, descriptor + 5));
  return rebuilt;
}

// With a transparent index, not -1, the colours are those at `tableOffset` in the source, as far as the source goes;
// otherwise they are the copy's, and alpha stays 0 as everywhere that a picture is painted.
bool cGIFparser::RenderRebuiltGif(ByteView rebuilt, std::int32_t transIndex, std::int32_t tableOffset,
                                  c32bppDIB& cHost) const {
  OneFrameGif picture(rebuilt);
  if (!cHost.InitializeDIB(picture.Width(), picture.Height())) {
    return false;
  }
  const bool transparency = transIndex != -1;
  const Palette palette = transparency
                              ? Palette(gifData_.subspan(static_cast<std::size_t>(tableOffset)), 255, transIndex)
                              : Palette(picture.Table(), 0, -1);
  Bytes indexes(static_cast<std::size_t>(picture.Width()));
  for (std::int32_t n = 0; n < picture.Height(); ++n) {
    if (!picture.ReadRow(indexes) || (transparency && !palette.Covers(indexes))) {
      cHost.DestroyDIB();
      return false;
    }
    const std::int32_t storedRow = cHost.Height() - 1 - picture.RowOf(n);
    palette.Paint(indexes, cHost.BitsPointer() + std::ptrdiff_t{cHost.ScanWidth()} * storedRow);
  }
  cHost.Alpha(transparency, ParserKey());
  cHost.ImageType(ImageKind::Gif, ParserKey());
  return true;
}

}  // namespace kelvane
