#include "text/TextSearch.h"

#include <optional>
#include <string>
#include <string_view>

#include "common/Encoding.h"
#include "text/LowerCase.h"
#include "text/Pattern.h"
#include "text/TextList.h"
#include "text/TextString.h"

namespace kelvane {

namespace {

// One search in one language.
class Search {
 public:
  Search(const Mod& mod, const RcoDocument& document, std::u16string_view lowered)
      : texts_(mod, document), lang_(document.cboTextLang.Selected()), wanted_(lowered) {}

  // The first of the texts from `first` to `last` that matches.
  std::optional<int> Find(int first, int last) {
    for (int item = first; item <= last; ++item) {
      if (Matches(item)) {
        return item;
      }
    }
    return std::nullopt;
  }

 private:
  // A text is read before it is tested: so one that can't be read fails in front of an invalid pattern.
  bool Matches(int item) {
    const std::u16string text = LowerCase(texts_.Read(Int16(item), Int16(lang_)));
    if (!pattern_) {
      pattern_.emplace(u'*' + wanted_ + u'*');
    }
    return pattern_->Matches(text);
  }

  TextReader texts_;
  int lang_;
  std::u16string wanted_;
  std::optional<Pattern> pattern_;
};

}  // namespace

bool cmdTextSearch(const Mod& mod, RcoDocument& document, Prompts& prompts) {
  if (document.lstText.Count() == 0) {
    return false;
  }
  const std::string answer =
      prompts.AskText("请输入你想要搜索的文字(只搜索当前选择的语言,允许使用 *?[] 通配符)", document.lastSearch);
  const std::u16string wanted = LowerCase(Utf8ToUtf16(answer));
  document.lastSearch = Utf16ToUtf8(wanted);
  if (wanted.empty()) {
    return false;
  }

  Search search(mod, document, wanted);
  const int selected = document.lstText.Selected();
  std::optional<int> found = search.Find(selected + 1, document.lstText.Count() - 1);
  if (!found && selected >= 0) {
    found = search.Find(0, selected);
  }
  if (!found) {
    Tell(prompts, "找不到字符", Icon::Information);
    return false;
  }
  SelectText(mod, document, *found);
  return true;
}

}  // namespace kelvane
