#include <functional>
#include <stdexcept>

#include "samples/Demo.h"
#include "samples/Glyphs.h"
#include "samples/ImageFiles.h"
#include "samples/Pictures.h"
#include "samples/Quantise.h"
#include "support/GimBuilder.h"

namespace kelvane::sample {

namespace {

enum class Kind { kGim4, kGim8, kGim32, kPng, kPngIndexed, kPngGrey, kJpg, kTif, kGif, kBmp8, kBmp24, kBmp32 };

struct DemoImage {
  const char* label;
  Kind kind;
  bool tiled;  // of a GIM
  bool packed;
  std::function<Canvas()> paint;
};

constexpr bool kTiled = true;
constexpr bool kLinear = false;
constexpr bool kPacked = true;
constexpr bool kStored = false;
constexpr bool kNoOrder = false;  // of any other format

std::vector<std::uint32_t> GimColours(const std::vector<Rgba8>& colours, std::size_t count) {
  std::vector<std::uint32_t> words;
  words.reserve(count);
  for (const Rgba8& colour : colours) {
    words.push_back(test::Rgba(colour[0], colour[1], colour[2], colour[3]));
  }
  words.resize(count);
  return words;
}

Bytes Gim(ByteView rgba, int width, int height, int bits, bool tiled) {
  if (bits == 32) {
    std::vector<std::uint32_t> pixels;
    pixels.reserve(rgba.size() / 4);
    for (std::size_t at = 0; at < rgba.size(); at += 4) {
      pixels.push_back(test::Rgba(rgba[at], rgba[at + 1], rgba[at + 2], rgba[at + 3]));
    }
    return test::BuildRgbaGim(width, height, pixels, tiled);
  }
  const std::size_t colours = std::size_t{1} << bits;
  const bool large = width * height > 256 * 256;  // a wide gradient shows steps without
  const IndexedPixels indexed = Quantise(rgba, width, colours, large);
  return test::BuildIndexedGim(width, height, bits, {indexed.indexes.begin(), indexed.indexes.end()},
                               GimColours(indexed.colours, colours), tiled);
}

Bytes FileOf(const DemoImage& image, const Canvas& canvas) {
  const Bytes rgba = canvas.Pixels();
  const int width = canvas.Width();
  const int height = canvas.Height();
  switch (image.kind) {
    case Kind::kGim4:
      return Gim(rgba, width, height, 4, image.tiled);
    case Kind::kGim8:
      return Gim(rgba, width, height, 8, image.tiled);
    case Kind::kGim32:
      return Gim(rgba, width, height, 32, image.tiled);
    case Kind::kPng:
      return PngRgba(rgba, width, height);
    case Kind::kPngIndexed:
      return PngIndexed(rgba, width, height);
    case Kind::kPngGrey:
      return PngGrey(rgba, width, height);
    case Kind::kJpg:
      return Jpeg(rgba, width, height);
    case Kind::kTif:
      return Tiff(rgba, width, height);
    case Kind::kGif:
      return Gif(rgba, width, height);
    case Kind::kBmp8:
      return Bmp8(rgba, width, height);
    case Kind::kBmp24:
      return Bmp24(rgba, width, height);
    case Kind::kBmp32:
      return Bmp32(rgba, width, height);
  }
  throw std::invalid_argument("no such kind of image");
}

std::uint16_t FormatOf(Kind kind) {
  switch (kind) {
    case Kind::kPng:
    case Kind::kPngIndexed:
    case Kind::kPngGrey:
      return rco::kFormatPng;
    case Kind::kJpg:
      return rco::kFormatJpg;
    case Kind::kTif:
      return rco::kFormatTif;
    case Kind::kGif:
      return rco::kFormatGif;
    case Kind::kBmp8:
    case Kind::kBmp24:
    case Kind::kBmp32:
      return rco::kFormatBmp;
    default:
      return rco::kFormatGim;
  }
}

DemoImage IconTile(const char* label, const Shape& glyph, std::uint32_t top, std::uint32_t bottom, bool tiled,
                   bool packed) {
  return {label, Kind::kGim32, tiled, packed, [=] { return Tile(64, glyph, top, bottom); }};
}

DemoImage Glyph4(const char* label, int size, const Shape& glyph, std::uint32_t rgb, bool tiled) {
  return {label, Kind::kGim4, tiled, kPacked, [=] { return Sign(size, glyph, rgb); }};
}

std::vector<DemoImage> Grounds() {
  return {
      {"tex_bg_wave", Kind::kGim8, kTiled, kPacked, [] { return WaveBackground(480, 272); }},
      {"tex_bg_night", Kind::kGim32, kTiled, kPacked, [] { return NightBackground(480, 272); }},
      {"tex_bg_line", Kind::kGim4, kLinear, kPacked, [] { return LineBackground(480, 272); }},
      {"tex_dialog", Kind::kGim32, kLinear, kPacked, [] { return DialogPanel(256, 128); }},
  };
}

std::vector<DemoImage> Tiles() {
  return {
      IconTile("tex_icon_settings", GearGlyph(), 0x8E9BB0, 0x3F4A5E, kTiled, kPacked),
      IconTile("tex_icon_photo", PhotoGlyph(), 0x4FC3A1, 0x14735B, kTiled, kPacked),
      IconTile("tex_icon_music", MusicGlyph(), 0xF0679E, 0xA01F58, kTiled, kPacked),
      IconTile("tex_icon_video", VideoGlyph(), 0xB07CF0, 0x56259C, kTiled, kPacked),
      IconTile("tex_icon_game", GameGlyph(), 0x5AA5F5, 0x1B4FA8, kTiled, kPacked),
      IconTile("tex_icon_network", GlobeGlyph(), 0x49B8E8, 0x11618F, kTiled, kPacked),
      IconTile("tex_icon_mail", MailGlyph(), 0xF7B64A, 0xC46A12, kTiled, kPacked),
      IconTile("tex_icon_clock", ClockGlyph(), 0xF08C5A, 0xB2401C, kTiled, kPacked),
      IconTile("tex_icon_calendar", CalendarGlyph(), 0xEB6A5E, 0x9E2222, kLinear, kPacked),
      IconTile("tex_icon_folder", FolderGlyph(), 0xF2C95B, 0xB8841B, kLinear, kPacked),
      IconTile("tex_icon_memory_card", MemoryCardGlyph(), 0x6C86E0, 0x2A3C94, kLinear, kPacked),
      IconTile("tex_icon_disc", DiscGlyph(), 0x8C94F2, 0x3D3FA6, kLinear, kPacked),
      IconTile("tex_icon_search", SearchGlyph(), 0x5CC9C0, 0x16746F, kTiled, kStored),
      IconTile("tex_icon_help", QuestionGlyph(), 0x67B8F0, 0x1F66AC, kTiled, kStored),
      IconTile("tex_icon_info", InfoGlyph(), 0x5E9CF3, 0x1E4DB0, kTiled, kPacked),
      IconTile("tex_icon_warning", WarningGlyph(), 0xF5B23D, 0xC76E0D, kTiled, kPacked),
      IconTile("tex_icon_error", CrossGlyph(), 0xEF5F57, 0xA01B25, kTiled, kPacked),
      IconTile("tex_icon_ok", CheckGlyph(), 0x76D06B, 0x237A33, kTiled, kPacked),
      IconTile("tex_icon_star", StarGlyph(), 0xF7CE4B, 0xC88A0F, kLinear, kStored),
      IconTile("tex_icon_heart", HeartGlyph(), 0xF57A8D, 0xB7244C, kTiled, kPacked),
      IconTile("tex_icon_lock", LockGlyph(), 0x90A4AE, 0x37474F, kTiled, kPacked),
      IconTile("tex_icon_key", KeyGlyph(), 0xD9B36C, 0x8A5F1D, kTiled, kPacked),
      IconTile("tex_icon_user", UserGlyph(), 0x6FC6E3, 0x226E94, kTiled, kPacked),
      IconTile("tex_icon_trash", TrashGlyph(), 0xA7AEBB, 0x525B6B, kTiled, kPacked),
  };
}

std::vector<DemoImage> Displays() {
  return {
      {"tex_dial_volume", Kind::kGim8, kTiled, kPacked, [] { return Dial(64, 0.7F, 0x3E8EF7); }},
      {"tex_dial_brightness", Kind::kGim8, kLinear, kPacked, [] { return Dial(64, 0.35F, 0xF2A81D); }},
      {"tex_clock_face", Kind::kGim8, kTiled, kPacked, [] { return AnalogClock(96, 10, 9); }},
      {"tex_weather_sun", Kind::kGim8, kTiled, kPacked, [] { return WeatherSun(48); }},
      {"tex_weather_cloud", Kind::kGim8, kLinear, kPacked, [] { return WeatherCloud(48); }},
      {"tex_weather_moon", Kind::kGim8, kTiled, kStored, [] { return WeatherMoon(48); }},
      {"tex_progress", Kind::kGim8, kTiled, kPacked, [] { return ProgressBar(100, 30, 0.62F); }},
      {"tex_battery_full", Kind::kGim4, kTiled, kPacked, [] { return Battery(1, 0x57C84D); }},
      {"tex_battery_half", Kind::kGim4, kTiled, kPacked, [] { return Battery(0.5F, 0xF2B632); }},
      {"tex_battery_low", Kind::kGim4, kLinear, kPacked, [] { return Battery(0.15F, 0xE2483D); }},
      {"tex_signal_0", Kind::kGim4, kTiled, kPacked, [] { return Signal(0); }},
      {"tex_signal_1", Kind::kGim4, kTiled, kPacked, [] { return Signal(1); }},
      {"tex_signal_2", Kind::kGim4, kTiled, kPacked, [] { return Signal(2); }},
      {"tex_signal_3", Kind::kGim4, kLinear, kStored, [] { return Signal(3); }},
  };
}

std::vector<DemoImage> Buttons() {
  return {
      {"tex_button_o", Kind::kGim8, kTiled, kPacked, [] { return RoundButton(32, 'o', 0xF06A6A); }},
      {"tex_button_x", Kind::kGim8, kTiled, kPacked, [] { return RoundButton(32, 'x', 0x7FA8F5); }},
      {"tex_button_s", Kind::kGim8, kLinear, kPacked, [] { return RoundButton(32, 's', 0xE58BD0); }},
      {"tex_button_t", Kind::kGim8, kLinear, kPacked, [] { return RoundButton(32, 't', 0x6FD6A9); }},
      Glyph4("tex_arrow_up", 24, ArrowGlyph(0), 0xFFFFFF, kTiled),
      Glyph4("tex_arrow_down", 24, ArrowGlyph(0.5F), 0xFFFFFF, kTiled),
      Glyph4("tex_arrow_left", 24, ArrowGlyph(0.75F), 0xFFFFFF, kLinear),
      Glyph4("tex_arrow_right", 24, ArrowGlyph(0.25F), 0xFFFFFF, kLinear),
      {"tex_white", Kind::kGim32, kTiled, kStored, [] { return WhitePixel(); }},
  };
}

std::vector<DemoImage> OtherFormats() {
  return {
      {"tex_logo", Kind::kPng, kNoOrder, kStored, [] { return Logo(224, 48); }},
      {"tex_badge", Kind::kPngIndexed, kNoOrder, kStored, [] { return Badge(63); }},
      {"tex_map_grey", Kind::kPngGrey, kNoOrder, kPacked, [] { return Landscape(121, 90); }},
      {"tex_photo_sample", Kind::kJpg, kNoOrder, kStored, [] { return Landscape(160, 120); }},
      {"tex_print", Kind::kTif, kNoOrder, kPacked, [] { return ColourCard(64, 49); }},
      {"tex_spinner", Kind::kGif, kNoOrder, kStored, [] { return Spinner(48); }},
      {"tex_colour_card", Kind::kBmp24, kNoOrder, kPacked, [] { return ColourCard(101, 77); }},
      {"tex_letter_k", Kind::kBmp32, kNoOrder, kStored, [] { return Sign(40, LetterGlyph('K', 7), 0xE8A91E); }},
      {"tex_colour_card_8", Kind::kBmp8, kNoOrder, kStored, [] { return ColourCard(50, 38); }},
  };
}

}  // namespace

void AddDemoImages(test::RcoBuilder& builder) {
  for (const std::vector<DemoImage>& group : {Grounds(), Tiles(), Displays(), Buttons(), OtherFormats()}) {
    for (const DemoImage& image : group) {
      const Bytes file = FileOf(image, image.paint());
      // All entries have the same length, so that choosing an image for a page finds them by its number.
      builder.AddImage(
          {.label = image.label,
           .format = FormatOf(image.kind),
           .compression = static_cast<std::uint16_t>(image.packed ? rco::kCompressionZlib : rco::kCompressionNone),
           .data = image.packed ? test::DeflateWrapped(file) : file,
           .unpackedSize = static_cast<std::int32_t>(file.size())});
    }
  }
}

}  // namespace kelvane::sample
