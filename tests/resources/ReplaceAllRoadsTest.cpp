// cmdReplaceAll beside its steps taken one by one, each replacement reading and writing the open file by itself, on
// files and folders made at random, with records that are wrong and files that fail.
#include <algorithm>
#include <memory>
#include <optional>
#include <random>

#include "gim/BitmapToGim.h"
#include "gim/Palette.h"
#include "resources/Codec.h"
#include "resources/Extraction.h"
#include "resources/ReplaceFixture.h"
#include "resources/TestPicture.h"
#include "resources/VagSound.h"
#include "support/Failures.h"
#include "support/PlainPorts.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using namespace test;

// One open file with what it is changed by. The handler's questions are answered by a list.
struct Road {
  Road(const Bytes& content, const RcoDocument& opened, const Mod& settings, const fs::path& folder,
       const std::vector<bool>& answers)
      : mod(settings), document(opened), prompts(folder, [this, answers](const Message& message) {
          if (message.buttons == Buttons::Ok) {
            return Answer::Ok;
          }
          const bool yes = answers[asked.size() % answers.size()];
          asked.push_back(message.text);
          return yes ? Answer::Yes : Answer::No;
        }) {
    mod.cAppPath = program.Path() / "";
    mod.cCurFile = home.Write("page.rco", content);
  }
  [[nodiscard]] WriteContext Writing() { return {mod, document, prompts, watch}; }

  TempFolder program;
  TempFolder home;
  Mod mod;
  RcoDocument document;
  std::vector<std::string> asked;  // the handler's questions
  FolderPrompts prompts;
  ScriptedWatch watch;
  ScriptedProgress progress;
};

// The steps of cmdReplaceAll, each from file to file.
class StepByStep {
 public:
  StepByStep(Road& road, fs::path folder) : road_(road), folder_(std::move(folder)) {}

  void Run() {
    const int rows = std::min(road_.document.lst.Count(), static_cast<int>(road_.document.genRsc.size()));
    for (int row = 0; row < rows; ++row) {
      base_ = (folder_ / road_.document.lst.Text(row).substr(6)).string();
      const GenRsc& record = road_.document.genRsc[static_cast<std::size_t>(row)];
      switch (record.rscKind.Int()) {
        case 1:
          Image(row, record);
          break;
        case 2:
          Sound(row);
          break;
        default:
          if (fs::exists(base_ + ".omg")) {
            Packed(base_ + ".omg", row);
          } else if (fs::exists(base_ + ".dat")) {
            Put(base_ + ".dat", row);
          }
      }
    }
  }

 private:
  void Put(const fs::path& path, int row) { ReplaceGenRscData(path, row, road_.Writing()); }

  void Packed(const fs::path& path, int row) {
    if (road_.mod.cNoCompression) {
      Put(path, row);
      return;
    }
    CompressFile(path, Temp("temp.dat"), 9);
    Put(Temp("temp.dat"), row);
    fs::remove(Temp("temp.dat"));
  }

  void SetUnpackedSize(int row, const fs::path& path) {
    GenRsc& record = road_.document.genRsc[static_cast<std::size_t>(row)];
    if (record.unpackedSize != -1) {
      record.unpackedSize = static_cast<std::int32_t>(fs::file_size(path));
    }
  }

  void Image(int row, const GenRsc& record) {
    if (record.rscFormat != Int16(5)) {
      const std::string path = base_ + "." + ExtensionForImageType(record.rscFormat);
      if (fs::exists(path)) {
        Put(path, row);
      }
      return;
    }
    const std::string bitmap = fs::exists(base_ + ".bmp") ? base_ + ".bmp" : base_ + ".32bit.bmp";
    if (fs::exists(bitmap)) {
      if (CountBitmapColours(fs::path(bitmap), colours_, true, road_.prompts)) {
        const bool flag = ShouldUsePalette(colours_, fs::path(bitmap), road_.mod.cImpt32bitMode);
        if (BitmapToGim(bitmap, Temp("temp.gim"), flag, 1, road_.mod.cFirstColTrans)) {
          SetUnpackedSize(row, Temp("temp.gim"));
          Packed(Temp("temp.gim"), row);
        }
      }
      fs::remove(Temp("temp.gim"));
    } else if (fs::exists(base_ + ".gim")) {
      SetUnpackedSize(row, base_ + ".gim");
      Packed(base_ + ".gim", row);
    } else if (fs::exists(base_ + ".dat")) {
      Put(base_ + ".dat", row);
    }
  }

  void Sound(int row) {
    const std::string left = base_ + ".ch1.vag";
    const std::string right = base_ + ".ch2.vag";
    Mod& mod = road_.mod;
    if (fs::exists(left) && fs::exists(right)) {
      mod.vagChannels = 2;
      mod.vagSize1 = static_cast<std::int32_t>(fs::file_size(left));
      mod.vagSize2 = static_cast<std::int32_t>(fs::file_size(right));
      MergeVagChannels(left, right, mod);
      Put(Temp("temp.vag"), row);
      fs::remove(Temp("temp.vag"));
      return;
    }
    mod.vagPath = fs::exists(left) ? left : fs::exists(base_ + ".vag") ? base_ + ".vag" : "";
    if (!mod.vagPath.empty()) {
      mod.vagChannels = 1;
      mod.vagSize1 = static_cast<std::int32_t>(fs::file_size(mod.vagPath));
      mod.vagSize2 = 0;
      Put(mod.vagPath, row);
    }
  }

  [[nodiscard]] fs::path Temp(const char* name) const { return road_.program / name; }

  Road& road_;
  fs::path folder_;
  std::string base_;
  Int16 colours_;
};

class ReplaceAllRoadsTest : public ReplaceFixture {
 protected:
  int Below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
  bool OneIn(int chances) { return Below(chances) == 0; }
  Bytes Data(int most) {
    return SomeBytes(std::size_t{1} + static_cast<std::size_t>(Below(most)), static_cast<unsigned>(random()));
  }

  // Up to 5 resources of each kind, with and without the fields of long entries.
  Screen RandomScreen() {
    Screen made;
    for (int i = Below(6); i > 0; --i) {
      ImageSpec image = {.label = "i" + std::to_string(i), .data = Data(90)};
      image.format = static_cast<std::uint16_t>(OneIn(3) ? Below(6) : 5);
      image.compression = static_cast<std::uint16_t>(Below(3));
      image.unpackedSize = OneIn(3) ? std::nullopt : std::optional<std::int32_t>(Below(1000));
      made.images.push_back(image);
    }
    for (int i = Below(5); i > 0; --i) {
      VagSpec vag = {.label = "v" + std::to_string(i), .channel1 = Data(60)};
      vag.channel2 = OneIn(2) ? std::optional<Bytes>(Data(60)) : std::nullopt;
      vag.entryLength = OneIn(4) ? 64 : 0;
      made.vags.push_back(vag);
    }
    for (int i = Below(4); i > 0; --i) {
      GmoSpec gmo = {.label = "m" + std::to_string(i), .compression = 1, .data = Data(60)};
      gmo.unpackedSize = OneIn(3) ? std::nullopt : std::optional<std::int32_t>(5);
      made.gmos.push_back(gmo);
    }
    return made;
  }

  Bytes RandomBitmap() {
    const TestPicture picture(1 + Below(OneIn(4) ? 300 : 120), 8 + Below(25), Below(9));
    return OneIn(3) ? TestPicture(1 + Below(200), 4 + Below(9)).Bmp8() : picture.Bmp32();
  }

  // Files for about half of the resources, some of them of no use.
  void FillFolder(const Screen& made) {
    for (const ImageSpec& image : made.images) {
      Maybe(*image.label, {".png", ".jpg", ".tiff", ".gif", ".gim", ".dat"});
      if (OneIn(3)) {
        out.Write(*image.label + (OneIn(2) ? ".bmp" : ".32bit.bmp"), OneIn(12) ? Data(200) : RandomBitmap());
      }
    }
    for (const VagSpec& vag : made.vags) {
      Maybe(*vag.label, {".vag", ".ch1.vag", ".ch2.vag"});
    }
    for (const GmoSpec& gmo : made.gmos) {
      Maybe(*gmo.label, {".omg", ".dat"});
    }
  }
  void Maybe(const std::string& label, const std::vector<std::string>& endings) {
    for (const std::string& ending : endings) {
      if (OneIn(2)) {
        out.Write(label + ending, OneIn(15) ? Bytes() : Data(OneIn(4) ? 12 : 150));
      }
    }
  }

  // Records that lie: an entry anywhere in the file or outside, data of any size.
  void Spoil() {
    for (GenRsc& record : document.genRsc) {
      if (OneIn(4)) {
        record.entryPos = Below(static_cast<int>(built.bytes.size()) + 40);
      }
      if (OneIn(4)) {
        record.dataSize += Below(200) - 100;
      }
    }
  }

  // What is left of both must be alike; `ended` tells how each came to its end.
  static void ExpectAlike(Road& whole, int wholeEnded, Road& steps, int stepsEnded) {
    EXPECT_EQ(wholeEnded, stepsEnded);
    EXPECT_TRUE(ReadWholeFile(whole.mod.cCurFile) == ReadWholeFile(steps.mod.cCurFile));
    EXPECT_EQ(whole.home.Names(), steps.home.Names());
    EXPECT_TRUE(whole.document.genRsc == steps.document.genRsc);
    EXPECT_EQ(whole.document.dataAreas, steps.document.dataAreas);
    EXPECT_EQ(whole.asked, steps.asked);
    EXPECT_EQ(whole.watch.Running(), steps.watch.Running());
    EXPECT_EQ(whole.mod.vagChannels, steps.mod.vagChannels);
    EXPECT_EQ(whole.mod.vagSize1, steps.mod.vagSize1);
    EXPECT_EQ(whole.mod.vagSize2, steps.mod.vagSize2);
    EXPECT_EQ(whole.mod.vagPath, steps.mod.vagPath);
    EXPECT_TRUE(whole.program.Names().empty());
  }

  // Opens a file made at random and goes both roads. How the run ended.
  int GoBothRoads(bool spoiled) {
    OpenScreen(RandomScreen());
    for (const std::string& name : out.Names()) {
      fs::remove(out / name);
    }
    FillFolder(screen);
    if (spoiled) {
      Spoil();
    }
    mod.cNoCompression = OneIn(3);
    mod.cFirstColTrans = OneIn(3);
    mod.cImpt32bitMode = Below(3);
    std::vector<bool> answers(7);
    std::generate(answers.begin(), answers.end(), [&] { return OneIn(2); });

    Road whole(built.bytes, document, mod, out.Path(), answers);
    Road steps(built.bytes, document, mod, out.Path(), answers);
    const int wholeEnded =
        NumberOf([&] { CmdReplaceAll({.write = whole.Writing(), .progress = whole.progress, .refresh = [] {}}); });
    const int stepsEnded = NumberOf([&] { StepByStep(steps, out.Path()).Run(); });
    ExpectAlike(whole, wholeEnded, steps, stepsEnded);
    changed += ReadWholeFile(whole.mod.cCurFile) != built.bytes ? 1 : 0;
    asked += static_cast<int>(whole.asked.size());
    return wholeEnded;
  }

  std::mt19937 random{6};
  int changed = 0;  // runs that changed the file
  int asked = 0;    // questions of the handler
};

TEST_F(ReplaceAllRoadsTest, OneRunGivesTheFileAndTheRecordsOfOneReplacementAfterTheOther) {
  int ended = 0;
  for (int round = 0; round < 60 && !HasFailure(); ++round) {
    SCOPED_TRACE(round);
    ended += GoBothRoads(false) != 0 ? 1 : 0;
  }
  EXPECT_GT(changed, 30);
  EXPECT_GT(ended, 2) << "runs with a channel or bitmap that fails";
}

TEST_F(ReplaceAllRoadsTest, TheOutcomeIsTheSameWhereReplacementsFail) {
  for (int round = 0; round < 60 && !HasFailure(); ++round) {
    SCOPED_TRACE(round);
    GoBothRoads(true);
  }
  EXPECT_GT(changed, 20);
  EXPECT_GT(asked, 60);
}

}  // namespace
}  // namespace kelvane
