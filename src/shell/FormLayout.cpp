#include "shell/FormLayout.h"

#include <cmath>
#include <string_view>

#include "common/Int16.h"

namespace kelvane {

namespace {

using Places = std::map<std::string, TwipRect>;

// A length as its control has it on the screen, for columns that are divided further.
int WholePixels(int twips) {
  return PixelsOf(twips) * kTwipsPerPixel;
}

// Half of what a gap in the middle leaves, in whole pixels, so that both halves come out alike.
constexpr int HalfOf(int twips, int gap) {
  return (twips - gap) / (2 * kTwipsPerPixel) * kTwipsPerPixel;
}

// The frame around the tabs. Its height leaves the row of buttons and the headers above it and lblWebsite below it.
constexpr int kBorderLeft = 225;
constexpr int kBorderTop = 825;
// A page's columns begin at its left edge and end 30 before its right one; so both have the same margin in the frame.
constexpr int kPageLeft = kBorderLeft + 135;
constexpr int kPageTop = kBorderTop + 30;
constexpr int kColumnTop = 60;

constexpr int kButtonHeight = 360;
constexpr int kLineHeight = 240;
constexpr int kGap = 90;

std::string Indexed(const char* name, int index) {
  return std::string(name) + "(" + std::to_string(index) + ")";
}

void PlaceFrame(Places& places, int width, int height) {
  constexpr int kButtonTop = 90;
  constexpr int kButtonWidth = 1755;
  int left = kBorderLeft;
  for (const char* button : {"cmdOpen", "cmdOpt", "cmdUtil", "cmdOther"}) {
    places[button] = {left, kButtonTop, kButtonWidth, kButtonHeight};
    left += kButtonWidth + kGap;
  }

  // The headers reach over the frame's upper line, so that the selected one can open it.
  constexpr int kHeaderWidth = 1410;
  constexpr int kHeaderHeight = 345;
  for (int i = 0; i < 4; ++i) {
    places[Indexed("picTabSel", i)] = {kBorderLeft + 90 + i * kHeaderWidth, kBorderTop + kTwipsPerPixel - kHeaderHeight,
                                       kHeaderWidth, kHeaderHeight};
    places[Indexed("picTab", i)] = {kPageLeft, kPageTop, width - 690, height - 1815};
  }
  places["shpBorder"] = {kBorderLeft, kBorderTop, width - 450, height - 1455};
  places["lblWebsite"] = {width - 2325, height - 630, 2100, 420};
  places["barProgress"] = {kBorderLeft, height - 495, 3000, 150};
}

// The lists are taller than their pages, so they lie beside them, as children of the form.
void PlaceLists(Places& places, int columns, int split, int height) {
  const auto list = [&](int listWidth) { return TwipRect{kPageLeft, kPageTop + kColumnTop, listWidth, height - 1640}; };
  places["lst"] = list(columns - 2010);
  for (const char* name : {"lstText", "lstPage", "lstAnim"}) {
    places[name] = list(split - 120);
  }
}

void PlaceGeneralTab(Places& places, int columns, bool expert) {
  constexpr int kWidth = 1905;
  constexpr int kHalf = HalfOf(kWidth, kGap);
  constexpr int kRight = kWidth - kHalf;
  constexpr int kValueLeft = 885;
  places["picGenContainer"] = {columns - 1905, kColumnTop, kWidth, 5100};
  places["lblGenItemNo"] = {0, 0, kWidth, kLineHeight};
  places["picPreview"] = {0, 300, kWidth, kWidth};
  places["lblPreviewFail"] = {kTwipsPerPixel, kWidth / 2 - kLineHeight / 2, kWidth - 2 * kTwipsPerPixel, kLineHeight};
  places["chkRes"] = {0, 2265, kWidth, 270};
  places["lblDim"] = {0, 2565, kWidth, kLineHeight};
  int top = 2565 + kLineHeight + 30;
  for (const char* name : {"lblGenCompr", "lblGenOffsetEntry", "lblGenOffsetData"}) {
    places[std::string(name) + "Des"] = {0, top, kValueLeft, kLineHeight};
    places[name] = {kValueLeft, top, kWidth - kValueLeft, kLineHeight};
    if (expert || name == std::string_view("lblGenCompr")) {
      top += kLineHeight + 30;
    }
  }
  top += 60;
  places["cmdExtract"] = {0, top, kHalf, kButtonHeight};
  places["cmdReplace"] = {kRight, top, kHalf, kButtonHeight};
  top += kButtonHeight + kGap;
  places["cmdExtractAll"] = {0, top, kHalf, kButtonHeight};
  places["cmdReplaceAll"] = {kRight, top, kHalf, kButtonHeight};
  top += kButtonHeight + kGap;
  places["cmdGenRscAdd"] = {0, top, kWidth, kButtonHeight};
}

void PlaceTextTab(Places& places, int split, int column, int height, bool expert) {
  const int bottom = height - 1815 - kColumnTop - 15;  // the page's end
  places["picTextContainer"] = {split, kColumnTop, column, bottom};
  const int whole = WholePixels(column);
  const int half = HalfOf(whole, kGap);
  places["lblTextLangDes"] = {0, 0, 840, 330};
  places["cboTextLang"] = {840, 0, column - 840, 330};
  places["lblTxtIdx"] = {0, 405, column, kLineHeight};

  int top = bottom - kButtonHeight;
  const auto row = [&](const char* left, const char* right) {
    places[left] = {0, top, half, kButtonHeight};
    places[right] = {whole - half, top, half, kButtonHeight};
    top -= kButtonHeight + kGap;
  };
  const auto wide = [&](const char* name) {
    places[name] = {0, top, whole, kButtonHeight};
    top -= kButtonHeight + kGap;
  };
  wide("cmdTextImport");
  wide("cmdTextExport");
  row("cmdTextSearch", "cmdTextRscAdd");
  if (!expert) {
    places["cmdTextSearch"].width = whole;
  }
  row("cmdTextChange", "cmdTextReset");
  top += kButtonHeight - 480;
  places["lblTextTip"] = {0, top, column, 480};
  places["txt"] = {0, 675, column, top - 675 - 60};
}

// Nine rows: a caption, then one wide box or two boxes with a letter before each.
void PlacePositionBlock(Places& places, int split, int column) {
  constexpr int kRow = 315;
  constexpr int kBoxHeight = 300;
  constexpr int kCaption = 870;
  constexpr int kLetter = 240;
  places["picPagePos"] = {split, kColumnTop, column, 2910};
  column = WholePixels(column);
  const int pair = HalfOf(column - kCaption, 60);

  const auto caption = [&](const char* name, int row, int width) { places[name] = {0, row * kRow, width, kBoxHeight}; };
  const auto wide = [&](const char* name, int row, int box) {
    caption(name, row, kCaption);
    places[Indexed("txtPageOpt", box)] = {kCaption + kLetter, row * kRow, column - kCaption - kLetter, kBoxHeight};
  };
  const auto two = [&](const char* first, const char* second, int row, int box) {
    const int right = column - pair;
    places[first] = {kCaption, row * kRow, kLetter, kBoxHeight};
    places[Indexed("txtPageOpt", box)] = {kCaption + kLetter, row * kRow, pair - kLetter, kBoxHeight};
    places[second] = {right, row * kRow, kLetter, kBoxHeight};
    places[Indexed("txtPageOpt", box + 1)] = {right + kLetter, row * kRow, pair - kLetter, kBoxHeight};
  };
  caption("lblPagePosDes", 0, kCaption);
  two("lblPagePosX", "lblPagePosY", 0, 0);
  wide("lblPageScaleObj", 1, 2);
  caption("lblPageChannel", 2, column);
  two("lblPageChannelR", "lblPageChannelG", 3, 3);
  two("lblPageChannelB", "lblPageChannelA", 4, 5);
  caption("lblPageDim", 5, kCaption);
  two("lblPageDimW", "lblPageDimH", 5, 7);
  wide("lblPageUnknown", 6, 9);
  caption("lblPageStretch", 7, kCaption);
  two("lblPageStretchW", "lblPageStretchH", 7, 10);
  wide("lblPageScale", 8, 12);
  // The last box is as wide as half a row, and the button stands where the other half would.
  places[Indexed("txtPageOpt", 12)].width = pair - kLetter;
  places["cmdPagePosChange"] = {column - pair + kLetter, 8 * kRow, pair - kLetter, kBoxHeight};
}

void PlaceEntryTabs(Places& places, int split, int column, int height, bool positionShown) {
  const int dataHeight = height - 2465;
  places["lstPageData"] = {split, positionShown ? 3060 : kColumnTop, column, dataHeight - (positionShown ? 2890 : 0)};
  places["lstAnimData"] = {split, kColumnTop, column, dataHeight};
  for (const char* name : {"cmdPageChange", "cmdAnimChange"}) {
    places[name] = {split + 120, height - 2280, column - 240, kButtonHeight};
  }
}

}  // namespace

int PixelsOf(int twips) {
  return static_cast<int>(std::lround(static_cast<double>(twips) / kTwipsPerPixel));
}

Places LayOutForm(int width, int height, bool positionShown, bool expert) {
  const int columns = width - 720;
  const int split = RoundToInt32(columns * 0.6);
  const int column = RoundToInt32(columns * 0.4);
  Places places;
  PlaceFrame(places, width, height);
  PlaceLists(places, columns, split, height);
  PlaceGeneralTab(places, columns, expert);
  PlaceTextTab(places, split, column, height, expert);
  PlacePositionBlock(places, split, column);
  PlaceEntryTabs(places, split, column, height, positionShown);
  return places;
}

}  // namespace kelvane
