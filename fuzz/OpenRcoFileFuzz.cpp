// Any file is opened: the opening ends, what it scanned of the general tables is what the file holds, and the file is
// left as it was, or converted to the plain form as its lengths say, or gone with a backup that holds it. No temporary
// file stays.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <zlib.h>

#include "FuzzFile.h"
#include "FuzzTarget.h"
#include "common/Files.h"
#include "container/GenScan.h"
#include "container/RcoFormat.h"
#include "editor/Editor.h"
#include "support/PlainPorts.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using fuzz::Require;

// The number at an offset of a file; what lies beyond its end is zero.
std::int32_t LongAt(const Bytes& file, std::int64_t offset) {
  std::array<std::uint8_t, 4> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const std::int64_t at = offset + static_cast<std::int64_t>(i);
    bytes[i] = at < static_cast<std::int64_t>(file.size()) ? file[static_cast<std::size_t>(at)] : std::uint8_t{0};
  }
  return ReadI32(bytes, 0);
}

std::int16_t ShortAt(const Bytes& file, std::int64_t offset) {
  return static_cast<std::int16_t>(LongAt(file, offset));
}

// The folder of the file and the program's, for as long as the fuzzer runs.
struct Folders {
  Folders() { fs::create_directory(program); }
  const test::TempFolder folder;
  const fs::path program = folder / "program";
  const fs::path file = folder / "f.rco";
  const fs::path backup = folder / "f.rco.bak";
};

// Texts have a target of their own, and counts that lie make them slow: so the input says that it has none.
Bytes WithoutTexts(ByteView content) {
  Bytes input(content.begin(), content.end());
  if (input.size() >= rco::kHeaderSize) {
    WriteI32(input, rco::hdrTextDataLength, 0);
  }
  return input;
}

// One input, opened; its last byte says whether a run-time failure is answered with Yes.
struct Opened {
  Opened(const Folders& folders, ByteView content)
      : input(WithoutTexts(content)),
        prompts([this](const Message& message) { return AnswerTo(message); }),
        editor(folders.program, {.prompts = prompts, .watch = watch, .progress = progress}) {
    WriteWholeFile(folders.file, input);
    DeleteFileIfThere(folders.backup);
    editor.OpenRcoFile(folders.file);
  }

  Answer AnswerTo(const Message& message) {
    failed = failed || message.icon == Icon::Critical;
    const bool failure = message.text.starts_with("发生了未知错误！");
    return failure && !goesOn ? Answer::No : message.buttons == Buttons::YesNo ? Answer::Yes : Answer::Ok;
  }

  Bytes input;
  bool goesOn = !input.empty() && input.back() % 2 != 0;
  bool failed = false;
  test::AnsweringPrompts prompts;
  test::IdleWatch watch;
  test::IdleProgress progress;
  Editor editor;
};

// The unpacked block of a deflated head, where its stream is whole.
bool Unpacked(const Bytes& deflated, std::int32_t packedLength, Bytes& block) {
  z_stream stream{};
  Require(inflateInit2(&stream, -15) == Z_OK, "zlib starts");
  Bytes packed(deflated.begin() + rco::kPackedBlockAt + 2, deflated.begin() + rco::kPackedBlockAt + packedLength);
  stream.next_in = packed.data();
  stream.avail_in = static_cast<uInt>(packed.size());
  stream.next_out = block.data();
  stream.avail_out = static_cast<uInt>(block.size());
  const int status = inflate(&stream, Z_FINISH);
  inflateEnd(&stream);
  return status == Z_STREAM_END;
}

void CheckConverted(const Bytes& deflated, const Bytes& plain) {
  const std::int32_t packedLength = LongAt(deflated, rco::kPackedLengthAt);
  std::int32_t shift = LongAt(deflated, rco::kUnpackedLengthAt) - packedLength - 12;
  if (shift % 4 != 0) {
    shift += 4 - shift % 4;
  }
  Bytes header(deflated.begin(), deflated.begin() + rco::kHeaderSize);
  WriteI32(header, 4, 113);
  WriteI32(header, 12, 0);
  for (const int area : {128, 136, 144}) {
    const std::int32_t offset = LongAt(deflated, area);
    WriteI32(header, area, offset < 0 ? offset : offset + shift);
  }
  const std::ptrdiff_t headEnd = rco::kHeaderSize + packedLength + shift + 12;
  const std::ptrdiff_t tailAt = rco::kPackedBlockAt + packedLength;
  Require(std::ssize(plain) == headEnd + std::ssize(deflated) - tailAt, "the plain file is as long as told");
  Require(std::equal(header.begin(), header.end(), plain.begin()), "the header is that of the plain form");
  Require(std::equal(deflated.begin() + tailAt, deflated.end(), plain.begin() + headEnd), "the rest is kept");

  const Bytes block(plain.begin() + rco::kHeaderSize, plain.begin() + headEnd);
  Bytes expected(block.size());
  if (deflated[rco::kPackedBlockAt + 1] != 'I' && deflated[rco::kPackedBlockAt + 1] != 'M' &&
      Unpacked(deflated, packedLength, expected)) {
    Require(block == expected, "the block is what zlib makes of it");
  }
}

// What stands under the file's name afterwards; empty where it is gone.
Bytes CheckFiles(const Folders& folders, const Opened& opened) {
  Require(fs::is_empty(folders.program), "no temporary file stays");
  const bool deflated = LongAt(opened.input, 0) == rco::kMagic && LongAt(opened.input, 4) == rco::kVersionDeflated;
  const bool hasBackup = FileExists(folders.backup);
  Require(deflated || !hasBackup, "opening a plain file makes no backup");
  Require(!hasBackup || ReadWholeFile(folders.backup) == opened.input, "the backup is the file as it was");
  if (!FileExists(folders.file)) {
    Require(hasBackup && opened.failed, "a file is gone only where that was told and a backup holds it");
    return {};
  }
  Bytes content = ReadWholeFile(folders.file);
  if (content != opened.input) {
    Require(deflated && hasBackup, "no other file is changed");
    CheckConverted(opened.input, content);
  }
  return content;
}

void CheckRecord(const Bytes& file, const GenRsc& record) {
  const std::int64_t entry = std::int64_t{record.entryPos} - 4;
  Require(record.labelOffset == LongAt(file, entry + 4), "the label is the entry's");
  Require(record.rscFormat.Int() == ShortAt(file, entry + 40), "the format is the entry's");
  Require(record.rscCompression.Int() == ShortAt(file, entry + 42), "the compression is the entry's");
  Require(record.dataSize == LongAt(file, entry + 44), "the size is the entry's");
  Require(record.dataOffset == LongAt(file, entry + 48), "the offset is the entry's");
  const bool isLong = LongAt(file, entry + 20) >= 53;
  Require(record.unpackedSize == (isLong ? LongAt(file, entry + 52) : -1), "the unpacked size is the entry's");
}

// The records of a scan that no failure ended.
void CheckGeneral(const Bytes& file, const RcoDocument& document) {
  constexpr std::array<std::int32_t, 3> kRootsByKind = {36, 28, 32};
  int lines = 0;
  const GenRsc* before = nullptr;
  for (const GenRsc& record : document.genRsc) {
    const int kind = record.rscKind.Int();
    Require(kind >= 1 && kind <= 3 && (before == nullptr || kind >= before->rscKind.Int()), "the kinds come in order");
    const bool first = before == nullptr || before->rscKind != record.rscKind;
    const std::int64_t place = first ? std::int64_t{LongAt(file, kRootsByKind[static_cast<std::size_t>(kind - 1)])} + 44
                                     : std::int64_t{before->entryPos} + LongAt(file, before->entryPos + 16LL);
    Require(record.entryPos == place, "an entry stands where the one before it says");
    CheckRecord(file, record);
    lines += kind != 1 || (record.rscFormat.Int() >= 0 && record.rscFormat.Int() <= 5) ? 1 : 0;
    before = &record;
  }
  Require(document.lst.Count() == lines, "every resource of a known kind has a line");
  Require(document.genRsc.empty() || document.genRsc.size() == document.genCount.Index(), "the count is the records'");
  for (int i = 0; i < static_cast<int>(document.genRsc.size()); ++i) {
    fuzz::Succeeds([&] { static_cast<void>(GetGenDataPos(document, i)); });
  }
}

// Whether the input is a deflated head that promises so much that unpacking it fills memory and disk with zeros.
bool PromisesMuch(const Bytes& input) {
  constexpr std::int32_t kMuch = 1 << 20;
  return LongAt(input, rco::hdrVersion) == rco::kVersionDeflated && LongAt(input, rco::kUnpackedLengthAt) > kMuch;
}

void Run(ByteView input) {
  if (PromisesMuch(Bytes(input.begin(), input.end()))) {
    return;
  }
  static const Folders folders;
  Opened opened(folders, input);
  const Bytes file = CheckFiles(folders, opened);
  const RcoDocument& document = opened.editor.Document();
  Require(document.lst.Count() <= 32767, "rows are 16-bit numbers");
  if (!opened.failed && !opened.editor.State().cCurFile.empty()) {
    CheckGeneral(file, document);
  }
  opened.editor.OpenRcoFile({});
  Require(document.genRsc.empty() && document.lst.Count() == 0, "a closed document holds no resource");
}

}  // namespace
}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kelvane::Run({data, size});
  return 0;
}
