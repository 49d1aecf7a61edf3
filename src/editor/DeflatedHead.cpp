#include "editor/DeflatedHead.h"

#include <algorithm>
#include <utility>

#include "common/Bytes.h"
#include "common/Files.h"
#include "common/Int16.h"
#include "common/TempFiles.h"
#include "container/FileBracket.h"
#include "container/RcoFormat.h"
#include "resources/Codec.h"

namespace kelvane {

namespace {

// How far the data areas move: the block grows by U - C and loses the 12 bytes of fields in front of it. The remainder
// takes the sign of D, so that a negative D moves up to 4 bytes towards zero or past it.
std::int32_t ShiftOf(std::int32_t packedLength, std::int32_t unpackedLength) {
  const std::int32_t growth = CheckedInt32(std::int64_t{unpackedLength} - packedLength);
  const std::int32_t shift = AddInt32(growth, -rco::kPackedFieldsSize);
  return shift % rco::kAlignment == 0 ? shift : AddInt32(shift, rco::kAlignment - shift % rco::kAlignment);
}

// The header of the plain file: version 113, no compression, the data areas moved by `shift`.
Bytes PlainHeader(RcoFile& file, std::int32_t shift) {
  file.Seek(0);
  Bytes header = file.ReadBytes(rco::kHeaderSize);
  WriteI32(header, rco::hdrVersion, rco::kVersionPlain);
  WriteI32(header, rco::hdrHeadCompression, 0);
  for (const std::int32_t area : {rco::hdrImageData, rco::hdrVagData, rco::hdrGmoData}) {
    const std::int32_t offset = ReadI32(header, area);
    if (offset > -1) {
      WriteI32(header, area, AddInt32(offset, shift));
    }
  }
  return header;
}

// How many bytes the unpacked block takes in the plain file, so that the tail starts where the header says.
std::int32_t HeadLength(std::int32_t packedLength, std::int32_t shift) {
  const std::int32_t length = AddInt32(AddInt32(packedLength, shift), rco::kPackedFieldsSize);
  RequireArraySize(length);
  return length;
}

// The first `length` bytes of the unpacked block, fewer where it is shorter. A small block may unpack to gigabytes:
// what is cut off isn't read.
Bytes ReadHead(const std::filesystem::path& unpacked, std::int32_t length) {
  return ReadFileStart(unpacked, static_cast<std::size_t>(std::min<std::int64_t>(length, FileLength(unpacked))));
}

// The plain file. A head that is too short is filled with zeros.
Bytes PlainFile(const Bytes& headBlock, const Bytes& head, std::int32_t headLength, const Bytes& fileTail) {
  const std::size_t headEnd = headBlock.size() + static_cast<std::size_t>(headLength);
  Bytes plain;
  plain.reserve(headEnd + fileTail.size());
  Append(plain, headBlock);
  Append(plain, head);
  plain.resize(headEnd);
  Append(plain, fileTail);
  return plain;
}

}  // namespace

bool ConvertDeflatedHeader(RcoFile& file, const Mod& mod, Prompts& prompts) {
  const std::int32_t packedLength = file.ReadI32At(rco::kPackedLengthAt);
  const std::int32_t unpackedLength = file.ReadI32At(rco::kUnpackedLengthAt);
  const std::int32_t shift = ShiftOf(packedLength, unpackedLength);

  // Both sizes are tried before any memory is spent on a length that the file doesn't hold.
  const std::int64_t tailLength = file.Length() - rco::kPackedBlockAt - packedLength;
  RequireArraySize(packedLength);
  RequireArraySize(tailLength);
  file.Seek(rco::kPackedBlockAt);
  const Bytes packedHead = file.ReadBytes(packedLength);
  Bytes fileTail = AllocateBytes(tailLength);
  const Bytes headBlock = PlainHeader(file, shift);
  file.Seek(std::int64_t{rco::kPackedBlockAt} + packedLength);
  file.Read(fileTail);

  const std::filesystem::path path = file.Path();
  file.Close();
  MakeBackup(path);

  Bytes plain;
  {
    const std::filesystem::path packed = mod.TempPath("temphead.dat");
    const std::filesystem::path unpacked = mod.TempPath("tempheadinf.dat");
    const TempFiles temps({packed, unpacked});
    WriteWholeFile(packed, packedHead);
    if (!DecompressFile(packed, unpacked)) {
      DeleteFile(path);
      Tell(prompts, "解压失败", Icon::Critical);
      return false;
    }
    const std::int32_t headLength = HeadLength(packedLength, shift);
    plain = PlainFile(headBlock, ReadHead(unpacked, headLength), headLength, fileTail);
  }
  file.Open(path);
  file.Assign(std::move(plain));
  file.Flush();
  return true;
}

}  // namespace kelvane
