#include "text/TextSearch.h"

#include <optional>

#include "common/Encoding.h"
#include "text/LowerCase.h"
#include "text/Pattern.h"
#include "text/TextList.h"
#include "text/TextString.h"

namespace kelvane {

namespace {

// The first of the texts from `first` to `last` that matches.
std::optional<int> FindText(TextReader& texts, const Pattern& pattern, int lang, int first, int last) {
  for (int item = first; item <= last; ++item) {
    if (pattern.Matches(LowerCase(texts.Read(Int16(item), Int16(lang))))) {
      return item;
    }
  }
  return std::nullopt;
}

}  // namespace

bool cmdTextSearch(const Mod& mod, RcoDocument& document, Prompts& prompts) {
  if (document.lstText.Count() == 0) {
    return false;
  }
  const std::string answer =
      prompts.AskText("请输入你想要搜索的文字(只搜索当前选择的语言,允许使用 *?[] 通配符)", document.lastSearch);
  const std::u16string search = LowerCase(Utf8ToUtf16(answer));
  document.lastSearch = Utf16ToUtf8(search);
  if (search.empty()) {
    return false;
  }

  const Pattern pattern(u'*' + search + u'*');
  TextReader texts(mod, document);
  const int selected = document.lstText.Selected();
  const int lang = document.cboTextLang.Selected();
  std::optional<int> found = FindText(texts, pattern, lang, selected + 1, document.lstText.Count() - 1);
  if (!found && selected >= 0) {
    found = FindText(texts, pattern, lang, 0, selected);
  }
  if (!found) {
    Tell(prompts, "找不到字符", Icon::Information);
    return false;
  }
  SelectText(mod, document, *found);
  return true;
}

}  // namespace kelvane
