#include <iterator>
#include <memory>
#include <optional>

#include "cli/Commands.h"
#include "common/Encoding.h"
#include "text/TextString.h"

namespace kelvane::cli {

namespace {

struct Arguments {
  std::string file;
  int lang = 0;
  int item = 0;
  std::optional<int> from;
  std::string text;
  std::string at;
  std::string label;
};

// Selects a language and a text, as clicks on them do.
void Choose(Session& session, int lang, int item) {
  session.RequireRow(session.Document().cboTextLang, lang, "LANG");
  session.RequireRow(session.Document().lstText, item, "ITEM");
  session.App().cboTextLang_Click(lang);
  session.App().lstText_Click(item);
}

void PrintLangs(Session& session) {
  const ListLines& list = session.Document().cboTextLang;
  Table table({"lang", "name"});
  for (int row = 0; row < list.Count(); ++row) {
    table.Add({std::int64_t{row}, list.Text(row)});
  }
  session.Print(table);
}

void PrintLabels(Session& session) {
  const ListLines& list = session.Document().lstText;
  Table table({"item", "label"});
  for (int row = 0; row < list.Count(); ++row) {
    table.Add({std::int64_t{row}, list.Text(row)});
  }
  session.Print(table);
}

void PrintText(Session& session, const Arguments& arguments) {
  Choose(session, arguments.lang, arguments.item);
  session.Io().out << Utf16ToUtf8(WithFileLineBreaks(UpToFirstNul(session.Document().text.txt))) << '\n';
}

void PrintDump(Session& session) {
  const RcoDocument& document = session.Document();
  Table table({"lang", "item", "textLabel", "textLength", "textOffset", "text"});
  TextReader reader(session.State(), document);
  for (int lang = 0; lang < static_cast<int>(document.textRsc.size()); ++lang) {
    const std::vector<TextRec>& texts = document.textRsc[static_cast<std::size_t>(lang)];
    for (int item = 0; item < static_cast<int>(texts.size()); ++item) {
      const TextRec& record = texts[static_cast<std::size_t>(item)];
      table.Add({std::int64_t{lang}, std::int64_t{item}, std::int64_t{record.textLabel},
                 std::int64_t{record.textLength}, std::int64_t{record.textOffset},
                 Utf16ToUtf8(reader.Read(item, lang))});
    }
  }
  session.Print(table);
}

// TEXT, or standard input where it is "-".
std::string TextOf(const Session& session, const std::string& argument) {
  if (argument != "-") {
    return argument;
  }
  return {std::istreambuf_iterator<char>(session.Io().in), std::istreambuf_iterator<char>()};
}

void SetText(Session& session, const Arguments& arguments) {
  Choose(session, arguments.lang, arguments.item);
  session.App().cmdTextChange(Utf8ToUtf16(TextOf(session, arguments.text)));
}

void AddText(Session& session, const Arguments& arguments) {
  if (!session.App().frmAddText_cmdOK(arguments.label, arguments.at)) {
    throw Refusal();
  }
}

void FindText(Session& session, const Arguments& arguments) {
  session.RequireRow(session.Document().cboTextLang, arguments.lang, "LANG");
  session.App().cboTextLang_Click(arguments.lang);
  if (arguments.from) {
    session.RequireRow(session.Document().lstText, *arguments.from, "ITEM");
    session.App().lstText_Click(*arguments.from);
  }
  session.Prompts().AnswerText(arguments.text);
  if (!session.App().cmdTextSearch()) {
    throw Refusal();
  }
  session.Io().out << session.Document().lstText.Selected() << '\n';
}

}  // namespace

void AddTextCommands(CLI::App& app, Action& action) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* text = app.add_subcommand("text", "Texts: languages, labels, strings");
  text->require_subcommand(1);

  const auto add = [&](const char* name, const char* description, auto run) {
    CLI::App* command = text->add_subcommand(name, description);
    command->add_option("FILE", arguments->file, "The RCO file")->required();
    command->callback([arguments, &action, run] {
      action = [arguments, run](Session& session) {
        session.Open(arguments->file);
        run(session, *arguments);
      };
    });
    return command;
  };
  const auto withLang = [&](CLI::App* command) {
    command->add_option("LANG", arguments->lang, "The language, counted from 0")->required();
    return command;
  };
  const auto withItem = [&](CLI::App* command) {
    command->add_option("ITEM", arguments->item, "The text, counted from 0")->required();
    return command;
  };

  add("langs", "Lists the languages", [](Session& session, const Arguments&) { PrintLangs(session); });
  add("list", "Lists the texts' labels", [](Session& session, const Arguments&) { PrintLabels(session); });
  add("dump", "Prints every text of every language with its record",
      [](Session& session, const Arguments&) { PrintDump(session); });
  withItem(withLang(add("get", "Prints one text", PrintText)));
  withItem(withLang(add("set", "Changes one text", SetText)))
      ->add_option("TEXT", arguments->text, "The new text; - reads standard input")
      ->required();
  CLI::App* addText = add("add", "Adds an empty text to all languages", AddText);
  addText->add_option("--at", arguments->at, "The text that it is put before")->required();
  addText->add_option("--label", arguments->label, "Its name")->required();
  CLI::App* find = withLang(add("find", "Prints the number of the next text that matches a pattern", FindText));
  find->add_option("PATTERN", arguments->text, "The pattern, with the wildcards * ? [] #")->required();
  find->add_option("--from", arguments->from, "The text to search behind, as if it were selected");
}

}  // namespace kelvane::cli
