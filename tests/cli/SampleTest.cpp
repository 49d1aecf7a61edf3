// The main job on the sample file: what the builder put in is what the commands print and write.

#include <QImage>
#include <zlib.h>

#include "cli/CliFixture.h"
#include "samples/Demo.h"

namespace kelvane {
namespace {

// The plain form of what is stored behind two bytes of head, by zlib itself.
Bytes Inflated(const Bytes& wrapper, std::size_t size) {
  Bytes plain(size);
  z_stream stream{};
  EXPECT_EQ(inflateInit2(&stream, -15), Z_OK);
  Bytes source(wrapper.begin() + 2, wrapper.end());
  stream.next_in = source.data();
  stream.avail_in = static_cast<uInt>(source.size());
  stream.next_out = plain.data();
  stream.avail_out = static_cast<uInt>(plain.size());
  EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
  inflateEnd(&stream);
  return plain;
}

class SampleTest : public test::CliFixture {
 protected:
  SampleTest() {
    sample::AddDemoImages(builder);
    sample::AddDemoSoundsAndModels(builder);
    built = sample::BuildDemo();
    path = File("demo.rco", built.bytes);
  }
  [[nodiscard]] Bytes Out(const std::string& name) const { return ReadWholeFile(folder / ("out/" + name)); }

  test::RcoBuilder builder;  // the general resources' descriptions
  test::BuiltRco built;
  std::string path;
};

constexpr const char* kExtensions[] = {"png", "jpg", "tiff", "gif", "bmp", "gim"};

TEST_F(SampleTest, ListPrintsEveryResourceInItsOrder) {
  constexpr const char* kPrefixes[] = {"[PNG] ", "[JPG] ", "[TIF] ", "[GIF] ", "[BMP] ", "[GIM] "};
  std::ostringstream expected;
  int row = 0;
  for (const test::ImageSpec& image : builder.Description().images) {
    expected << row++ << '\t' << kPrefixes[image.format] << *image.label << '\n';
  }
  for (const test::VagSpec& vag : builder.Description().vags) {
    expected << row++ << "\t[VAG] " << *vag.label << '\n';
  }
  for (const test::GmoSpec& gmo : builder.Description().gmos) {
    expected << row++ << "\t[GMO] " << *gmo.label << '\n';
  }
  EXPECT_EQ(Run({"list", path}).out, expected.str());
}

TEST_F(SampleTest, InfoPrintsTheCounts) {
  const std::string out = Run({"info", path}).out;
  EXPECT_TRUE(
      out.starts_with("version\t113\ngenCount\t66\ntextCount\t120\nlangCount\t12\npageCount\t30\nanimCount\t10\n"))
      << out;
}

TEST_F(SampleTest, ExtractAllWritesWhatTheBuilderPutIn) {
  ASSERT_EQ(Run({"extract-all", path, (folder / "out").string()}).status, 0);
  for (const test::ImageSpec& image : builder.Description().images) {
    const std::string name = *image.label + "." + kExtensions[image.format];
    if (image.compression == 0) {
      EXPECT_EQ(Out(name), image.data) << name;
      continue;
    }
    EXPECT_EQ(Out(*image.label + ".dat"), image.data) << name;
    EXPECT_EQ(Out(name), Inflated(image.data, static_cast<std::size_t>(*image.unpackedSize))) << name;
  }
  for (const test::VagSpec& vag : builder.Description().vags) {
    EXPECT_EQ(Out(*vag.label + (vag.channel2 ? ".ch1.vag" : ".vag")), vag.channel1) << *vag.label;
    if (vag.channel2) {
      EXPECT_EQ(Out(*vag.label + ".ch2.vag"), *vag.channel2) << *vag.label;
    }
  }
  for (const test::GmoSpec& gmo : builder.Description().gmos) {
    EXPECT_EQ(Out(*gmo.label + ".dat"), gmo.data) << *gmo.label;
  }
  EXPECT_EQ(ReadWholeFile(path), built.bytes);
}

// What a picture looks like on white. Small differences come from alpha being multiplied in and out again.
void ExpectLooksLike(const QImage& shown, const QImage& expected, const std::string& name) {
  ASSERT_EQ(shown.size(), expected.size()) << name;
  const auto onWhite = [](const QColor& colour, int channel) {
    return (channel * colour.alpha() + 255 * (255 - colour.alpha())) / 255.0;
  };
  for (int y = 0; y < shown.height(); ++y) {
    for (int x = 0; x < shown.width(); ++x) {
      const QColor left = shown.pixelColor(x, y);
      const QColor right = expected.pixelColor(x, y);
      ASSERT_NEAR(onWhite(left, left.red()), onWhite(right, right.red()), 2) << name << ' ' << x << ' ' << y;
      ASSERT_NEAR(onWhite(left, left.green()), onWhite(right, right.green()), 2) << name << ' ' << x << ' ' << y;
      ASSERT_NEAR(onWhite(left, left.blue()), onWhite(right, right.blue()), 2) << name << ' ' << x << ' ' << y;
    }
  }
}

TEST_F(SampleTest, SelectingThroughAllRowsShowsEachImageAsTheToolkitReadsIt) {
  int row = 0;
  int compared = 0;
  for (const test::ImageSpec& image : builder.Description().images) {
    const std::string picture = (folder / (*image.label + ".png")).string();
    const test::CliResult result = Run({"preview", path, std::to_string(row++), picture});
    if (image.format == rco::kFormatTif) {
      // No reader takes it.
      EXPECT_EQ(result.status, 1) << *image.label;
      EXPECT_NE(result.out.find("lblDim\t尺寸: 0x0\n"), std::string::npos) << *image.label;
      continue;
    }
    EXPECT_EQ(result.status, 0) << *image.label;
    EXPECT_NE(result.out.find("lblPreviewFail\thidden\n"), std::string::npos) << *image.label;
    const Bytes file =
        image.compression == 0 ? image.data : Inflated(image.data, static_cast<std::size_t>(*image.unpackedSize));
    // The toolkit doesn't read the images of the firmware, and loses the alpha of 32-bit bitmaps.
    const bool isWideBitmap = image.format == rco::kFormatBmp && ReadU16(file, 28) == 32;
    if (image.format != rco::kFormatGim && !isWideBitmap) {
      QImage shown;
      QImage expected;
      ASSERT_TRUE(shown.load(QString::fromStdString(picture)));
      ASSERT_TRUE(expected.loadFromData(file.data(), static_cast<int>(file.size()))) << *image.label;
      ExpectLooksLike(shown, expected, *image.label);
      ++compared;
    }
  }
  EXPECT_EQ(compared, 7);
}

TEST_F(SampleTest, SelectingThroughAllRowsShowsTheNoticeForSoundsAndModels) {
  const test::RcoDescription& description = builder.Description();
  const std::size_t first = description.images.size();
  const std::size_t end = first + description.vags.size() + description.gmos.size();
  for (std::size_t row = first; row < end; ++row) {
    const test::CliResult result = Run({"preview", path, std::to_string(row)});
    EXPECT_EQ(result.status, 0) << row;
    EXPECT_NE(result.out.find("lblDim\t尺寸:未知\n"), std::string::npos) << row;
    EXPECT_NE(result.out.find("lblPreviewFail\tshown\n"), std::string::npos) << row;
  }
}

TEST_F(SampleTest, EverythingGoesOutAndComesBackAndASecondRoundChangesNoByte) {
  std::vector<std::string> before;
  for (int row = 0; row < 60; ++row) {
    before.push_back(Run({"preview", path, std::to_string(row), (folder / "a.png").string()}).out.substr(0, 40));
    std::filesystem::copy_file(folder / "a.png", folder / (std::to_string(row) + ".png"));
  }
  const std::string out = (folder / "out").string();
  ASSERT_EQ(Run({"extract-all", path, out}).status, 0);
  ASSERT_EQ(Run({"replace-all", path, out}).status, 0);
  for (int row = 0; row < 60; ++row) {
    const std::string name = std::to_string(row);
    EXPECT_EQ(Run({"preview", path, name, (folder / "a.png").string()}).out.substr(0, 40),
              before[static_cast<std::size_t>(row)]);
    EXPECT_EQ(ReadWholeFile(folder / "a.png"), ReadWholeFile(folder / (name + ".png"))) << "row " << row;
  }
  const Bytes once = ReadWholeFile(path);
  ASSERT_EQ(Run({"replace-all", path, out}).status, 0);
  EXPECT_EQ(ReadWholeFile(path), once);
  EXPECT_EQ(ReadWholeFile(path + ".bak"), built.bytes);
}

}  // namespace
}  // namespace kelvane
