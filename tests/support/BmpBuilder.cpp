#include "support/BmpBuilder.h"

namespace kelvane::test {

Bytes BuildBmp(const BmpSpec& spec) {
  Bytes header(spec.coreHeader ? 12 : 40);
  if (spec.coreHeader) {
    WriteU16(header, 4, static_cast<std::uint16_t>(spec.width));
    WriteU16(header, 6, static_cast<std::uint16_t>(spec.height));
    WriteU16(header, 8, 1);
    WriteU16(header, 10, spec.bitCount);
  } else {
    WriteI32(header, 4, spec.width);
    WriteI32(header, 8, spec.height);
    WriteU16(header, 12, 1);
    WriteU16(header, 14, spec.bitCount);
    WriteI32(header, 16, spec.compression);
    WriteI32(header, 20, static_cast<std::int32_t>(spec.bits.size()));
    Append(header, spec.moreHeader);
  }
  WriteI32(header, 0, static_cast<std::int32_t>(header.size()));

  Bytes file(14);
  const auto bitsOffset = static_cast<std::int32_t>(file.size() + header.size() + spec.palette.size());
  WriteU16(file, 0, spec.signature);
  WriteI32(file, 2, bitsOffset + static_cast<std::int32_t>(spec.bits.size()));
  WriteI32(file, 10, spec.bitsOffset.value_or(bitsOffset));
  Append(file, header);
  Append(file, spec.palette);
  Append(file, spec.bits);
  return file;
}

}  // namespace kelvane::test
