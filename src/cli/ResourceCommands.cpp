#include <QImage>
#include <QString>
#include <filesystem>
#include <memory>

#include "cli/Commands.h"
#include "common/Encoding.h"
#include "platform/QImageSurface.h"

namespace kelvane::cli {

namespace {

struct Arguments {
  std::string file;
  int row = 0;
  int filter = 1;
  std::string path;
  std::string right;
  AddGenFields fields;
};

void Extract(Session& session, const Arguments& arguments) {
  session.RequireRow(session.Document().lst, arguments.row, "ROW");
  session.App().lst_Click(arguments.row);
  session.Prompts().AnswerFile({.path = PathFromUtf8(arguments.path), .filterNumber = arguments.filter});
  session.App().cmdExtract();
  if (arguments.path.empty() || !session.Prompts().FilesAsked()) {
    throw Refusal();  // cancelled, or a resource that the editor has no dialog for
  }
}

void ExtractAll(Session& session, const Arguments& arguments) {
  if (arguments.path.empty()) {
    throw Refusal();  // cancelled
  }
  const std::filesystem::path folder = PathFromUtf8(arguments.path);
  std::filesystem::create_directories(folder);
  session.Prompts().AnswerFolder(folder);
  session.App().cmdExtractAll();
}

void Replace(Session& session, const Arguments& arguments) {
  session.RequireRow(session.Document().lst, arguments.row, "ROW");
  session.App().lst_Click(arguments.row);
  const std::filesystem::path source = PathFromUtf8(arguments.path);
  session.Prompts().AnswerFile({.path = source, .filterNumber = 1});
  session.Prompts().AnswerVag(
      {.left = source, .right = PathFromUtf8(arguments.right), .stereo = !arguments.right.empty()});
  if (!session.App().cmdReplace()) {
    throw Refusal();
  }
}

void ReplaceAll(Session& session, const Arguments& arguments) {
  const std::filesystem::path folder = PathFromUtf8(arguments.path);
  if (!std::filesystem::is_directory(folder)) {
    throw Refusal(arguments.path + " is no folder");
  }
  session.Prompts().AnswerFolder(folder);
  session.App().cmdReplaceAll();
}

void Add(Session& session, const Arguments& arguments) {
  if (!session.App().frmAddGen_cmdOK(arguments.fields)) {
    throw Refusal();
  }
}

// Keeps what is drawn, in its natural size.
class PictureKeeper : public Surface {
 public:
  void Clear() override { picture_ = QImage(); }
  bool Blend(const PixelView& source, std::int32_t /*x*/, std::int32_t /*y*/, std::int32_t /*width*/,
             std::int32_t /*height*/, std::uint8_t /*constantAlpha*/, bool perPixelAlpha) override {
    picture_ = ImageOf(source, perPixelAlpha);
    return !picture_.isNull();
  }
  [[nodiscard]] const QImage& Picture() const { return picture_; }

 private:
  QImage picture_;
};

void Preview(Session& session, const Arguments& arguments) {
  session.RequireRow(session.Document().lst, arguments.row, "ROW");
  PictureKeeper keeper;
  session.App().DrawOn(&keeper);
  session.App().lst_Click(arguments.row);
  session.App().DrawOn(nullptr);

  const GeneralDisplay& display = session.Document().general;
  Table table({"name", "text"});
  table.Add({std::string("lblGenItemNo"), display.lblGenItemNo});
  table.Add({std::string("lblDim"), display.lblDim});
  table.Add({std::string("lblGenCompr"), display.lblGenCompr});
  table.Add({std::string("lblGenOffsetEntry"), display.lblGenOffsetEntry});
  table.Add({std::string("lblGenOffsetData"), display.lblGenOffsetData});
  table.Add({std::string("lblPreviewFail"), std::string(display.lblPreviewFailVisible ? "shown" : "hidden")});
  session.Print(table);
  if (arguments.path.empty()) {
    return;
  }
  const QImage straight = keeper.Picture().convertToFormat(QImage::Format_RGBA8888);
  if (straight.isNull()) {
    throw Refusal("there is no picture to write");
  }
  if (!straight.save(QString::fromStdString(arguments.path), "PNG")) {
    throw Refusal(arguments.path + ": the picture can't be written");
  }
}

}  // namespace

void AddResourceCommands(CLI::App& app, Action& action) {
  const auto arguments = std::make_shared<Arguments>();
  const auto add = [&](const char* name, const char* description, auto run) {
    CLI::App* command = app.add_subcommand(name, description);
    command->add_option("FILE", arguments->file, "The RCO file")->required();
    command->callback([arguments, &action, run] {
      action = [arguments, run](Session& session) {
        session.Open(arguments->file);
        run(session, *arguments);
      };
    });
    return command;
  };

  CLI::App* extract = add("extract", "Writes one resource to a file", Extract);
  extract->add_option("ROW", arguments->row, "The resource's row, counted from 0")->required();
  extract->add_option("DEST", arguments->path, "The file to write")->required();
  extract->add_option("--as", arguments->filter, "The number of the save dialog's filter, from 1");
  add("extract-all", "Writes all resources to a folder", ExtractAll)
      ->add_option("DIR", arguments->path, "The folder")
      ->required();

  CLI::App* replace = add("replace", "Puts a file in the place of one resource", Replace);
  replace->add_option("ROW", arguments->row, "The resource's row, counted from 0")->required();
  replace->add_option("SRC", arguments->path, "The file; of a sound the left channel")->required();
  replace->add_option("--right", arguments->right, "The file of a sound's right channel, which makes it stereo");
  add("replace-all", "Puts all files of a folder that are named after resources in their places", ReplaceAll)
      ->add_option("DIR", arguments->path, "The folder")
      ->required();
  CLI::App* addNew = add("add", "Adds a resource", Add);
  addNew->add_option("SRC", arguments->fields.txtFile, "The file")->required();
  addNew->add_option("--at", arguments->fields.txtPos, "The row that it is put before")->required();
  addNew->add_option("--label", arguments->fields.txtLabel, "Its name")->required();
  CLI::App* preview = add("preview", "Prints what the selection of a resource shows", Preview);
  preview->add_option("ROW", arguments->row, "The resource's row, counted from 0")->required();
  preview->add_option("OUT", arguments->path, "A PNG file to write the picture to");

  CLI::App* plain = app.add_subcommand("plain", "Converts a file with a deflated head to a plain one");
  plain->add_option("FILE", arguments->file, "The RCO file")->required();
  plain->callback([arguments, &action] {
    action = [arguments](Session& session) {
      session.Prompts().AnswerQuestions(Answering::Yes);
      session.Open(arguments->file);
    };
  });
}

}  // namespace kelvane::cli
