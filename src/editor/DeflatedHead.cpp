#include "editor/DeflatedHead.h"

#include <utility>

#include "common/Bytes.h"
#include "common/Files.h"
#include "common/Int16.h"
#include "container/FileBracket.h"
#include "container/RcoFormat.h"
#include "resources/Codec.h"

namespace kelvane {

namespace {

// How far the data areas move: the block grows by U - C and loses the 12 bytes of fields in front of it. The remainder
// takes the sign of D, so that a negative D moves up to 4 bytes towards zero or past it.
std::int32_t ShiftOf(std::int32_t packedLength, std::int32_t unpackedLength) {
  const std::int32_t shift = CheckedInt32(std::int64_t{unpackedLength} - packedLength - rco::kPackedFieldsSize);
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

// Two temporary files, deleted on every way out.
struct TemporaryFiles {
  std::filesystem::path packed;
  std::filesystem::path unpacked;

  explicit TemporaryFiles(const Mod& mod)
      : packed(mod.TempPath("temphead.dat")), unpacked(mod.TempPath("tempheadinf.dat")) {}
  TemporaryFiles(const TemporaryFiles&) = delete;
  TemporaryFiles& operator=(const TemporaryFiles&) = delete;
  ~TemporaryFiles() {
    DeleteFileQuietly(packed);
    DeleteFileQuietly(unpacked);
  }
};

}  // namespace

bool ConvertDeflatedHeader(RcoFile& file, const Mod& mod, Prompts& prompts) {
  const std::int32_t packedLength = file.ReadI32At(rco::kPackedLengthAt);
  const std::int32_t unpackedLength = file.ReadI32At(rco::kUnpackedLengthAt);
  const std::int32_t shift = ShiftOf(packedLength, unpackedLength);

  file.Seek(rco::kPackedBlockAt);
  Bytes head = file.ReadBytes(packedLength);
  Bytes fileTail = AllocateBytes(file.Length() - rco::kPackedBlockAt - packedLength);
  const Bytes headBlock = PlainHeader(file, shift);
  file.Seek(std::int64_t{rco::kPackedBlockAt} + packedLength);
  file.Read(fileTail);

  const std::filesystem::path path = file.Path();
  file.Close();
  if (!FileExists(BackupPath(path))) {
    CopyDurably(path, BackupPath(path));
  }

  {
    const TemporaryFiles temporary(mod);
    WriteWholeFile(temporary.packed, head);
    if (!DecompressFile(temporary.packed, temporary.unpacked)) {
      DeleteFile(path);
      Tell(prompts, "解压失败", Icon::Critical);
      return false;
    }
    head = ReadWholeFile(temporary.unpacked);
  }

  // A result that is too long is cut and a short one filled with zeros, so that the tail starts where the header says.
  const std::int64_t headLength = std::int64_t{packedLength} + shift + rco::kPackedFieldsSize;
  Bytes plain = headBlock;
  RequireArraySize(headLength);
  head.resize(static_cast<std::size_t>(headLength));
  Append(plain, head);
  Append(plain, fileTail);
  file.Open(path);
  file.Assign(std::move(plain));
  file.Flush();
  return true;
}

}  // namespace kelvane
