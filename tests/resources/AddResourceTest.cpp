// cmdOK of the dialog that adds a general resource.
#include <string>

#include "resources/AddResource.h"
#include "resources/ReplaceFixture.h"
#include "resources/TestPicture.h"
#include "support/Failures.h"
#include "support/PlainBmp.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using namespace test;
using Names = std::vector<std::string>;

const char* const kNoBorders =
    "Sorry, I'm too lazy to implement border checking, so you cannot add a resource at this location T_T.";

// Three of each kind: rows 0 to 2 are images, 3 to 5 sounds, 6 to 8 models.
Screen ThreeOfEach() {
  Screen three;
  for (int i = 0; i < 3; ++i) {
    const std::string number = std::to_string(i);
    const auto seed = static_cast<unsigned>(i);
    three.images.push_back(
        {.label = "image" + number, .compression = 1, .data = SomeBytes(20, seed), .unpackedSize = 50});
    three.vags.push_back({.label = "sound" + number, .channel1 = SomeBytes(21, seed)});
    three.gmos.push_back(
        {.label = "model" + number, .compression = 1, .data = SomeBytes(22, seed), .unpackedSize = 60});
  }
  return three;
}

class AddResourceTest : public ReplaceFixture {
 protected:
  AddResourceTest() { OpenScreen(ThreeOfEach()); }

  bool Add(const fs::path& file, const std::string& position, const std::string& label) {
    return AddGenRsc({.txtFile = file.string(), .txtPos = position, .txtLabel = label}, Writing(), After(document));
  }
  // A file of that name and content, accepted at row 1.
  bool Add(const std::string& name, const Bytes& content) { return Add(out.Write(name, content), "1", "new"); }

  AfterInsert After(RcoDocument& of) {
    return {.reopen = [this, &of] { of = ScannedResources(mod.cCurFile); },
            .selectLine =
                [this, &of](Int16 row) {
                  of.lst.Select(row.Int());
                  ++selected;
                }};
  }

  // Nothing was touched, no temporary file is left, and the dialog stays.
  void ExpectRefused(bool accepted) {
    EXPECT_FALSE(accepted);
    EXPECT_EQ(program.Names(), Names());
    EXPECT_EQ(selected, 0);
    ExpectNothingChanged();
  }

  // The file is the one that inserting `data`, in their stored form, makes of the file before.
  void ExpectInserted(int position, int kind, const Bytes& data, std::int32_t extra) {
    const Bytes content = Content();
    EXPECT_EQ(document.lst.Count(), 10);
    EXPECT_EQ(document.lst.Selected(), position);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(program.Names(), Names());
    EXPECT_TRUE(ReadWholeFile(Backup()) == built.bytes);

    WriteWholeFile(mod.cCurFile, built.bytes);
    RcoDocument twin = ScannedResources(mod.cCurFile);
    WriteContext writing = {mod, twin, prompts, watch};
    InsertGenRsc(
        {.position = position, .dataFile = out.Write("stored", data), .label = "new", .kind = kind, .extra = extra},
        writing, After(twin));
    EXPECT_TRUE(content == Content());
  }

  [[nodiscard]] static std::int32_t LengthOf(const Bytes& bytes) { return static_cast<std::int32_t>(bytes.size()); }

  int selected = 0;
};

// The checks, in their order.

TEST_F(AddResourceTest, AMissingLabelIsToldFirst) {
  prompts.ExpectTell("必须输入一个标记", Icon::Exclamation);
  ExpectRefused(Add(out / "gone.xyz", "-1", ""));
}

TEST_F(AddResourceTest, AMissingFileIsToldInFrontOfThePosition) {
  for (const fs::path& file : {out / "gone.xyz", fs::path()}) {
    prompts.ExpectTell("文件不存在！", Icon::Exclamation);
    ExpectRefused(Add(file, "-1", "new"));
  }
}

TEST_F(AddResourceTest, APositionOutsideOfTheListIsToldInFrontOfTheExtension) {
  const fs::path file = out.Write("a.xyz", Bytes(20));
  for (const char* position : {"-1", "10", "9.6", "32767", "-0.6"}) {
    prompts.ExpectTell("无效坐标", Icon::Exclamation);
    ExpectRefused(Add(file, position, "new"));
  }
}

TEST_F(AddResourceTest, TheFirstPlaceAndTheOneBehindTheLastAreRefusedInFrontOfTheExtension) {
  const fs::path file = out.Write("a.xyz", Bytes(20));
  for (const char* position : {"0", "9", "", "x", "0.5", "8.5001", "-0.5", ":"}) {
    prompts.ExpectTell(kNoBorders, Icon::Information);
    ExpectRefused(Add(file, position, "new"));
  }
}

TEST_F(AddResourceTest, APositionBeyond16BitsIsAFailure) {
  const fs::path file = out.Write("a.gim", Bytes(20));
  EXPECT_EQ(NumberOf([&] { Add(file, "32768", "new"); }), 6);
  EXPECT_EQ(NumberOf([&] { Add(file, "-40000", "new"); }), 6);
  ExpectNothingChanged();
}

TEST_F(AddResourceTest, WithTwoRowsOnly1IsAccepted) {
  Screen two;
  two.images = {{.label = "a", .data = SomeBytes(8)}, {.label = "b", .data = SomeBytes(8)}};
  OpenScreen(two);
  const fs::path file = out.Write("a.xyz", Bytes(20));
  for (const char* position : {"0", "2"}) {
    prompts.ExpectTell(kNoBorders, Icon::Information);
    ExpectRefused(Add(file, position, "new"));
  }
  prompts.ExpectTell("无效坐标", Icon::Exclamation);
  ExpectRefused(Add(file, "3", "new"));
  prompts.ExpectTell("无效的扩展名", Icon::Exclamation);  // the next check
  ExpectRefused(Add(file, "1", "new"));
}

TEST_F(AddResourceTest, WithOneRowNoPositionIsAccepted) {
  Screen one;
  one.images = {{.label = "a", .data = SomeBytes(8)}};
  OpenScreen(one);
  const fs::path file = out.Write("a.gim", Bytes(20));
  for (const char* position : {"0", "1"}) {
    prompts.ExpectTell(kNoBorders, Icon::Information);
    ExpectRefused(Add(file, position, "new"));
  }
  prompts.ExpectTell("无效坐标", Icon::Exclamation);
  ExpectRefused(Add(file, "2", "new"));
}

TEST_F(AddResourceTest, WithoutRowsNoPositionIsAccepted) {
  document.lst.Clear();
  const fs::path file = out.Write("a.gim", Bytes(20));
  prompts.ExpectTell(kNoBorders, Icon::Information);
  ExpectRefused(Add(file, "0", "new"));
  prompts.ExpectTell("无效坐标", Icon::Exclamation);
  ExpectRefused(Add(file, "1", "new"));
}

TEST_F(AddResourceTest, ABitmapOfAnotherDepthIsToldAsAFailedConversion) {
  for (const int bits : {1, 16, 24}) {
    prompts.ExpectTell("GIM转换失败", Icon::Exclamation);
    ExpectRefused(Add("a.bmp", BuildBmp({.width = 4, .height = 1, .bits = bits, .rows = {Bytes(12)}})));
  }
}

TEST_F(AddResourceTest, AnyOtherExtensionIsRefused) {
  for (const char* name : {"a.png", "a.dat", "a.ico", "a.bmpx", "gim", "a.vag2", "a"}) {
    prompts.ExpectTell("无效的扩展名", Icon::Exclamation);
    ExpectRefused(Add(name, Bytes(20)));
  }
}

TEST_F(AddResourceTest, AFailureOfTheConversionLeavesNothing) {
  EXPECT_EQ(NumberOf([&] { Add("a.bmp", BuildBmp({.width = 40000, .height = 1, .bits = 8})); }), 6);
  EXPECT_EQ(program.Names(), Names());
  ExpectNothingChanged();
}

// What is inserted.

TEST_F(AddResourceTest, TheExtensionTellsTheKindAndWhatGoesWithIt) {
  struct Row {
    const char* name;
    const char* position;
    int kind;
  };
  const Bytes content(300, 7);
  for (const Row& row :
       {Row{"a.mig", "1", 1}, Row{"a.gim", "2", 1}, Row{"a.GIM", "2", 1}, Row{"a.Mig", "1", 1}, Row{"a.vag", "4", 2},
        Row{"a.VAG", "5", 2}, Row{"a.omg", "7", 3}, Row{"a.gmo", "7", 3}, Row{"a.Gmo", "7", 3}}) {
    SCOPED_TRACE(row.name);
    DeleteFileQuietly(Backup());
    selected = 0;
    OpenScreen(ThreeOfEach());
    EXPECT_TRUE(Add(out.Write(row.name, content), row.position, "new"));
    // A sound is stored as it is and enters as mono; what else there is, deflated with its own length.
    ExpectInserted(std::stoi(row.position), row.kind, row.kind == 2 ? content : DeflateWrapped(content),
                   row.kind == 2 ? 0 : 300);
  }
}

TEST_F(AddResourceTest, ASoundEntersAsMonoWhateverItsSize) {
  const Bytes sound = SomeBytes(3004);
  EXPECT_TRUE(Add(out.Write("a.vag", sound), "4", "new"));
  const std::int32_t entry = document.genRsc[4].entryPos - 4;
  const Bytes content = Content();
  EXPECT_EQ(ReadI16(content, entry + 42), 1);
  EXPECT_EQ(ReadI32(content, entry + 44), 3004);
  EXPECT_EQ(ReadI32(content, entry + 60), 0);
}

TEST_F(AddResourceTest, ABitmapBecomesAGimOfItsOwnDepthWhateverTheImportMode) {
  const TestPicture picture(20);
  for (const int mode : {0, 1, 2}) {
    for (const bool indexed : {false, true}) {
      DeleteFileQuietly(Backup());
      selected = 0;
      mod.cImpt32bitMode = mode;
      OpenScreen(ThreeOfEach());
      EXPECT_TRUE(Add("a.bmp", indexed ? picture.Bmp8() : picture.Bmp32()));
      const Bytes gim = indexed ? picture.IndexedGim() : picture.DirectGim();
      ExpectInserted(1, 1, DeflateWrapped(gim), LengthOf(gim));
    }
  }
}

TEST_F(AddResourceTest, ABitmapOfManyColoursIsTakenWithoutAQuestion) {
  const TestPicture picture(400);
  EXPECT_TRUE(Add("a.BMP", picture.Bmp32()));
  ExpectInserted(1, 1, DeflateWrapped(picture.DirectGim()), LengthOf(picture.DirectGim()));
}

TEST_F(AddResourceTest, TheSettingClearsTheColourOfTheTopLeftPixel) {
  mod.cFirstColTrans = true;
  EXPECT_TRUE(Add("a.bmp", TestPicture(200).Bmp8()));
  const Bytes gim = TestPicture(200).IndexedGimWithoutFirstColour();
  ExpectInserted(1, 1, DeflateWrapped(gim), LengthOf(gim));
}

TEST_F(AddResourceTest, ImagesAndModelsAreDeflatedWithNoCompressionToo) {
  mod.cNoCompression = true;
  const Bytes content(300, 7);
  EXPECT_TRUE(Add("a.gim", content));
  ExpectInserted(1, 1, DeflateWrapped(content), 300);
  EXPECT_EQ(document.genRsc[1].rscCompression, Int16(1));
}

TEST_F(AddResourceTest, ThePositionIsTheNumberThatTheTextBeginsWithRounded) {
  for (const auto& [text, position] : {std::pair{"2", 2}, {"1.5", 2}, {"2.5", 2}, {"1.4", 1}, {"1:7", 1}, {".6", 1}}) {
    SCOPED_TRACE(text);
    DeleteFileQuietly(Backup());
    selected = 0;
    OpenScreen(ThreeOfEach());
    EXPECT_TRUE(Add(out.Write("a.gim", Bytes(50, 1)), text, "new"));
    ExpectInserted(position, 1, DeflateWrapped(Bytes(50, 1)), 50);
  }
}

TEST_F(AddResourceTest, AGimTooShortToBeCompressedMeetsAMissingTempDatInTheInsert) {
  prompts.ExpectUnknownFailure(FailureCode::FileNotFound, Answer::No);
  EXPECT_TRUE(Add("a.gim", SomeBytes(9))) << "the dialog closes";
  EXPECT_EQ(selected, 0);
  EXPECT_FALSE(watch.Running());
  EXPECT_TRUE(ReadWholeFile(Backup()) == built.bytes);
}

TEST_F(AddResourceTest, AGimTooShortToBeCompressedBecomesWhatAnOldTempDatHolds) {
  program.Write("temp.dat", SomeBytes(70));
  EXPECT_TRUE(Add("a.gim", SomeBytes(9)));
  ExpectInserted(1, 1, SomeBytes(70), 9);
}

TEST_F(AddResourceTest, TemporaryFilesOfTheDialogAreGoneAndOthersStay) {
  for (const char* name : {"temp.gim", "temp.dat", "temp.vag", "temp.bmp"}) {
    program.Write(name, Bytes(10));
  }
  EXPECT_TRUE(Add("a.bmp", TestPicture(20).Bmp8()));
  EXPECT_EQ(program.Names(), (Names{"temp.bmp", "temp.vag"}));
}

}  // namespace
}  // namespace kelvane
