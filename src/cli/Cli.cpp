#include "cli/Cli.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "cli/Commands.h"
#include "common/RuntimeFailure.h"

namespace kelvane::cli {

namespace {

void AddOptions(CLI::App& app, Options& options) {
  app.set_version_flag("--version", "kelvane " KELVANE_VERSION);
  CLI::Option* yes = app.add_flag("--yes", options.yes, "Answer every question with Yes");
  app.add_flag("--no", options.no, "Answer every question with No")->excludes(yes);
  app.add_flag("--json", options.json, "Print listings as JSON");
  app.add_flag("--no-backup", options.noBackup, "Make no .bak");
  app.add_flag("--no-compression", options.noCompression, "Store images and models uncompressed");
  app.add_option("--import32", options.import32, "32 bit bitmaps: ask before a 32 bit GIM, decide by size, or always")
      ->transform(
          CLI::CheckedTransformer(std::vector<std::pair<std::string, int>>{{"ask", 0}, {"auto", 1}, {"always", 2}}));
  app.add_flag("--first-colour-transparent", options.firstColourTransparent,
               "4 and 8 bit bitmaps: the first colour becomes transparent");
  app.add_flag("--expert", options.expert, "Show the types of page and animation entries");
}

// Takes decimal numbers alone. The parser would take none for 0, and a zero in front for the sign of octal digits.
CLI::Validator DecimalNumber() {
  return CLI::Validator(
      [](std::string& text) {
        const std::size_t start = text.starts_with('-') ? 1 : 0;
        if (text.size() == start || text.find_first_not_of("0123456789", start) != std::string::npos) {
          return "'" + text + "' is no decimal number";
        }
        text.erase(start, std::min(text.find_first_not_of('0', start), text.size() - 1) - start);
        return std::string();
      },
      "");
}

// Rows, items and the like of all commands below `app`.
void TakeDecimalNumbers(CLI::App& app) {
  const auto isNumber = [](const CLI::Option* option) { return option->get_type_name().starts_with("INT"); };
  for (CLI::App* command : app.get_subcommands({})) {
    for (CLI::Option* option : command->get_options(isNumber)) {
      option->transform(DecimalNumber());
    }
    TakeDecimalNumbers(*command);
  }
}

int RunAction(const Action& action, const Options& options, const Streams& streams) {
  try {
    Session session(options, streams);
    try {
      action(session);
    } catch (const Refusal& refusal) {
      if (*refusal.what() != '\0') {
        session.TellFailure(refusal.what());
      }
      return kRefused;
    }
    return session.Prompts().Refused() ? kRefused : kDone;
  } catch (const UsageError& error) {
    streams.err << error.what() << '\n';
    return kWrongUsage;
  } catch (...) {
    const RuntimeFailure failure = CurrentFailure();
    streams.err << "Run-time error '" << failure.Number() << "': " << failure.Description() << '\n';
    return kFailed;
  }
}

}  // namespace

int RunCli(std::vector<std::string> arguments, const Streams& streams) {
  CLI::App app("Looks at and changes RCO files, the resource containers of the PlayStation Portable firmware.",
               "kelvane");
  Options options;
  Action action;
  app.require_subcommand(1);
  app.fallthrough();
  AddOptions(app, options);
  AddListCommands(app, action);
  AddTextCommands(app, action);
  AddPageCommands(app, action);
  AddResourceCommands(app, action);
  AddStepCommands(app, action);
  TakeDecimalNumbers(app);

  std::reverse(arguments.begin(), arguments.end());  // the parser takes them from the end
  try {
    app.parse(std::move(arguments));
  } catch (const CLI::ParseError& error) {
    const bool asked = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success);
    app.exit(error, streams.out, streams.err);
    return asked ? kDone : kWrongUsage;
  }
  return RunAction(action, options, streams);
}

}  // namespace kelvane::cli
