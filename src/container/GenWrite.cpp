#include "container/GenWrite.h"

#include <algorithm>
#include <utility>

#include "common/Bytes.h"
#include "common/Files.h"
#include "container/FileBracket.h"
#include "container/GenScan.h"
#include "container/RcoFormat.h"

namespace kelvane {

namespace {

using rco::FromEntryPos;

// The highest low byte of entryNext that tells a short entry.
constexpr std::uint8_t kLongestShortEntry = 64;

bool IsVag(const GenRsc& record) {
  return record.rscKind == Int16(rco::kKindVag);
}

bool HasUnpackedSize(const GenRsc& record) {
  return !IsVag(record) && record.unpackedSize != -1;
}

// Images stored as GIM and models: what is stored compressed.
bool IsGimOrGmo(const GenRsc& record) {
  return (record.rscKind == Int16(rco::kKindImage) && record.rscFormat == Int16(rco::kFormatGim)) ||
         record.rscKind == Int16(rco::kKindGmo);
}

std::int64_t Field(const GenRsc& record, std::int32_t entryOffset) {
  return std::int64_t{record.entryPos} + FromEntryPos(entryOffset);
}

std::int32_t PaddingOf(std::int32_t length) {
  return RoundUpTo4(length) - length;
}

// The change in padded length from `oldSize` to `newSize` bytes.
std::int32_t PaddedDelta(std::int32_t oldSize, std::int32_t newSize) {
  const std::int32_t delta = CheckedInt32(std::int64_t{newSize} + PaddingOf(newSize) - oldSize);
  return oldSize % rco::kAlignment == 0 ? delta : AddInt32(delta, -(rco::kAlignment - oldSize % rco::kAlignment));
}

// The channel fields of a long entry; a short one has no room for them.
void WriteVagFields(FileHead& head, const Mod& mod, const GenRsc& record) {
  head.WriteI16(Field(record, rco::bodyChannels), mod.vagChannels.Value());
  head.WriteI32(Field(record, rco::bodyChannel1Size), mod.vagSize1);
  head.WriteI32(Field(record, rco::bodyChannel1Offset), record.dataOffset);
  if (mod.vagChannels > Int16(1)) {
    head.WriteI32(Field(record, rco::bodyChannel2Size), mod.vagSize2);
    head.WriteI32(Field(record, rco::bodyChannel2Offset), AddInt32(record.dataOffset, RoundUpTo4(mod.vagSize1)));
  } else {
    head.WriteI32(Field(record, rco::bodyChannel2Size), 0);
  }
}

// What stands from `tailPos` up to `pos`: with a negative size the tail begins in front of the data, and what lies
// between will stand twice, the second time as it was before any patch.
Bytes ReadTwiceStanding(RcoFile& file, std::int64_t pos, std::int64_t tailPos) {
  const std::int64_t end = std::min(pos, file.Length());
  if (tailPos >= end) {
    return {};
  }
  file.Seek(tailPos);
  return file.ReadBytes(end - tailPos);
}

// Puts `data` and its padding, then `twice`, between the first `pos` bytes and what begins at `tailPos` behind them.
void SpliceData(RcoFile& file, std::int64_t pos, std::int64_t tailPos, Bytes data, const Bytes& twice) {
  data.resize(data.size() + static_cast<std::size_t>(PaddingOf(static_cast<std::int32_t>(data.size()))));
  Append(data, twice);
  const std::int64_t length = file.Length();
  const std::int64_t behind = tailPos < length ? std::max(tailPos, pos) : std::max(length, pos);
  file.Splice(pos, behind - pos, data);
}

// Whether the entry holds the fields of its record, `hasUnpackedSize` telling of the last one. A look at all of them at
// once: of a file's many records most are as they were.
bool HoldsFields(const FileHead& head, const GenRsc& record, bool hasUnpackedSize) {
  constexpr std::int32_t kSize = FromEntryPos(rco::bodyDataSize);
  constexpr std::int32_t kOffset = FromEntryPos(rco::bodyDataOffset);
  constexpr std::int32_t kUnpackedSize = FromEntryPos(rco::bodyUnpackedSize);
  const ByteView fields = head.Look(record.entryPos, (hasUnpackedSize ? kUnpackedSize : kOffset) + 4);
  return !fields.empty() && ReadI32(fields, 0) == record.labelOffset && ReadI32(fields, kSize) == record.dataSize &&
         ReadI32(fields, kOffset) == record.dataOffset &&
         (!hasUnpackedSize || ReadI32(fields, kUnpackedSize) == record.unpackedSize);
}

}  // namespace

void AddToFileLong(RcoFile& file, std::int64_t position, std::int32_t delta, bool onlyIfValid) {
  const std::int32_t value = file.ReadI32At(position);
  if (!onlyIfValid || (value != 0 && value != -1)) {
    file.WriteI32At(position, AddInt32(value, delta));
  }
}

void WriteFileSlice(RcoFile& file, ByteView bytes, std::int64_t from, std::int64_t to) {
  RequireArraySize(to - from);
  if (from < 0 || to > static_cast<std::int64_t>(bytes.size())) {
    throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
  }
  file.Write(bytes.subspan(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from)));
}

void WriteGenRscFields(FileHead& head, const RcoDocument& document) {
  for (Int16 i = 0; i < document.genCount; ++i) {
    const GenRsc& record = At(document.genRsc, i.Int());
    const bool hasUnpackedSize = HasUnpackedSize(record);
    if (HoldsFields(head, record, hasUnpackedSize)) {
      continue;
    }
    head.WriteI32(record.entryPos, record.labelOffset);
    head.WriteI32(Field(record, rco::bodyDataSize), record.dataSize);
    head.WriteI32(Field(record, rco::bodyDataOffset), record.dataOffset);
    if (hasUnpackedSize) {
      head.WriteI32(Field(record, rco::bodyUnpackedSize), record.unpackedSize);
    }
  }
}

bool IsLongEntry(const FileHead& head, const GenRsc& record) {
  const std::uint8_t lowByte = head.ReadU8(Field(record, rco::entryNext));
  return lowByte > kLongestShortEntry || lowByte == 0;
}

void ApplyDataDelta(std::int32_t delta, Int16 index, FileHead& head, RcoDocument& document) {
  const GenRsc& changed = At(document.genRsc, index.Int());
  const auto forLaterOfKind = [&](auto&& action) {
    for (Int16 i = index + 1; i < document.genCount; ++i) {
      GenRsc& record = At(document.genRsc, i.Int());
      if (record.rscKind != changed.rscKind) {
        break;
      }
      action(record);
    }
  };

  forLaterOfKind([delta](GenRsc& record) { record.dataOffset = AddInt32(record.dataOffset, delta); });
  WriteGenRscFields(head, document);

  if (IsVag(changed) && IsLongEntry(head, changed)) {
    // The channels' offsets, which the records don't hold.
    forLaterOfKind([&](const GenRsc& record) {
      head.AddI32(Field(record, rco::bodyChannel1Offset), delta);
      if (head.ReadU8(Field(record, rco::bodyChannels)) == 2) {
        head.AddI32(Field(record, rco::bodyChannel2Offset), delta);
      }
    });
  }

  std::int32_t& areaLength = At(document.dataAreas, std::int64_t{changed.rscKind.Int() - 1} * 2 + 1);
  areaLength = AddInt32(areaLength, delta);
  for (std::int64_t k = changed.rscKind.Int(); k <= 2; ++k) {
    std::int32_t& areaOffset = At(document.dataAreas, k * 2);
    areaOffset = areaOffset > 0 ? AddInt32(areaOffset, delta) : areaOffset;
  }
  for (int i = 0; i < rco::kDataAreaLongs; ++i) {
    head.WriteI32(rco::kDataAreaLongsAt + i * 4, At(document.dataAreas, i));
  }
  if (IsGimOrGmo(changed)) {
    head.WriteI16(Field(changed, rco::bodyCompression), rco::kCompressionZlib);
  }
}

void GenReplacer::Keep(Int16 index) {
  before_.genRsc = context_.document.genRsc;
  before_.dataAreas = context_.document.dataAreas;
  // The unpacked size of the record is that of the new data already. The entry still has the old one.
  if (index.Int() >= 0 && index.Int() < static_cast<int>(before_.genRsc.size())) {
    GenRsc& record = before_.genRsc[index.Index()];
    if (HasUnpackedSize(record)) {
      record.unpackedSize = UnpackedSizeOfEntry(record);
    }
  }
  if (!changed_) {
    first_ = before_;
  }
}

std::int32_t GenReplacer::UnpackedSizeOfEntry(const GenRsc& record) {
  try {
    if (!file_.IsOpen()) {
      file_.Open(context_.mod.cCurFile);
    }
    return file_.ReadI32At(Field(record, rco::bodyUnpackedSize));
  } catch (...) {
    (void)CurrentFailure();  // told by the statement that opens the file
    return record.unpackedSize;
  }
}

void GenReplacer::PutBack(const Records& records) {
  context_.document.genRsc = records.genRsc;
  context_.document.dataAreas = records.dataAreas;
}

bool GenReplacer::Replace(const std::filesystem::path& newFile, Int16 index) {
  return FileExists(newFile, true) && ReplaceBy([&] { return ReadWholeFile(newFile); }, index);
}

bool GenReplacer::Replace(const Bytes& data, Int16 index) {
  return !data.empty() && ReplaceBy([&] { return data; }, index);
}

bool GenReplacer::ReplaceBy(const std::function<Bytes()>& readData, Int16 index) {
  Keep(index);
  FileHead head(file_, 0);
  const auto takeBack = [&] {
    // The file is only changed once it is written; what the steps patched so far is taken back.
    head.TakeBack();
    PutBack(before_);
  };
  try {
    lastFailed_ = !RunStatements(
        context_.prompts, [&](Statements& run) { ReplaceData(run, head, readData, index); }, takeBack);
  } catch (...) {
    takeBack();  // the application ends under the question: what is written on the way out is whole
    throw;
  }
  changed_ = changed_ || !lastFailed_;
  return !lastFailed_;
}

void GenReplacer::ReplaceData(Statements& run, FileHead& head, const std::function<Bytes()>& readData, Int16 index) {
  run([&] { BackupOnce(context_.mod, context_.watch); });
  run([&] {
    if (!file_.IsOpen()) {
      file_.Open(context_.mod.cCurFile);
    }
  });

  std::int64_t pos = 0;
  run([&] {
    pos = GetGenDataPos(context_.document, index);
    RequireArraySize(pos);
    head.SetEnd(pos);
  });
  if (index.Int() < 0 || index.Int() >= static_cast<int>(context_.document.genRsc.size())) {
    return;  // no record, as was told just now: there is nothing to go on with
  }
  GenRsc& record = context_.document.genRsc[index.Index()];
  const std::int32_t oldSize = record.dataSize;
  std::int64_t tailPos = 0;
  Bytes twice;
  run([&] {
    tailPos = RoundUpTo4(CheckedInt32(pos + oldSize));
    twice = ReadTwiceStanding(file_, pos, tailPos);
  });

  Bytes data;
  run([&] { data = readData(); });
  const std::int32_t newLen = static_cast<std::int32_t>(data.size());
  std::int32_t delta = 0;
  run([&] { delta = PaddedDelta(oldSize, newLen); });
  record.dataSize = newLen;
  run([&] { ApplyDataDelta(delta, index, head, context_.document); });

  run([&] {
    const bool isLong = IsLongEntry(head, record);
    if (isLong && IsVag(record)) {
      WriteVagFields(head, context_.mod, record);
    }
  });
  run([&] {
    if (IsGimOrGmo(record)) {
      record.rscCompression = context_.mod.cNoCompression ? rco::kCompressionNone : rco::kCompressionZlib;
      head.WriteI16(Field(record, rco::bodyCompression), record.rscCompression.Value());
    }
  });
  run([&] { SpliceData(file_, pos, tailPos, std::move(data), twice); });
}

void GenReplacer::Close() {
  const bool wasOpen = file_.IsOpen();
  try {
    file_.Close();
  } catch (...) {
    PutBack(first_);
    throw;
  }
  if (!wasOpen) {
    PutBack(first_);
  }
}

bool GenReplacer::Finish() {
  if (!std::exchange(changed_, false)) {
    file_.Discard();
    return true;
  }
  return RunStatements(
      context_.prompts,
      [&](Statements& run) {
        run([&] { Close(); });
        run([&] { RecordFileDate(context_.mod, context_.watch); });
        if (lastFailed_) {
          context_.watch.Stop();
        }
      },
      [] {});
}

bool ReplaceGenRscData(const std::filesystem::path& newFile, Int16 index, const WriteContext& context) {
  GenReplacer replacer(context);
  const bool replaced = replacer.Replace(newFile, index);
  return replacer.Finish() && replaced;
}

}  // namespace kelvane
