// A baseline JPEG writer that goes the plain way everywhere: the transform by its definition, and codes of one length.
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "samples/ByteWriter.h"
#include "samples/ImageFiles.h"

namespace kelvane::sample {

namespace {

constexpr int kSide = 8;
constexpr int kBlock = 64;
constexpr int kComponents = 3;
constexpr int kDcSymbols = 12;  // 0 to 11 bits of difference, in codes of 4 bits
constexpr int kDcBits = 4;
constexpr int kAcBits = 8;

using Block = std::array<float, kBlock>;

// The place of each coefficient in the order in which they are written: up and down along the diagonals.
std::array<int, kBlock> ZigZag() {
  std::array<int, kBlock> order{};
  std::size_t next = 0;
  for (int diagonal = 0; diagonal < 2 * kSide - 1; ++diagonal) {
    for (int step = 0; step <= diagonal; ++step) {
      const int y = diagonal % 2 == 0 ? diagonal - step : step;
      const int x = diagonal - y;
      if (x < kSide && y < kSide) {
        order.at(next++) = y * kSide + x;
      }
    }
  }
  return order;
}

// Coarser for finer detail.
std::uint8_t Quantiser(int coefficient) {
  return static_cast<std::uint8_t>(2 + coefficient / kSide + coefficient % kSide);
}

// AC symbols: runs of 0 to 15 zeros with 1 to 10 bits, the end of a block (00) and 16 zeros (F0).
std::vector<std::uint8_t> AcSymbols() {
  std::vector<std::uint8_t> symbols = {0x00, 0xF0};
  for (int run = 0; run < 16; ++run) {
    for (int bits = 1; bits <= 10; ++bits) {
      symbols.push_back(static_cast<std::uint8_t>(run << 4 | bits));
    }
  }
  return symbols;
}

class JpegWriter {
 public:
  JpegWriter(ByteView rgba, int width, int height) : rgba_(rgba), width_(width), height_(height) {
    acCodes_.fill(0);
    const std::vector<std::uint8_t> symbols = AcSymbols();
    for (std::size_t i = 0; i < symbols.size(); ++i) {
      acCodes_.at(symbols[i]) = static_cast<std::uint32_t>(i);
    }
  }

  Bytes Write() {
    WriteHeaders();
    std::array<int, kComponents> lastDc{};
    for (int y = 0; y < height_; y += kSide) {
      for (int x = 0; x < width_; x += kSide) {
        for (std::size_t component = 0; component < kComponents; ++component) {
          WriteBlock(Transformed(ReadBlock(x, y, component)), lastDc.at(component));
        }
      }
    }
    while (pendingBits_ != 0) {
      AddBits(1, 1);
    }
    AddBig(bytes_, 0xFFD9, 2);
    return std::move(bytes_);
  }

 private:
  void AddSegment(std::uint32_t marker, const Bytes& content) {
    AddBig(bytes_, marker, 2);
    AddBig(bytes_, static_cast<std::uint32_t>(content.size()) + 2, 2);
    Append(bytes_, content);
  }

  void WriteHeaders() {
    AddBig(bytes_, 0xFFD8, 2);
    AddSegment(0xFFE0, {'J', 'F', 'I', 'F', 0, 1, 1, 0, 0, 1, 0, 1, 0, 0});
    Bytes quantisers = {0};
    for (const int place : zigZag_) {
      quantisers.push_back(Quantiser(place));
    }
    AddSegment(0xFFDB, quantisers);
    Bytes frame = {8};
    AddBig(frame, static_cast<std::uint32_t>(height_), 2);
    AddBig(frame, static_cast<std::uint32_t>(width_), 2);
    frame.insert(frame.end(), {kComponents, 1, 0x11, 0, 2, 0x11, 0, 3, 0x11, 0});
    AddSegment(0xFFC0, frame);

    Bytes dcCodes = {0x00, 0, 0, 0, kDcSymbols};
    dcCodes.resize(17);
    for (int symbol = 0; symbol < kDcSymbols; ++symbol) {
      dcCodes.push_back(static_cast<std::uint8_t>(symbol));
    }
    AddSegment(0xFFC4, dcCodes);
    const std::vector<std::uint8_t> symbols = AcSymbols();
    Bytes acCodes(17);
    acCodes[0] = 0x10;
    acCodes[kAcBits] = static_cast<std::uint8_t>(symbols.size());
    Append(acCodes, symbols);
    AddSegment(0xFFC4, acCodes);
    AddSegment(0xFFDA, {kComponents, 1, 0, 2, 0, 3, 0, 0, 63, 0});
  }

  // 8 by 8 values of a component (lightness, blue and red difference) around 0; the picture's edge goes on for ever.
  [[nodiscard]] Block ReadBlock(int left, int top, std::size_t component) const {
    static constexpr std::array<std::array<float, 3>, kComponents> kWeights = {
        {{0.299F, 0.587F, 0.114F}, {-0.168736F, -0.331264F, 0.5F}, {0.5F, -0.418688F, -0.081312F}}};
    Block block{};
    for (int i = 0; i < kBlock; ++i) {
      const int x = std::min(left + i % kSide, width_ - 1);
      const int y = std::min(top + i / kSide, height_ - 1);
      const std::size_t at =
          (static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)) * 4;
      float value = component == 0 ? -128.0F : 0.0F;
      for (std::size_t channel = 0; channel < 3; ++channel) {
        value += kWeights.at(component).at(channel) * static_cast<float>(rgba_[at + channel]);
      }
      block.at(static_cast<std::size_t>(i)) = value;
    }
    return block;
  }

  [[nodiscard]] Block Transformed(const Block& block) const {
    Block result{};
    for (std::size_t v = 0; v < kSide; ++v) {
      for (std::size_t u = 0; u < kSide; ++u) {
        float sum = 0;
        for (std::size_t i = 0; i < kBlock; ++i) {
          sum += block.at(i) * cosines_.at(u * kSide + i % kSide) * cosines_.at(v * kSide + i / kSide);
        }
        result.at(v * kSide + u) = sum;
      }
    }
    return result;
  }

  // Row u: the u-th wave at the 8 places, scaled so that the transform keeps lengths.
  static std::array<float, kBlock> Cosines() {
    std::array<float, kBlock> cosines{};
    for (std::size_t u = 0; u < kSide; ++u) {
      for (std::size_t x = 0; x < kSide; ++x) {
        const float scale = u == 0 ? std::sqrt(0.125F) : 0.5F;
        const float angle = static_cast<float>((2 * x + 1) * u) * std::numbers::pi_v<float> / 16;
        cosines.at(u * kSide + x) = scale * std::cos(angle);
      }
    }
    return cosines;
  }

  void AddBits(std::uint32_t value, int bits) {
    for (int bit = bits - 1; bit >= 0; --bit) {
      pending_ = static_cast<std::uint8_t>(2U * pending_ + (value >> static_cast<unsigned>(bit) & 1U));
      if (++pendingBits_ == 8) {
        bytes_.push_back(pending_);
        if (pending_ == 0xFF) {
          bytes_.push_back(0);  // a data byte FF is told from a marker by a zero behind it
        }
        pendingBits_ = 0;
        pending_ = 0;
      }
    }
  }

  static int BitLength(int value) {
    int bits = 0;
    for (int rest = std::abs(value); rest > 0; rest >>= 1) {
      ++bits;
    }
    return bits;
  }

  // A negative value is written as one less, without its sign.
  void AddValue(int value, int bits) {
    const int written = value < 0 ? value - 1 : value;
    AddBits(static_cast<std::uint32_t>(written), bits);
  }

  void WriteBlock(const Block& coefficients, int& lastDc) {
    std::array<int, kBlock> values{};
    for (std::size_t i = 0; i < kBlock; ++i) {
      const int place = zigZag_.at(i);
      values.at(i) = static_cast<int>(
          std::lround(coefficients.at(static_cast<std::size_t>(place)) / static_cast<float>(Quantiser(place))));
    }
    const int difference = values[0] - lastDc;
    lastDc = values[0];
    AddBits(static_cast<std::uint32_t>(BitLength(difference)), kDcBits);
    AddValue(difference, BitLength(difference));

    std::uint32_t run = 0;
    for (std::size_t i = 1; i < kBlock; ++i) {
      const int value = values.at(i);
      if (value == 0) {
        ++run;
        continue;
      }
      for (; run >= 16; run -= 16) {
        AddBits(acCodes_[0xF0], kAcBits);
      }
      const int bits = BitLength(value);
      AddBits(acCodes_.at(run << 4 | static_cast<std::uint32_t>(bits)), kAcBits);
      AddValue(value, bits);
      run = 0;
    }
    if (run > 0) {
      AddBits(acCodes_[0x00], kAcBits);
    }
  }

  ByteView rgba_;
  int width_;
  int height_;
  Bytes bytes_;
  std::array<int, kBlock> zigZag_ = ZigZag();
  std::array<float, kBlock> cosines_ = Cosines();
  std::array<std::uint32_t, 256> acCodes_{};
  std::uint8_t pending_ = 0;
  int pendingBits_ = 0;
};

}  // namespace

Bytes Jpeg(ByteView rgba, int width, int height) {
  return JpegWriter(rgba, width, height).Write();
}

}  // namespace kelvane::sample
