#include "support/Deflate.h"
#include "support/RcoWriter.h"

namespace kelvane::test {

Bytes PackHead(const RcoDescription& description, const Bytes& plain, RcoLayout& layout) {
  const ByteView view(plain);
  const ByteView header = view.first(rco::kHeaderSize);
  const ByteView unpacked = view.subspan(rco::kHeaderSize, static_cast<std::size_t>(layout.headEnd - rco::kHeaderSize));
  const ByteView rest = view.subspan(static_cast<std::size_t>(layout.headEnd));

  Bytes block = DeflateWrapped(unpacked);
  if (description.options.padPackedBlock) {
    block.resize(static_cast<std::size_t>(RoundUpTo4(static_cast<std::int32_t>(block.size()))));
  }
  PackedHead packed;
  packed.packedLength = static_cast<std::int32_t>(block.size());
  packed.unpackedLength = static_cast<std::int32_t>(unpacked.size());
  packed.dataShift = rco::kPackedBlockAt + packed.packedLength - layout.headEnd;
  layout.packed = packed;

  Bytes bytes(header.begin(), header.end());
  WriteI32(bytes, rco::hdrVersion, rco::kVersionDeflated);
  WriteI32(bytes, rco::hdrHeadCompression, rco::kCompressionZlib);
  for (const std::int32_t field : {rco::hdrImageData, rco::hdrVagData, rco::hdrGmoData}) {
    if (ReadI32(bytes, field) > 0) {
      WriteI32(bytes, field, ReadI32(bytes, field) + packed.dataShift);
    }
  }
  for (const auto& [offset, value] : description.options.headerLongs) {
    WriteI32(bytes, offset, value);
  }
  bytes.resize(rco::kPackedBlockAt);
  WriteI32(bytes, rco::kPackedLengthAt, packed.packedLength);
  WriteI32(bytes, rco::kUnpackedLengthAt, packed.unpackedLength);
  Append(bytes, block);
  Append(bytes, rest);
  return bytes;
}

}  // namespace kelvane::test
