#include "gim/BmpHeader.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "common/Files.h"
#include "common/Int16.h"

namespace kelvane {

namespace {

struct LongField {
  std::int32_t offset;
  std::int32_t BitmapHeader::*member;
};
struct WordField {
  std::int32_t offset;
  std::int16_t BitmapHeader::*member;
};

constexpr std::array<LongField, 12> kLongFields = {{
    {2, &BitmapHeader::bfSize},
    {6, &BitmapHeader::bfReserved},
    {10, &BitmapHeader::bfOffBits},
    {14, &BitmapHeader::biSize},
    {18, &BitmapHeader::biWidth},
    {22, &BitmapHeader::biHeight},
    {30, &BitmapHeader::biCompression},
    {34, &BitmapHeader::biSizeImage},
    {38, &BitmapHeader::biXPelsPerMeter},
    {42, &BitmapHeader::biYPelsPerMeter},
    {46, &BitmapHeader::biClrUsed},
    {50, &BitmapHeader::biClrImportant},
}};
constexpr std::array<WordField, 3> kWordFields = {{
    {0, &BitmapHeader::bfType},
    {26, &BitmapHeader::biPlanes},
    {28, &BitmapHeader::biBitCount},
}};

using HeaderBytes = std::array<std::uint8_t, kBitmapHeaderSize>;

}  // namespace

BitmapHeader ReadBitmapHeader(ByteView bmp) {
  HeaderBytes bytes{};
  std::copy_n(bmp.begin(), std::min(bmp.size(), bytes.size()), bytes.begin());
  BitmapHeader header;
  for (const LongField& field : kLongFields) {
    header.*field.member = ReadI32(bytes, field.offset);
  }
  for (const WordField& field : kWordFields) {
    header.*field.member = ReadI16(bytes, field.offset);
  }
  return header;
}

BitmapHeader ReadBitmapHeader(const std::filesystem::path& path) {
  return ReadBitmapHeader(ReadFileStart(path, kBitmapHeaderSize));
}

void AppendBitmapHeader(Bytes& bytes, const BitmapHeader& header) {
  HeaderBytes head{};
  for (const LongField& field : kLongFields) {
    WriteI32(head, field.offset, header.*field.member);
  }
  for (const WordField& field : kWordFields) {
    WriteI16(head, field.offset, header.*field.member);
  }
  Append(bytes, head);
}

std::int32_t BitmapRowBytes(std::int32_t bits, std::int32_t width) {
  return RoundUpTo4(RoundToInt32(bits / 8.0 * width));
}

}  // namespace kelvane
