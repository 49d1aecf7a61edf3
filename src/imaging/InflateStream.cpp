#include "imaging/InflateStream.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "imaging/InflateFast.h"

namespace kelvane {
namespace {

// The longest distance that the two additional codes give.
constexpr std::int64_t kHistory = 65536;
// What a run decodes: little enough to be still near when it is used.
constexpr std::int64_t kRun = 32768;
constexpr std::int64_t kWindow = kHistory + 6 * kRun;

constexpr unsigned kLongestCode = 15;
constexpr unsigned kLongestMatch = 258;
// The symbols of the code in which the codes of a block are written, in the order of their lengths in the file.
constexpr std::array<std::uint8_t, kCodeLengthSymbols> kCodeLengthOrder = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                                           11, 4,  12, 3, 13, 2, 14, 1, 15};

struct FixedTables {
  FixedTables() {
    std::array<std::uint8_t, kLiteralSymbols> lengths;
    std::fill(lengths.begin(), lengths.begin() + 144, std::uint8_t{8});
    std::fill(lengths.begin() + 144, lengths.begin() + 256, std::uint8_t{9});
    std::fill(lengths.begin() + 256, lengths.begin() + 280, std::uint8_t{7});
    std::fill(lengths.begin() + 280, lengths.end(), std::uint8_t{8});
    literals.Build(lengths, kLiteralMeanings.data());
    std::array<std::uint8_t, kDistanceSymbols> distanceLengths;
    distanceLengths.fill(5);
    distances.Build(distanceLengths, kDistanceMeanings.data());
  }
  LiteralTable literals;
  DistanceTable distances;
};

std::uint64_t LowMask(unsigned count) {
  return (std::uint64_t{1} << count) - 1;
}

}  // namespace

InflateStream::InflateStream(ByteView compressed, std::int64_t zeroesBehind, std::int64_t rawLength, bool allow64K)
    : compressed_(compressed),
      sourceLength_(static_cast<std::int64_t>(compressed.size()) + zeroesBehind),
      rawLength_(rawLength),
      allow64K_(allow64K),
      windowSize_(std::min(rawLength, kWindow)) {
  window_ = std::make_unique_for_overwrite<std::uint8_t[]>(static_cast<std::size_t>(windowSize_ + kFastSlack));
  out_ = window_.get();
}

ByteView InflateStream::Read(std::size_t keep) {
  MakeRoom(keep);
  const std::uint8_t* const first = out_ - keep;
  Run(out_ + std::min({kRun, RoomInWindow(), rawLength_ - Produced()}));
  return {first, out_};
}

void InflateStream::MakeRoom(std::size_t keep) {
  const std::int64_t wanted = std::min(kRun, rawLength_ - Produced());
  if (RoomInWindow() >= wanted) {
    return;
  }
  const std::int64_t used = out_ - window_.get();
  const std::int64_t kept = std::min(used, std::max(kHistory, static_cast<std::int64_t>(keep)));
  if (windowSize_ - kept >= wanted) {
    std::memmove(window_.get(), out_ - kept, static_cast<std::size_t>(kept));
  } else {
    windowSize_ = std::min(kept + rawLength_ - Produced(), 2 * (kept + kRun));
    auto larger = std::make_unique_for_overwrite<std::uint8_t[]>(static_cast<std::size_t>(windowSize_ + kFastSlack));
    std::memcpy(larger.get(), out_ - kept, static_cast<std::size_t>(kept));
    window_ = std::move(larger);
  }
  slidOut_ += used - kept;
  out_ = window_.get() + kept;
}

void InflateStream::Run(const std::uint8_t* limit) {
  // At the destination's end the stream must still end, without another byte.
  const bool full = Produced() == rawLength_;
  while (phase_ != Phase::Ended && (full || out_ < limit)) {
    switch (phase_) {
      case Phase::BlockHeader:
        ReadBlockHeader();
        break;
      case Phase::Stored:
        CopyStored();
        break;
      case Phase::Codes:
        if (pendingLength_ > 0) {
          CopyPending();
          break;
        }
        DecodeFast(limit);
        if (phase_ == Phase::Codes && (full || out_ < limit)) {
          DecodeCareful();
        }
        break;
      case Phase::Ended:
        break;
    }
  }
}

void InflateStream::Stop(InflateStatus status) {
  outcome_.status = status;
  phase_ = Phase::Ended;
}

void InflateStream::Fail() {
  outcome_.runtimeError = true;
  phase_ = Phase::Ended;
}

void InflateStream::ReadBlockHeader() {
  unsigned header = 0;
  if (!ReadBits(3, header)) {
    Fail();
    return;
  }
  finalBlock_ = (header & 1) != 0;
  switch (header >> 1) {
    case 0:
      BeginStoredBlock();
      break;
    case 1:
      SetFixedTables();
      break;
    case 2:
      ReadDynamicTables();
      break;
    default:
      Stop(InflateStatus::BadBlock);
  }
}

void InflateStream::EndBlock() {
  phase_ = finalBlock_ ? Phase::Ended : Phase::BlockHeader;
}

void InflateStream::BeginStoredBlock() {
  inPosition_ -= bitCount_ / 8;
  bitBuffer_ = 0;
  bitCount_ = 0;
  if (sourceLength_ - inPosition_ < 4) {
    Stop(InflateStatus::BadBlock);
    return;
  }
  std::array<unsigned, 4> bytes;
  for (unsigned& byte : bytes) {
    byte = SourceByte(inPosition_++);
  }
  const unsigned length = bytes[0] | (bytes[1] << 8);
  const unsigned complement = bytes[2] | (bytes[3] << 8);
  if ((length ^ complement) != 0xFFFF) {
    Stop(InflateStatus::BadStoredLength);
    return;
  }
  if (length > sourceLength_ - inPosition_ || length > rawLength_ - Produced()) {
    Stop(InflateStatus::BadBlock);
    return;
  }
  storedLeft_ = length;
  phase_ = Phase::Stored;
}

void InflateStream::CopyStored() {
  const std::int64_t count = std::min(storedLeft_, RoomInWindow());
  const std::int64_t present =
      std::clamp(static_cast<std::int64_t>(compressed_.size()) - inPosition_, std::int64_t{0}, count);
  std::copy_n(compressed_.begin() + std::min(inPosition_, static_cast<std::int64_t>(compressed_.size())), present,
              out_);
  std::fill_n(out_ + present, count - present, std::uint8_t{0});
  inPosition_ += count;
  out_ += count;
  storedLeft_ -= count;
  if (storedLeft_ == 0) {
    EndBlock();
  }
}

void InflateStream::SetFixedTables() {
  static const FixedTables fixed;
  literals_ = fixed.literals.View();
  distances_ = fixed.distances.View();
  phase_ = Phase::Codes;
}

void InflateStream::ReadDynamicTables() {
  unsigned literalCount = 0;
  unsigned distanceCount = 0;
  unsigned lengthCount = 0;
  if (!ReadBits(5, literalCount) || !ReadBits(5, distanceCount) || !ReadBits(4, lengthCount)) {
    Fail();
    return;
  }
  literalCount += 257;
  distanceCount += 1;
  std::array<std::uint8_t, kCodeLengthSymbols> ownLengths{};
  for (unsigned i = 0; i < lengthCount + 4; ++i) {
    unsigned length = 0;
    if (!ReadBits(3, length)) {
      Fail();
      return;
    }
    ownLengths[kCodeLengthOrder[i]] = static_cast<std::uint8_t>(length);
  }
  CodeLengthTable table;
  if (!table.Build(ownLengths, kCodeLengthMeanings.data())) {
    Stop(InflateStatus::BadTable);
    return;
  }
  std::array<std::uint8_t, kLiteralSymbols + kDistanceSymbols> storage;
  const std::span<std::uint8_t> lengths = std::span(storage).first(literalCount + distanceCount);
  if (!ReadCodeLengths(table.View(), lengths)) {
    return;
  }
  if (!literalTable_.Build(lengths.first(literalCount), kLiteralMeanings.data()) ||
      !distanceTable_.Build(lengths.subspan(literalCount), kDistanceMeanings.data())) {
    Stop(InflateStatus::BadTable);
    return;
  }
  literals_ = literalTable_.View();
  distances_ = distanceTable_.View();
  phase_ = Phase::Codes;
}

bool InflateStream::ReadCodeLengths(const DecodeTableView& table, std::span<std::uint8_t> lengths) {
  for (std::size_t i = 0; i < lengths.size();) {
    InflateEntry entry = 0;
    unsigned symbol = 0;
    if (!DecodeSymbol(table, entry, symbol)) {
      Fail();
      return false;
    }
    if (symbol < 16) {
      lengths[i++] = static_cast<std::uint8_t>(symbol);
      continue;
    }
    // 16 repeats the length before, 17 and 18 are runs of symbols without a code.
    unsigned count = 0;
    if (!ReadBits(symbol == 16 ? 2 : symbol == 17 ? 3 : 7, count)) {
      Fail();
      return false;
    }
    count += symbol == 18 ? 11 : 3;
    if (count > lengths.size() - i || (symbol == 16 && i == 0)) {
      Stop(InflateStatus::BadTable);
      return false;
    }
    std::fill_n(lengths.begin() + static_cast<std::ptrdiff_t>(i), count,
                symbol == 16 ? lengths[i - 1] : std::uint8_t{0});
    i += count;
  }
  return true;
}

void InflateStream::DecodeFast(const std::uint8_t* limit) {
  const std::int64_t sourceLeft = static_cast<std::int64_t>(compressed_.size()) - inPosition_ - kFastSourceARound;
  const std::int64_t roomLeft = std::min(limit - out_, rawLength_ - Produced() - kFastBytesARound);
  if (sourceLeft < 0 || roomLeft <= 0 || allow64K_) {
    return;
  }
  const std::uint8_t* const source = compressed_.data();
  FastInflate fast{.in = source + inPosition_,
                   .inLimit = source + inPosition_ + sourceLeft,
                   .out = out_,
                   .outLimit = out_ + roomLeft,
                   .oldest = window_.get(),
                   .bits = bitBuffer_,
                   .bitCount = bitCount_,
                   .literals = literals_,
                   .distances = distances_};
  const FastInflate::Stop stop = fast.Run();
  inPosition_ = fast.in - source;
  bitBuffer_ = fast.bits;
  bitCount_ = fast.bitCount;
  out_ = fast.out;
  if (stop == FastInflate::Stop::Corrupt) {
    Fail();
  } else if (stop == FastInflate::Stop::EndOfBlock) {
    EndBlock();
  }
}

void InflateStream::DecodeCareful() {
  InflateEntry entry = 0;
  unsigned value = 0;
  if (!DecodeSymbol(literals_, entry, value)) {
    Fail();
    return;
  }
  if (entry & kEndOfBlockEntry) {
    EndBlock();
    return;
  }
  if (entry & kLiteralEntry) {
    if (Produced() == rawLength_) {
      Fail();
      return;
    }
    *out_++ = static_cast<std::uint8_t>(value);
    return;
  }
  unsigned length = value;
  unsigned distance = 0;
  if (allow64K_ && length == kLongestMatch) {
    if (!ReadBits(16, length)) {
      Fail();
      return;
    }
    length += 3;
  }
  if (!DecodeSymbol(distances_, entry, distance)) {
    Fail();
    return;
  }
  BeginMatch(length, distance);
}

void InflateStream::BeginMatch(unsigned length, unsigned distance) {
  if (distance > Produced() || length > rawLength_ - Produced()) {
    Fail();
    return;
  }
  pendingLength_ = length;
  pendingDistance_ = distance;
}

void InflateStream::CopyPending() {
  const auto count = static_cast<unsigned>(std::min(std::int64_t{pendingLength_}, RoomInWindow()));
  for (unsigned i = 0; i < count; ++i, ++out_) {
    *out_ = *(out_ - pendingDistance_);
  }
  pendingLength_ -= count;
}

bool InflateStream::NeedBits(unsigned count) {
  while (bitCount_ < count) {
    if (inPosition_ >= sourceLength_) {
      return false;
    }
    bitBuffer_ |= std::uint64_t{SourceByte(inPosition_++)} << bitCount_;
    bitCount_ += 8;
  }
  return true;
}

void InflateStream::DropBits(unsigned count) {
  bitBuffer_ >>= count;
  bitCount_ -= count;
}

bool InflateStream::ReadBits(unsigned count, unsigned& value) {
  if (!NeedBits(count)) {
    return false;
  }
  value = static_cast<unsigned>(bitBuffer_ & LowMask(count));
  DropBits(count);
  return true;
}

bool InflateStream::DecodeSymbol(const DecodeTableView& table, InflateEntry& entry, unsigned& value) {
  // Near the source's end there may be fewer bits than the longest code has. Those that lack read as 0, and a code that
  // needs one of them is refused.
  (void)NeedBits(kLongestCode);
  entry = table.entries[bitBuffer_ & LowMask(table.primaryBits)];
  if (entry & kSecondTableEntry) {
    if (bitCount_ < BitsToDrop(entry)) {
      return false;
    }
    DropBits(BitsToDrop(entry));
    entry = table.entries[EntryValue(entry) + (bitBuffer_ & LowMask(CodeBits(entry)))];
  }
  const bool noCode = (entry & kSpecialEntry) && !(entry & kEndOfBlockEntry);
  if (noCode || CodeBits(entry) > bitCount_) {
    return false;
  }
  DropBits(CodeBits(entry));
  unsigned extra = 0;
  if (!ReadBits(BitsToDrop(entry) - CodeBits(entry), extra)) {
    return false;
  }
  value = EntryValue(entry) + extra;
  return true;
}

std::uint8_t InflateStream::SourceByte(std::int64_t position) const {
  return position < static_cast<std::int64_t>(compressed_.size()) ? compressed_[static_cast<std::size_t>(position)]
                                                                  : std::uint8_t{0};
}

}  // namespace kelvane
