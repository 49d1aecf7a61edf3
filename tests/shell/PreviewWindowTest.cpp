// The picture of the selected resource, small and large, and its background.
#include <QCheckBox>
#include <QColorDialog>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>
#include <gtest/gtest.h>
#include <map>

#include "samples/Demo.h"
#include "samples/Glyphs.h"
#include "samples/Pictures.h"
#include "shell/WindowFixture.h"
#include "shell/frmPreview.h"
#include "support/GimBuilder.h"

namespace kelvane::test {
namespace {

class PreviewWindowTest : public DialogFixture {
 protected:
  PreviewWindowTest() {
    // Half of it can be seen through.
    std::vector<std::uint32_t> pixels(800, Rgba(200, 0, 0));
    std::fill_n(pixels.begin(), 400, Rgba(0, 0, 0, 0));
    builder.AddImage({.label = "img", .data = BuildRgbaGim(40, 20, pixels)});
    builder.AddGmo({.label = "model", .data = Bytes(8)});
    path = folder.Write("file.rco", builder.Build().bytes);
  }

  PictureBox* Small() { return Find<PictureBox>("picPreview"); }
  frmPreview* Large() { return Find<frmPreview>("frmPreview"); }
  void OpenLarge() {
    QTest::mouseClick(Small(), Qt::LeftButton);
    QTest::qWait(1);
  }
  // The colour dialog is answered with that colour; with an invalid one it is cancelled.
  void Choose(const QColor& expected, const QColor& colour) {
    dialogs.Expect<QColorDialog>([=](QColorDialog& dialog) {
      EXPECT_EQ(dialog.currentColor(), expected);
      if (!colour.isValid()) {
        QTest::keyClick(&dialog, Qt::Key_Escape);
        return;
      }
      dialog.setCurrentColor(colour);
      QTest::keyClick(&dialog, Qt::Key_Return);
    });
    QTest::mouseClick(Large(), Qt::RightButton);
  }
  // Of the upper half, which shows the background, and of the lower one.
  static std::pair<QColor, QColor> Halves(const PictureBox& box) {
    return {box.Picture().pixelColor(20, 5), box.Picture().pixelColor(20, 15)};
  }

  RcoBuilder builder;
  std::filesystem::path path;
};

const QColor kRed(200, 0, 0);

TEST_F(PreviewWindowTest, ClickOnThePictureShowsItLargeOverTheSameBackground) {
  Start(path.string());
  ClickRow("lst", 0);
  EXPECT_FALSE(Large()->isVisible());
  OpenLarge();
  EXPECT_TRUE(Large()->isVisible());
  EXPECT_TRUE(Large()->isWindow());
  EXPECT_FALSE(Large()->isModal());
  EXPECT_EQ(Large()->parentWidget(), &form);
  EXPECT_EQ(Large()->Picture(), Small()->Picture());
  EXPECT_EQ(Halves(*Large()), std::pair(QColor(Qt::white), kRed));
  ClickRow("lst", 1);
  EXPECT_TRUE(Small()->Picture().isNull());
  EXPECT_TRUE(Large()->Picture().isNull());
  ClickRow("lst", 0);
  EXPECT_EQ(Large()->Picture(), Small()->Picture()) << "it follows the selection";
}

TEST_F(PreviewWindowTest, RightButtonChoosesTheBackgroundOfBoth) {
  Start(path.string());
  ClickRow("lst", 0);
  OpenLarge();
  const QColor blue(10, 20, 230);
  Choose(Qt::white, blue);
  for (const PictureBox* box : {Small(), static_cast<PictureBox*>(Large())}) {
    EXPECT_EQ(box->Background(), blue);
    EXPECT_EQ(Halves(*box), std::pair(blue, kRed)) << "drawn anew";
  }
  Choose(blue, QColor());
  EXPECT_EQ(Small()->Background(), blue) << "cancelled";
  EXPECT_EQ(Large()->Background(), blue);
  Large()->close();
  OpenLarge();
  EXPECT_EQ(Large()->Background(), blue) << "the small picture's, for a window that opens";
  EXPECT_EQ(Halves(*Large()), std::pair(blue, kRed));
}

TEST_F(PreviewWindowTest, NoticeStandsOutFromEveryBackground) {
  Start(path.string());
  ClickRow("lst", 1);
  OpenLarge();
  const auto ink = [this] { return Find("lblPreviewFail")->palette().color(QPalette::WindowText); };
  EXPECT_EQ(ink(), QColor(Qt::black));
  Choose(Qt::white, QColor(20, 20, 60));
  EXPECT_EQ(ink(), QColor(Qt::white));
  Choose(QColor(20, 20, 60), QColor(240, 230, 90));
  EXPECT_EQ(ink(), QColor(Qt::black));
}

TEST_F(PreviewWindowTest, OtherButtonsDoNothing) {
  Start(path.string());
  ClickRow("lst", 0);
  OpenLarge();
  QTest::mouseClick(Large(), Qt::LeftButton);
  QTest::mouseClick(Large(), Qt::MiddleButton);
  QTest::mouseClick(Small(), Qt::RightButton);
  QTest::qWait(30);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(Large()->Background(), QColor(Qt::white));
}

TEST_F(PreviewWindowTest, ClosedWindowForgetsItsPicture) {
  Start(path.string());
  ClickRow("lst", 0);
  OpenLarge();
  Large()->close();
  dialogs.Expect<QFileDialog>([this](QFileDialog& dialog) {
    In<QLineEdit>(dialog, "fileNameEdit")->setText(QString::fromStdString(path.string()));
    QTest::keyClick(In<QLineEdit>(dialog, "fileNameEdit"), Qt::Key_Return);
  });
  Click("cmdOpen");
  EXPECT_TRUE(Small()->Picture().isNull());
  OpenLarge();
  EXPECT_TRUE(Large()->Picture().isNull()) << "nothing is selected";
}

TEST_F(PreviewWindowTest, CheckBoxShowsTheOutlineOfBoth) {
  Start(path.string());
  ClickRow("lst", 0);
  OpenLarge();
  // The corner of the image; the small picture has a frame of one pixel.
  const auto corner = [](PictureBox* box, int frame) {
    return box->grab().toImage().pixelColor(39 + frame, 19 + frame);
  };
  const QColor line = form.palette().color(QPalette::Highlight);
  EXPECT_EQ(corner(Small(), 1), kRed);
  EXPECT_EQ(corner(Large(), 0), kRed);
  auto* check = Find<QCheckBox>("chkRes");
  check->setFocus();
  Press(Qt::Key_Space);
  EXPECT_EQ(corner(Small(), 1), line);
  EXPECT_EQ(corner(Large(), 0), line);
  ClickRow("lst", 1);
  EXPECT_EQ(corner(Large(), 0), QColor(Qt::white)) << "a model has none";
  ClickRow("lst", 0);
  check->setFocus();
  Press(Qt::Key_Space);
  EXPECT_EQ(corner(Small(), 1), kRed);
  EXPECT_EQ(corner(Large(), 0), kRed);
}

// The painted picture over white, and how far a picture differs from it at most.
int Difference(const sample::Canvas& canvas, const QImage& picture) {
  const Bytes pixels = canvas.Pixels();
  int most = picture.size() == QSize(canvas.Width(), canvas.Height()) ? 0 : 255;
  for (int y = 0; most < 255 && y < canvas.Height(); ++y) {
    for (int x = 0; x < canvas.Width(); ++x) {
      const std::uint8_t* pixel = pixels.data() + (static_cast<std::ptrdiff_t>(y) * canvas.Width() + x) * 4;
      const QColor shown = picture.pixelColor(x, y);
      const int colours[] = {shown.red(), shown.green(), shown.blue()};
      for (int channel = 0; channel < 3; ++channel) {
        const int expected = 255 + (pixel[channel] - 255) * pixel[3] / 255;
        most = std::max(most, std::abs(expected - colours[channel]));
      }
    }
  }
  return most;
}

// The pictures of the sample that are kept without loss, as they were painted.
std::map<QString, sample::Canvas> LosslessPictures() {
  using namespace sample;
  return {{"[GIM] tex_bg_night", NightBackground(480, 272)},
          {"[GIM] tex_dialog", DialogPanel(256, 128)},
          {"[GIM] tex_icon_photo", Tile(64, PhotoGlyph(), 0x4FC3A1, 0x14735B)},
          {"[GIM] tex_icon_calendar", Tile(64, CalendarGlyph(), 0xEB6A5E, 0x9E2222)},
          {"[GIM] tex_icon_star", Tile(64, StarGlyph(), 0xF7CE4B, 0xC88A0F)},
          {"[GIM] tex_white", WhitePixel()},
          {"[PNG] tex_logo", Logo(224, 48)},
          {"[BMP] tex_colour_card", ColourCard(101, 77)},
          {"[BMP] tex_letter_k", Sign(40, LetterGlyph('K', 7), 0xE8A91E)}};
}

bool HasOneColour(const QImage& picture) {
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (picture.pixel(x, y) != picture.pixel(0, 0)) {
        return false;
      }
    }
  }
  return true;
}

TEST_F(PreviewWindowTest, SelectingThroughAllRowsOfTheSampleShowsEach) {
  Start(folder.Write("demo.rco", sample::BuildDemo().bytes).string());
  auto* list = Find<ListBox>("lst");
  auto* dim = Find<QLabel>("lblDim");
  auto* notice = Find("lblPreviewFail");
  const std::map<QString, sample::Canvas> painted = LosslessPictures();
  std::size_t compared = 0;
  list->setFocus();
  for (const QString& row : Rows("lst")) {
    SCOPED_TRACE(row.toStdString());
    Press(Qt::Key_Down);
    ASSERT_EQ(list->currentIndex().data().toString(), row);
    EXPECT_EQ(Find<QLabel>("lblGenItemNo")->text(), QString("项目 #%1").arg(list->Row()));
    const QImage& picture = Small()->Picture();
    if (row.startsWith("[VAG]") || row.startsWith("[GMO]")) {
      EXPECT_TRUE(notice->isVisible());
      EXPECT_EQ(dim->text(), "尺寸:未知");
      EXPECT_TRUE(picture.isNull());
      continue;
    }
    EXPECT_FALSE(notice->isVisible());
    EXPECT_EQ(dim->text(), QString("尺寸: %1x%2").arg(picture.width()).arg(picture.height()));
    if (row.startsWith("[TIF]")) {
      EXPECT_TRUE(picture.isNull()) << "nothing reads these";
      continue;
    }
    EXPECT_EQ(HasOneColour(picture), row == "[GIM] tex_white" || row.contains("tex_arrow"))
        << "white arrows on white are the exception";
    if (const auto expected = painted.find(row); expected != painted.end()) {
      EXPECT_LE(Difference(expected->second, picture), 2);
      ++compared;
    }
  }
  EXPECT_EQ(list->Row(), 65);
  EXPECT_EQ(compared, painted.size());
  for (const std::string& name : std::vector<std::string>{"temp.dat", "temp2.dat", "temp.gim", "temp.bmp"}) {
    EXPECT_FALSE(FileExists(folder / ("program/" + name))) << name;
  }
}

}  // namespace
}  // namespace kelvane::test
