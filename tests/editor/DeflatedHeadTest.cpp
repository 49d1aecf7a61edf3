#include <algorithm>
#include <zlib.h>

#include "common/Files.h"
#include "editor/DeflatedHead.h"
#include "editor/EditorFixture.h"
#include "support/Failures.h"
#include "support/RcoSeeds.h"

namespace kelvane {
namespace {

using test::SmallRco;

constexpr const char* kQuestion =
    "This appears to have a deflated (FW2.60) header - do you want to convert it to a 2.50 RCO?";

// A zlib stream: two bytes of head, the deflate stream, and a checksum that nobody reads.
Bytes Packed(ByteView plain, int level) {
  Bytes packed(compressBound(plain.size()));
  uLongf length = packed.size();
  EXPECT_EQ(compress2(packed.data(), &length, plain.data(), plain.size(), level), Z_OK);
  packed.resize(length);
  return packed;
}

// The deflated form of a plain file whose data areas begin at `dataAt`, around an already packed block.
Bytes DeflatedForm(const Bytes& plain, std::int32_t dataAt, const Bytes& packed, std::int32_t unpackedLength) {
  Bytes file(plain.begin(), plain.begin() + 164);
  WriteI32(file, rco::hdrVersion, 144);
  WriteI32(file, rco::hdrHeadCompression, 1);
  const std::int32_t packedLength = static_cast<std::int32_t>(packed.size());
  for (const std::int32_t area : {128, 136, 144}) {
    if (ReadI32(plain, area) > 0) {
      WriteI32(file, area, ReadI32(plain, area) - dataAt + 176 + packedLength);
    }
  }
  file.resize(176);
  WriteI32(file, 164, packedLength);
  WriteI32(file, 168, unpackedLength);
  WriteI32(file, 172, 0x55555555);
  Append(file, packed);
  Append(file, ByteView(plain).subspan(static_cast<std::size_t>(dataAt)));
  return file;
}

// The small file without areas for sounds and models. They are absent as -1: an area at 0 counts as one that moves.
Bytes PlainSmall() {
  Bytes plain = SmallRco();
  WriteI32(plain, rco::hdrVagData, -1);
  WriteI32(plain, rco::hdrGmoData, -1);
  return plain;
}

class DeflatedHeadTest : public test::EditorFixture {
 protected:
  // The 100 bytes from 164 to 264 of the small file.
  static Bytes Head() {
    const Bytes plain = PlainSmall();
    return {plain.begin() + 164, plain.begin() + 264};
  }
  // The small file with a packed block whose length leaves D a multiple of 4 (the stream is longer than it must be by
  // bytes behind its end, which nobody reads).
  static Bytes DeflatedSmall() {
    Bytes packed = Packed(Head(), 9);
    packed.resize((packed.size() + 3) / 4 * 4);
    return DeflatedForm(PlainSmall(), 264, packed, 100);
  }
  void ExpectQuestion(Answer answer) {
    prompts.Expect(
        {.text = kQuestion, .icon = Icon::Exclamation, .buttons = Buttons::YesNo, .defaultAnswer = Answer::Yes},
        answer);
  }
  void ExpectFailureBeforeAnythingIsWritten(const Bytes& deflated, FailureCode failure) {
    folder.Write("d.rco", deflated);
    ExpectQuestion(Answer::Yes);
    prompts.ExpectUnknownFailure(failure, Answer::No);
    editor.OpenRcoFile(folder / "d.rco");
    EXPECT_EQ(ReadWholeFile(folder / "d.rco"), deflated);
    EXPECT_FALSE(FileExists(folder / "d.rco.bak"));
  }
  // The program's folder, where the temporary files lie, must be empty again.
  void ExpectNoTemporaryFiles() const { EXPECT_TRUE(std::filesystem::is_empty(folder / "program")); }
};

TEST_F(DeflatedHeadTest, YesConvertsTheFileAndOpensItAsAPlainOneWithEverythingInPlace) {
  const Bytes deflated = DeflatedSmall();
  folder.Write("d.rco", deflated);
  ExpectQuestion(Answer::Yes);
  editor.OpenRcoFile(folder / "d.rco");
  EXPECT_EQ(ReadWholeFile(folder / "d.rco"), PlainSmall());
  EXPECT_EQ(ReadWholeFile(folder / "d.rco.bak"), deflated);
  EXPECT_EQ(editor.Document().lst.Lines(), std::vector<std::string>{"[GIM] ab"});
  EXPECT_EQ(editor.Document().dataAreas, (std::array<std::int32_t, 6>{264, 12, -1, 0, -1, 0}));
  EXPECT_EQ(editor.State().cCurFile, folder / "d.rco");
  ExpectNoTemporaryFiles();
}

TEST_F(DeflatedHeadTest, AFileOfEverythingShowsTheSameAsItsPlainForm) {
  test::RcoBuilder b = test::SmallRcoOfEverything();
  const Bytes plain = b.Build().bytes;
  b.Options().deflatedHead = true;
  folder.Write("d.rco", b.Build().bytes);
  ExpectQuestion(Answer::Yes);
  editor.OpenRcoFile(folder / "d.rco");
  EXPECT_EQ(ReadWholeFile(folder / "d.rco"), plain);
  const RcoDocument converted = editor.Document();
  editor.OpenRcoFile(folder.Write("p.rco", plain));
  const RcoDocument& expected = editor.Document();
  EXPECT_EQ(expected.lst.Count(), 7);
  EXPECT_EQ(converted.genRsc, expected.genRsc);
  EXPECT_EQ(converted.textRsc, expected.textRsc);
  EXPECT_EQ(converted.pageRecs, expected.pageRecs);
  EXPECT_EQ(converted.animRecs, expected.animRecs);
  EXPECT_EQ(converted.lst.Lines(), expected.lst.Lines());
  EXPECT_EQ(converted.lstText.Lines(), expected.lstText.Lines());
  EXPECT_EQ(converted.lstPage.Lines(), expected.lstPage.Lines());
  EXPECT_EQ(converted.lstAnim.Lines(), expected.lstAnim.Lines());
}

TEST_F(DeflatedHeadTest, RefusingTheConversionLeavesThePreviousDocumentUntouched) {
  editor.OpenRcoFile(folder.Write("small.rco", SmallRco()));
  const Bytes deflated = DeflatedSmall();
  folder.Write("d.rco", deflated);
  ExpectQuestion(Answer::No);
  editor.OpenRcoFile(folder / "d.rco");
  EXPECT_EQ(ReadWholeFile(folder / "d.rco"), deflated);
  EXPECT_FALSE(FileExists(folder / "d.rco.bak"));
  EXPECT_EQ(editor.State().cCurFile, folder / "small.rco");
  EXPECT_EQ(editor.Document().lst.Count(), 1);
}

TEST_F(DeflatedHeadTest, ABackupThatExistsIsKept) {
  folder.Write("d.rco", DeflatedSmall());
  folder.Write("d.rco.bak", Bytes{1});
  ExpectQuestion(Answer::Yes);
  editor.OpenRcoFile(folder / "d.rco");
  EXPECT_EQ(ReadWholeFile(folder / "d.rco.bak"), Bytes{1});
}

TEST_F(DeflatedHeadTest, TheBackupIsMadeEvenWithBackupsTurnedOff) {
  const Bytes deflated = DeflatedSmall();
  folder.Write("d.rco", deflated);
  editor.State().cNoUpdatBak = true;
  ExpectQuestion(Answer::Yes);
  editor.OpenRcoFile(folder / "d.rco");
  EXPECT_EQ(ReadWholeFile(folder / "d.rco.bak"), deflated);
}

TEST_F(DeflatedHeadTest, ABlockThatCannotBeUnpackedIsToldAndTheFileIsGoneAndTheBackupHoldsIt) {
  editor.OpenRcoFile(folder.Write("small.rco", SmallRco()));
  Bytes deflated = DeflatedSmall();
  deflated[178] = 0xFF;  // block type 3
  folder.Write("d.rco", deflated);
  ExpectQuestion(Answer::Yes);
  prompts.ExpectTell("解压失败", Icon::Critical);
  editor.OpenRcoFile(folder / "d.rco");
  EXPECT_FALSE(FileExists(folder / "d.rco"));
  EXPECT_EQ(ReadWholeFile(folder / "d.rco.bak"), deflated);
  EXPECT_EQ(editor.State().cCurFile, folder / "small.rco");
  EXPECT_EQ(editor.Document().lst.Count(), 1);
  ExpectNoTemporaryFiles();
}

TEST_F(DeflatedHeadTest, ABackupThatExistsIsKeptAlsoWhereTheBlockCannotBeUnpackedAndTheFileIsGone) {
  Bytes deflated = DeflatedSmall();
  deflated[178] = 0xFF;  // block type 3
  folder.Write("d.rco", deflated);
  folder.Write("d.rco.bak", Bytes{1});
  ExpectQuestion(Answer::Yes);
  prompts.ExpectTell("解压失败", Icon::Critical);
  editor.OpenRcoFile(folder / "d.rco");
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"d.rco.bak", "program"}));
  EXPECT_EQ(ReadWholeFile(folder / "d.rco.bak"), Bytes{1});
}

TEST_F(DeflatedHeadTest, AResultThatIsTooShortIsFilledWithZeros) {
  Bytes plain = PlainSmall();
  const Bytes head = Head();
  Bytes packed = Packed(ByteView(head).first(96), 9);
  packed.resize((packed.size() + 3) / 4 * 4);
  folder.Write("d.rco", DeflatedForm(plain, 264, packed, 100));
  ExpectQuestion(Answer::Yes);
  editor.OpenRcoFile(folder / "d.rco");
  std::fill(plain.begin() + 260, plain.begin() + 264, std::uint8_t{0});
  EXPECT_EQ(ReadWholeFile(folder / "d.rco"), plain);
}

TEST_F(DeflatedHeadTest, AResultThatIsTooLongIsCut) {
  Bytes head = Head();
  head.resize(140, 0x77);
  Bytes longer = Packed(head, 9);
  longer.resize((longer.size() + 3) / 4 * 4);
  folder.Write("d.rco", DeflatedForm(PlainSmall(), 264, longer, 100));
  ExpectQuestion(Answer::Yes);
  editor.OpenRcoFile(folder / "d.rco");
  EXPECT_EQ(ReadWholeFile(folder / "d.rco"), PlainSmall());
}

TEST_F(DeflatedHeadTest, AShiftThatIsNoMultipleOf4IsRoundedUpAndMovesAreasAt0Too) {
  // C = 4n + 1 and U = 100: D = 100 - C - 12 leaves a remainder, and the tail starts up to 3 bytes later.
  Bytes packed = Packed(Head(), 9);
  packed.resize((packed.size() + 3) / 4 * 4 + 1);
  Bytes deflated = DeflatedForm(SmallRco(), 264, packed, 100);
  folder.Write("d.rco", deflated);
  ExpectQuestion(Answer::Yes);
  editor.OpenRcoFile(folder / "d.rco");
  const std::int32_t packedLength = static_cast<std::int32_t>(packed.size());
  const std::int32_t plainShift = 100 - packedLength - 12;
  const std::int32_t remainder = plainShift % 4;  // of either sign
  ASSERT_NE(remainder, 0);
  const std::int32_t shift = plainShift + 4 - remainder;
  Bytes expected = SmallRco();
  const std::int32_t dataAt = 176 + packedLength + shift;
  expected.insert(expected.begin() + 264, static_cast<std::size_t>(dataAt - 264), std::uint8_t{0});
  WriteI32(expected, 128, dataAt);
  WriteI32(expected, 136, shift);
  WriteI32(expected, 144, shift);
  EXPECT_EQ(ReadWholeFile(folder / "d.rco"), expected);
}

TEST_F(DeflatedHeadTest, AShiftIsRoundedByItsSignedRemainderSoThatMinus5Gives0) {
  struct Row {
    std::int32_t difference;  // U - C - 12
    std::int32_t shift;
  };
  const std::vector<Row> rows = {{-12, -12}, {-9, -4}, {-8, -8}, {-5, 0}, {-4, -4}, {-3, 4},
                                 {-2, 4},    {-1, 4},  {0, 0},   {1, 4},  {4, 4},   {7, 8}};
  const Bytes head(39, 'h');
  Bytes packed = Packed(head, 9);
  ASSERT_LE(packed.size(), 32U);
  packed.resize(32);
  for (const auto& [difference, shift] : rows) {
    Bytes plain = SmallRco();
    plain.resize(164);
    WriteI32(plain, rco::hdrImageData, -1);
    WriteI32(plain, rco::hdrVagData, 300);
    WriteI32(plain, rco::hdrGmoData, 0);
    Bytes deflated = plain;
    WriteI32(deflated, rco::hdrVersion, 144);
    deflated.resize(176);
    WriteI32(deflated, 164, 32);
    WriteI32(deflated, 168, 32 + 12 + difference);
    Append(deflated, packed);
    Append(deflated, Bytes{1, 2, 3, 4});
    folder.Write("d.rco", deflated);
    RcoFile file(folder / "d.rco");
    EXPECT_TRUE(ConvertDeflatedHeader(file, editor.State(), prompts));

    // 32 + 12 bytes of block and the shift, of which 39 are there; an area at 0 moves too, one at -1 doesn't.
    WriteI32(plain, rco::hdrVagData, 300 + shift);
    WriteI32(plain, rco::hdrGmoData, shift);
    Append(plain, head);
    const std::int32_t headEnd = 164 + 44 + shift;
    plain.resize(static_cast<std::size_t>(headEnd));
    Append(plain, Bytes{1, 2, 3, 4});
    EXPECT_EQ(file.Image(), plain) << difference;
    EXPECT_EQ(ReadWholeFile(folder / "d.rco"), plain) << difference;
  }
}

TEST_F(DeflatedHeadTest, AnEmptyBlockOrNothingBehindItIsAFailureThatLeavesTheFile) {
  Bytes deflated = DeflatedSmall();
  const std::int32_t allOfTheRest = static_cast<std::int32_t>(deflated.size()) - 176;
  for (const std::int32_t packedLength : {0, -4, allOfTheRest, 100000}) {
    WriteI32(deflated, 164, packedLength);
    ExpectFailureBeforeAnythingIsWritten(deflated, FailureCode::SubscriptOutOfRange);
  }
}

TEST_F(DeflatedHeadTest, AFailureAnsweredYesGoesOnWithTheFileAsItStands) {
  // No byte behind the block: converting fails before anything is written. What is opened then is the deflated file.
  Bytes deflated = DeflatedForm(PlainSmall(), 264, Packed(Head(), 9), 100);
  deflated.resize(deflated.size() - 12);
  WriteI32(deflated, rco::hdrImageRoot, 0);
  WriteI32(deflated, rco::hdrLabelOffset, 77);
  folder.Write("d.rco", deflated);
  ExpectQuestion(Answer::Yes);
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::Yes);
  editor.OpenRcoFile(folder / "d.rco");
  EXPECT_EQ(editor.State().cCurFile, folder / "d.rco");
  EXPECT_EQ(editor.Document().labelBase, 77);
  EXPECT_EQ(ReadWholeFile(folder / "d.rco"), deflated);
}

TEST_F(DeflatedHeadTest, LengthsAndAreasAreWorkedOutIn32BitsBeforeAnythingIsWritten) {
  struct Row {
    std::int32_t packedLength;
    std::int32_t unpackedLength;
  };
  Bytes deflated = DeflatedSmall();
  // 2147483647 + 5 is too much, though 12 less would not be. In the other row the shift is 2147483640 - C - 12, which
  // takes the area at 176 + C to 2147483804.
  for (const auto& [packedLength, unpackedLength] : {Row{-5, 0x7FFFFFFF}, Row{ReadI32(deflated, 164), 0x7FFFFFF8}}) {
    WriteI32(deflated, 164, packedLength);
    WriteI32(deflated, 168, unpackedLength);
    ExpectFailureBeforeAnythingIsWritten(deflated, FailureCode::Overflow);
  }
}

TEST_F(DeflatedHeadTest, ALengthThatThePlainHeadCannotHaveIsAFailureBehindTheUnpacking) {
  struct Row {
    std::int32_t unpackedLength;
    FailureCode failure;
  };
  // C = 32, and no area has to move. The head is to be U long, rounded up: up to 2147483648 for the last one.
  const std::vector<Row> rows = {{0, FailureCode::SubscriptOutOfRange},
                                 {-4, FailureCode::SubscriptOutOfRange},
                                 {0x40000004, FailureCode::OutOfMemory},
                                 {0x7FFFFFFC, FailureCode::OutOfMemory},
                                 {0x7FFFFFFF, FailureCode::Overflow}};
  Bytes packed = Packed(Bytes(39, 'h'), 9);
  ASSERT_LE(packed.size(), 32U);
  packed.resize(32);
  Bytes plain = PlainSmall();
  WriteI32(plain, rco::hdrImageData, -1);
  for (const auto& [unpackedLength, failure] : rows) {
    const Bytes deflated = DeflatedForm(plain, 264, packed, unpackedLength);
    folder.Write("d.rco", deflated);
    RcoFile file(folder / "d.rco");
    EXPECT_EQ(test::NumberOf([&] { ConvertDeflatedHeader(file, editor.State(), prompts); }), static_cast<int>(failure))
        << unpackedLength;
    EXPECT_EQ(ReadWholeFile(folder / "d.rco"), deflated);
    EXPECT_TRUE(FileExists(folder / "d.rco.bak"));
    ExpectNoTemporaryFiles();
  }
}

TEST_F(DeflatedHeadTest, ABlockOfOneOrTwoBytesHoldsNoStreamAndIsAFailureThatLeavesTheFile) {
  for (const std::size_t packedLength : {1U, 2U}) {
    const Bytes deflated = DeflatedForm(PlainSmall(), 264, Bytes(packedLength, 0x78), 100);
    folder.Write("d.rco", deflated);
    ExpectQuestion(Answer::Yes);
    prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
    editor.OpenRcoFile(folder / "d.rco");
    EXPECT_EQ(ReadWholeFile(folder / "d.rco"), deflated);
    EXPECT_TRUE(editor.State().cCurFile.empty());
    ExpectNoTemporaryFiles();
    DeleteFile(folder / "d.rco.bak");
  }
}

TEST_F(DeflatedHeadTest, ABlockOfPlainDataIsTakenAsItIs) {
  // What begins with "MI" or "OM" was never compressed: C = 100, U = 112 gives D = 0, and 12 zeros fill the block.
  Bytes block = Head();
  block[0] = 'M';
  block[1] = 'I';
  Bytes deflated = DeflatedForm(PlainSmall(), 264, block, 112);
  const std::int32_t areaBefore = ReadI32(deflated, 128);
  folder.Write("d.rco", deflated);
  RcoFile file(folder / "d.rco");
  EXPECT_TRUE(ConvertDeflatedHeader(file, editor.State(), prompts));
  const Bytes& plain = file.Image();
  ASSERT_EQ(plain.size(), deflated.size());
  EXPECT_EQ(Bytes(plain.begin() + 164, plain.begin() + 264), block);
  EXPECT_EQ(Bytes(plain.begin() + 264, plain.begin() + 276), Bytes(12));
  EXPECT_EQ(Bytes(plain.begin() + 276, plain.end()), Bytes(deflated.end() - 12, deflated.end()));
  EXPECT_EQ(ReadI32(plain, 128), areaBefore);
  ExpectNoTemporaryFiles();
}

TEST_F(DeflatedHeadTest, AFolderForTemporaryFilesThatIsGoneLeavesTheFileWhole) {
  const Bytes deflated = DeflatedSmall();
  folder.Write("d.rco", deflated);
  std::filesystem::remove(folder / "program");
  ExpectQuestion(Answer::Yes);
  prompts.ExpectUnknownFailure(FailureCode::PathNotFound, Answer::No);
  editor.OpenRcoFile(folder / "d.rco");
  EXPECT_EQ(ReadWholeFile(folder / "d.rco"), deflated);
  EXPECT_EQ(ReadWholeFile(folder / "d.rco.bak"), deflated);
}

}  // namespace
}  // namespace kelvane
