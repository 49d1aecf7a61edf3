#include "support/PngBuilder.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <stdexcept>
#include <zlib.h>

namespace kelvane::test {
namespace {

void AppendBigEndian32(Bytes& bytes, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) {
    bytes.push_back(static_cast<std::uint8_t>(value >> shift));
  }
}

// Where the pixels of the seven passes lie, as the standard draws them: the pass of each pixel of an 8 by 8 square.
constexpr std::array<std::string_view, 8> kPassOfPixel = {"16462646", "77777777", "56565656", "77777777",
                                                          "36463646", "77777777", "56565656", "77777777"};

int PassOf(std::int32_t x, std::int32_t y) {
  return kPassOfPixel[static_cast<std::size_t>(y % 8)][static_cast<std::size_t>(x % 8)] - '0';
}

class RowWriter {
 public:
  RowWriter(const PngImage& image, Bytes& out)
      : image_(image), channels_(static_cast<std::size_t>(PngChannels(image.colourType))), out_(out) {}

  // The rows of the pixels for which `contains(x, y)`; a row without pixels is left out.
  template <class Contains>
  void WritePass(Contains&& contains) {
    Bytes above;
    std::int32_t row = 0;
    for (std::int32_t y = 0; y < image_.height; ++y) {
      std::vector<std::uint16_t> samples;
      for (std::int32_t x = 0; x < image_.width; ++x) {
        if (contains(x, y)) {
          const std::size_t pixel =
              static_cast<std::size_t>(y) * static_cast<std::size_t>(image_.width) + static_cast<std::size_t>(x);
          const auto first = image_.samples.begin() + static_cast<std::ptrdiff_t>(pixel * channels_);
          samples.insert(samples.end(), first, first + static_cast<std::ptrdiff_t>(channels_));
        }
      }
      if (!samples.empty()) {
        const Bytes packed = Pack(samples);
        above.resize(packed.size());
        WriteFiltered(packed, above, image_.filter ? image_.filter(row) : std::uint8_t{0});
        above = packed;
        ++row;
      }
    }
  }

 private:
  [[nodiscard]] Bytes Pack(const std::vector<std::uint16_t>& samples) const {
    Bytes packed;
    unsigned byte = 0;
    unsigned bits = 0;
    for (const std::uint16_t sample : samples) {
      if (image_.bitDepth == 16) {
        packed.push_back(static_cast<std::uint8_t>(sample >> 8));
        packed.push_back(static_cast<std::uint8_t>(sample));
        continue;
      }
      byte = byte << image_.bitDepth | sample;
      bits += image_.bitDepth;
      if (bits == 8) {
        packed.push_back(static_cast<std::uint8_t>(byte));
        byte = bits = 0;
      }
    }
    if (bits > 0) {
      packed.push_back(static_cast<std::uint8_t>(byte << (8 - bits)));
    }
    return packed;
  }

  void WriteFiltered(const Bytes& row, const Bytes& above, std::uint8_t filter) {
    const std::size_t step = std::max<std::size_t>(1, channels_ * image_.bitDepth / 8);
    out_.push_back(filter);
    for (std::size_t i = 0; i < row.size(); ++i) {
      const int left = i < step ? 0 : row[i - step];
      const int up = above[i];
      const int corner = i < step ? 0 : above[i - step];
      out_.push_back(static_cast<std::uint8_t>(row[i] - Predicted(filter, left, up, corner)));
    }
  }

  static int Predicted(std::uint8_t filter, int left, int up, int corner) {
    const int estimate = left + up - corner;
    switch (filter) {
      case 1:
        return left;
      case 2:
        return up;
      case 3:
        return (left + up) / 2;
      case 4:
        if (std::abs(estimate - left) <= std::abs(estimate - up) &&
            std::abs(estimate - left) <= std::abs(estimate - corner)) {
          return left;
        }
        return std::abs(estimate - up) <= std::abs(estimate - corner) ? up : corner;
      default:
        return 0;
    }
  }

  const PngImage& image_;
  std::size_t channels_;
  Bytes& out_;
};

}  // namespace

int PngChannels(std::uint8_t colourType) {
  switch (colourType) {
    case 2:
      return 3;
    case 4:
      return 2;
    case 6:
      return 4;
    default:
      return 1;
  }
}

Bytes PngRawData(const PngImage& image) {
  const auto wanted = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height) *
                      static_cast<std::size_t>(PngChannels(image.colourType));
  if (image.samples.size() != wanted) {
    throw std::logic_error("the samples are not as many as the picture has");
  }
  Bytes raw;
  RowWriter writer(image, raw);
  if (!image.interlaced) {
    writer.WritePass([](std::int32_t, std::int32_t) { return true; });
  }
  for (int pass = 1; image.interlaced && pass <= 7; ++pass) {
    writer.WritePass([pass](std::int32_t x, std::int32_t y) { return PassOf(x, y) == pass; });
  }
  return raw;
}

Bytes BuildPng(const PngImage& image, const PngBuild& build) {
  std::vector<Bytes> chunks = {PngChunkOf(
      "IHDR", PngHeaderData(image.width, image.height, image.bitDepth, image.colourType, image.interlaced ? 1 : 0))};
  if (image.palette) {
    chunks.push_back(PngChunkOf("PLTE", *image.palette));
  }
  if (image.transparency) {
    chunks.push_back(PngChunkOf("tRNS", *image.transparency));
  }
  const Bytes data = ZlibStream(PngRawData(image), build.level);
  const std::size_t most = build.idatBytes == 0 ? data.size() : build.idatBytes;
  for (std::size_t from = 0; from < data.size(); from += most) {
    chunks.push_back(PngChunkOf("IDAT", ByteView(data).subspan(from, std::min(most, data.size() - from))));
  }
  chunks.push_back(PngChunkOf("IEND", {}));
  return PngFileOf(chunks);
}

Bytes PngSignature() {
  return {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
}

Bytes PngChunkOf(std::string_view type, ByteView data) {
  Bytes covered(type.begin(), type.end());
  Append(covered, data);
  return PngChunkWithCrc(type, data,
                         static_cast<std::uint32_t>(crc32(0, covered.data(), static_cast<uInt>(covered.size()))));
}

Bytes PngChunkWithCrc(std::string_view type, ByteView data, std::uint32_t crc) {
  Bytes chunk;
  AppendBigEndian32(chunk, static_cast<std::uint32_t>(data.size()));
  chunk.insert(chunk.end(), type.begin(), type.end());
  Append(chunk, data);
  AppendBigEndian32(chunk, crc);
  return chunk;
}

Bytes PngHeaderData(std::int32_t width, std::int32_t height, std::uint8_t bitDepth, std::uint8_t colourType,
                    std::uint8_t interlaceMethod) {
  Bytes data;
  AppendBigEndian32(data, static_cast<std::uint32_t>(width));
  AppendBigEndian32(data, static_cast<std::uint32_t>(height));
  Append(data, Bytes{bitDepth, colourType, 0, 0, interlaceMethod});
  return data;
}

Bytes ZlibStream(ByteView raw, int level) {
  uLongf size = compressBound(raw.size());
  Bytes stream(size);
  if (compress2(stream.data(), &size, raw.data(), raw.size(), level) != Z_OK) {
    throw std::runtime_error("compress2 failed");
  }
  stream.resize(size);
  return stream;
}

Bytes PngFileOf(const std::vector<Bytes>& chunks) {
  Bytes file = PngSignature();
  for (const Bytes& chunk : chunks) {
    Append(file, chunk);
  }
  return file;
}

Bytes PngFileOf(ByteView headerData, ByteView imageData) {
  return PngFileOf({PngChunkOf("IHDR", headerData), PngChunkOf("IDAT", imageData), PngChunkOf("IEND", {})});
}

}  // namespace kelvane::test
