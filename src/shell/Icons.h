// The program's icons, drawn from code on a grid of 16 by 16, so that they are crisp at every scale.
#pragma once

#include <QIcon>

namespace kelvane {

enum class Drawing {
  GeneralTab,
  TextTab,
  PageTab,
  AnimTab,
  Open,
  Options,
  RandomInfo,
  Tools,
  ExportList,
  ImportList,
  Program,
  Warning,
  Critical,
  Question,
};

// Its disabled look is GreyCopy of its normal one.
[[nodiscard]] QIcon DrawnIcon(Drawing drawing);

// The icon of header `tab`.
[[nodiscard]] QIcon IconOfTab(int tab);

// Every pixel as its grey: 0.59 of its green, 0.33 of its blue and 0.11 of its red. Alpha stays.
[[nodiscard]] QImage GreyCopy(const QImage& image);

}  // namespace kelvane
