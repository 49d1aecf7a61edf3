// The built-in inflate, a run at a time: whoever takes the bytes can use them while they are in the cache, and memory
// stays the same however much comes out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "common/Bytes.h"
#include "imaging/InflateTables.h"

namespace kelvane {

// How a stream ended.
enum class InflateStatus : int {
  Ok = 0,                // also after a run-time error, which InflateOutcome tells apart
  BadBlock = -1,         // a block of type 3, or a stored block that runs over an end
  BadStoredLength = -2,  // a stored block whose length and its complement disagree
  BadTable = 9,          // a code that can't be built
};

struct InflateOutcome {
  InflateStatus status = InflateStatus::Ok;
  // A read behind the end of the source, a write behind that of the destination, bits that are no code, a symbol that
  // has no length, or a distance that reaches before the start.
  bool runtimeError = false;

  [[nodiscard]] bool Succeeded() const { return status == InflateStatus::Ok && !runtimeError; }
  bool operator==(const InflateOutcome&) const = default;
};

class InflateStream {
 public:
  // Decodes the zlib stream `compressed`, which must outlive this, into at most `rawLength` bytes. The source counts as
  // `zeroesBehind` bytes longer, all of them 0. With `allow64K` a match of 258 bytes is followed by 16 bits that give
  // its length less 3. The stream's header of 2 bytes is skipped unread and its checksum never looked at.
  InflateStream(ByteView compressed, std::int64_t zeroesBehind, std::int64_t rawLength, bool allow64K);
  InflateStream(const InflateStream&) = delete;
  InflateStream& operator=(const InflateStream&) = delete;

  // Decodes the next run of bytes. The answer begins with the last `keep` bytes of the answer before, and is valid
  // until the next call. When it holds nothing new the stream has ended, and Outcome() tells how. Failure 7 where
  // `keep` asks for more memory than there is.
  ByteView Read(std::size_t keep);

  [[nodiscard]] const InflateOutcome& Outcome() const { return outcome_; }

 private:
  enum class Phase { BlockHeader, Stored, Codes, Ended };

  void MakeRoom(std::size_t keep);
  // Decodes until `limit` is reached or passed by less than kFastBytesARound bytes, or until the stream ends.
  void Run(const std::uint8_t* limit);
  void Stop(InflateStatus status);
  void Fail();

  void ReadBlockHeader();
  void EndBlock();
  void BeginStoredBlock();
  void CopyStored();
  void SetFixedTables();
  void ReadDynamicTables();
  bool ReadCodeLengths(const DecodeTableView& table, std::span<std::uint8_t> lengths);

  // Decodes while both ends are far.
  void DecodeFast(const std::uint8_t* limit);
  // Decodes one symbol, with its match, near an end.
  void DecodeCareful();
  void BeginMatch(unsigned length, unsigned distance);
  void CopyPending();

  // Makes sure of `count` bits, at most 32; false where the source ends before.
  bool NeedBits(unsigned count);
  void DropBits(unsigned count);
  bool ReadBits(unsigned count, unsigned& value);
  // The entry of the code that the next bits begin with, and its value with the extra bits added; all of these bits are
  // dropped. False where no code begins or the source ends.
  bool DecodeSymbol(const DecodeTableView& table, InflateEntry& entry, unsigned& value);
  [[nodiscard]] std::uint8_t SourceByte(std::int64_t position) const;

  [[nodiscard]] std::int64_t Produced() const { return slidOut_ + (out_ - window_.get()); }
  [[nodiscard]] std::int64_t RoomInWindow() const { return window_.get() + windowSize_ - out_; }

  ByteView compressed_;
  std::int64_t sourceLength_;
  std::int64_t rawLength_;
  bool allow64K_;

  std::int64_t inPosition_ = 2;
  std::uint64_t bitBuffer_ = 0;
  unsigned bitCount_ = 0;

  Phase phase_ = Phase::BlockHeader;
  bool finalBlock_ = false;
  InflateOutcome outcome_;
  std::int64_t storedLeft_ = 0;
  unsigned pendingLength_ = 0;
  unsigned pendingDistance_ = 0;

  DecodeTableView literals_;
  DecodeTableView distances_;
  LiteralTable literalTable_;
  DistanceTable distanceTable_;

  // The last bytes: those that matches still reach, and those that were asked to be kept.
  std::unique_ptr<std::uint8_t[]> window_;
  std::int64_t windowSize_ = 0;  // without the slack behind it
  std::uint8_t* out_ = nullptr;
  std::int64_t slidOut_ = 0;  // bytes that have left the window
};

}  // namespace kelvane
