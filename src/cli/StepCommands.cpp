#include <charconv>
#include <memory>
#include <utility>

#include "cli/Commands.h"
#include "common/Encoding.h"
#include "gim/BitmapToGim.h"
#include "gim/GimToBitmap.h"
#include "gim/Palette.h"
#include "imaging/c32bppDIB.h"
#include "platform/QtPictureLoader.h"
#include "resources/Codec.h"

namespace kelvane::cli {

namespace {

constexpr int kBestCompression = 9;

struct Arguments {
  std::string source;
  std::string target;
  bool force32 = false;
  bool index = false;
  bool linear = false;
  std::string icon;
};

void Deflate(Session& session, const Arguments& arguments) {
  if (!CompressFile(PathFromUtf8(arguments.source), PathFromUtf8(arguments.target), kBestCompression)) {
    session.TellFailure("压缩失败");
  }
}

void Inflate(Session& session, const Arguments& arguments) {
  if (!DecompressFile(PathFromUtf8(arguments.source), PathFromUtf8(arguments.target))) {
    session.TellFailure("解压失败");
  }
}

void GimToBmp(Session& session, const Arguments& arguments) {
  if (!GimToBitmap(PathFromUtf8(arguments.source), PathFromUtf8(arguments.target), arguments.force32,
                   session.Folder())) {
    session.TellFailure("无效的GIM");
  }
}

void GimFromBmp(Session& session, const Arguments& arguments) {
  if (!BitmapToGim(PathFromUtf8(arguments.source), PathFromUtf8(arguments.target), arguments.index,
                   arguments.linear ? 0 : 1, session.State().cFirstColTrans)) {
    session.TellFailure("GIM转换失败");
  }
}

void GimColours(Session& session, const Arguments& arguments) {
  Int16 colours;
  const std::filesystem::path source = PathFromUtf8(arguments.source);
  if (!CountBitmapColours(source, colours, false, session.Prompts())) {
    throw Refusal();
  }
  const bool palette = ShouldUsePalette(colours, source, session.State().cImpt32bitMode);
  session.Io().out << colours.Int() << '\t' << (palette ? "palette" : "direct") << '\n';
}

// "CXxCY" as two sizes; a UsageError for anything else.
std::pair<int, int> IconSize(const std::string& text) {
  if (text.empty()) {
    return {0, 0};
  }
  int cx = 0;
  int cy = 0;
  const char* const end = text.data() + text.size();
  const std::from_chars_result first = std::from_chars(text.data(), end, cx);
  const bool both = first.ec == std::errc() && first.ptr != end && *first.ptr == 'x';
  const std::from_chars_result second = both ? std::from_chars(first.ptr + 1, end, cy) : first;
  if (!both || second.ec != std::errc() || second.ptr != end) {
    throw UsageError("--icon: a size is written as in 32x32");
  }
  return {cx, cy};
}

void Image(Session& session, const Arguments& arguments) {
  const auto [cx, cy] = IconSize(arguments.icon);
  QtPictureLoader pictures;
  c32bppDIB image(&pictures);
  if (!image.LoadPicture_File(PathFromUtf8(arguments.source), cx, cy)) {
    throw Refusal(arguments.source + ": the image can't be loaded");
  }
  if (!image.SaveToFile(PathFromUtf8(arguments.target))) {
    throw Refusal(arguments.target + ": the bitmap can't be written");
  }
  Table table({"name", "value"});
  table.Add({std::string("Width"), std::int64_t{image.Width()}});
  table.Add({std::string("Height"), std::int64_t{image.Height()}});
  table.Add({std::string("Alpha"), std::int64_t{image.Alpha() ? 1 : 0}});
  table.Add({std::string("ImageType"), static_cast<std::int64_t>(image.ImageType())});
  session.Print(table);
}

}  // namespace

void AddStepCommands(CLI::App& app, Action& action) {
  const auto arguments = std::make_shared<Arguments>();
  const auto add = [&](CLI::App& parent, const char* name, const char* description, auto run) {
    CLI::App* command = parent.add_subcommand(name, description);
    command->add_option("SRC", arguments->source, "The file to read")->required();
    command->callback(
        [arguments, &action, run] { action = [arguments, run](Session& session) { run(session, *arguments); }; });
    return command;
  };
  const auto withTarget = [&](CLI::App* command) {
    command->add_option("DEST", arguments->target, "The file to write")->required();
    return command;
  };
  withTarget(add(app, "deflate", "Compresses a file as resources are stored", Deflate));
  withTarget(add(app, "inflate", "Unpacks a file that was compressed so", Inflate));
  withTarget(add(app, "image", "Converts an image to a 32-bit bitmap and prints what it is", Image))
      ->add_option("--icon", arguments->icon, "The wanted size of an icon, as in 32x32");

  CLI::App* gim = app.add_subcommand("gim", "GIM images");
  gim->require_subcommand(1);
  withTarget(add(*gim, "to-bmp", "Converts a GIM file to a bitmap", GimToBmp))
      ->add_flag("--force32", arguments->force32, "Gives every pixel 32 bits instead of keeping depth and palette");
  CLI::App* fromBmp =
      withTarget(add(*gim, "from-bmp", "Converts a bitmap of 4, 8 or 32 bits to a GIM file", GimFromBmp));
  fromBmp->add_flag("--index", arguments->index, "Gives a 32-bit bitmap a palette");
  fromBmp->add_flag("--linear", arguments->linear, "Stores the rows one after the other instead of tiles");
  add(*gim, "colours", "Counts the colours of a bitmap and tells what the settings make of it", GimColours);
}

}  // namespace kelvane::cli
