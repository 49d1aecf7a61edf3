// Settings files, written and typed.
#include <initializer_list>
#include <string_view>

#include "Seeds.h"

namespace kelvane::fuzz {

std::vector<Bytes> Seeds() {
  std::vector<Bytes> seeds;
  for (const std::string_view text :
       {";For 4/8bit BMP importing...\nImptSetFirstColAsTrans = 1\n\n;For 32bit BMP importing...\n"
        "; 0 = Always convert to palette\n; 1 = Auto-decide\n; 2 = Always use 32 bit GIMs\nImpt32bitMode = 2\n\n"
        ";Set to 1 to disable making a .bak file \nNoUpdatBak = 1\n\n"
        ";Disable the file update checker (may fix problems on Wine)\nNoUpdatChk = 1\n\n"
        ";Disable image/model compression\nNoCompression = 1\n\n;Enter 'expert' mode by default\nExpertMode = 1\n\n",
        "", "ImptSetFirstColAsTrans=1", "Impt32bitMode = 7\nImpt32bitMode = 10\nImpt32bitMode = x\nImpt32bitMode =",
        "  no updat bak  =  1  \r\nNOUPDATCHK=9\rNoCompression = 1=1\n=1\n",
        "; ExpertMode = 1\nExpertMode = \t1\nExpertMode 1", "NoUpdatBak = 10\nNoUpdatBak = 00\nNoUpdatBak\n\n\n"}) {
    seeds.emplace_back(text.begin(), text.end());
  }
  return seeds;
}

}  // namespace kelvane::fuzz
