#include "shell/Icons.h"

#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <array>

namespace kelvane {

namespace {

const QColor kInk(70, 84, 104);
const QColor kPaper(255, 255, 255);
const QColor kBlue(74, 134, 207);
const QColor kGreen(92, 160, 92);
const QColor kAmber(240, 190, 96);
const QColor kAmberInk(158, 112, 36);
const QColor kRed(206, 78, 72);

QPen Line(const QColor& colour, double width = 1) {
  return {colour, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin};
}

QPen RoundLine(const QColor& colour, double width) {
  return {colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

void DrawSheet(QPainter& painter, const QRectF& sheet) {
  painter.setPen(Line(kInk));
  painter.setBrush(kPaper);
  painter.drawRect(sheet);
}

// A picture with a hill and the sun.
void DrawGeneralTab(QPainter& painter) {
  DrawSheet(painter, {1.5, 2.5, 13, 11});
  painter.setPen(Qt::NoPen);
  painter.setBrush(kBlue.lighter(170));
  painter.drawRect(QRectF(3, 4, 10, 8));
  painter.setBrush(kAmber);
  painter.drawEllipse(QRectF(9, 5, 3, 3));
  painter.setBrush(kGreen);
  painter.drawPolygon(QPolygonF({{3, 12}, {6.5, 7}, {9, 10}, {10.5, 8.5}, {13, 12}}));
}

void DrawTextTab(QPainter& painter) {
  DrawSheet(painter, {2.5, 1.5, 11, 13});
  painter.setPen(Line(kBlue, 2));
  painter.drawLine(QPointF(5, 5), QPointF(11, 5));
  painter.drawLine(QPointF(8, 5), QPointF(8, 12));
}

// A screen with a title, a column and boxes.
void DrawPageTab(QPainter& painter) {
  DrawSheet(painter, {1.5, 2.5, 13, 11});
  painter.setPen(Qt::NoPen);
  painter.setBrush(kBlue);
  painter.drawRect(QRectF(3, 4, 10, 2));
  painter.setBrush(kInk.lighter(190));
  painter.drawRect(QRectF(3, 7, 3, 5));
  painter.setBrush(kBlue.lighter(170));
  painter.drawRect(QRectF(7, 7, 6, 2));
  painter.drawRect(QRectF(7, 10, 6, 2));
}

// A strip of film that plays.
void DrawAnimTab(QPainter& painter) {
  DrawSheet(painter, {1.5, 2.5, 13, 11});
  painter.setPen(Qt::NoPen);
  painter.setBrush(kInk);
  painter.drawRect(QRectF(2, 3, 2, 10));
  painter.drawRect(QRectF(12, 3, 2, 10));
  painter.setBrush(kPaper);
  for (const double top : {4.0, 7.0, 10.0}) {
    painter.drawRect(QRectF(2.5, top, 1, 2));
    painter.drawRect(QRectF(12.5, top, 1, 2));
  }
  painter.setBrush(kGreen);
  painter.drawPolygon(QPolygonF({{6, 4.5}, {11, 8}, {6, 11.5}}));
}

void DrawOpen(QPainter& painter) {
  painter.setPen(Line(kAmberInk));
  painter.setBrush(kAmber.darker(112));
  painter.drawPolygon(QPolygonF({{1.5, 13.5}, {1.5, 3.5}, {6.5, 3.5}, {7.5, 5.5}, {13.5, 5.5}, {13.5, 13.5}}));
  painter.setBrush(kAmber.lighter(112));
  painter.drawPolygon(QPolygonF({{1.5, 13.5}, {3.5, 7.5}, {15.5, 7.5}, {13.5, 13.5}}));
}

// Three sliders.
void DrawOptions(QPainter& painter) {
  const std::array<double, 3> knobs = {10, 4, 8};
  double y = 3.5;
  for (const double knob : knobs) {
    painter.setPen(Line(kInk));
    painter.drawLine(QPointF(1, y), QPointF(15, y));
    painter.setBrush(kBlue.lighter(130));
    painter.drawRect(QRectF(knob - 0.5, y - 2, 3, 4));
    y += 4.5;
  }
}

void DrawDisc(QPainter& painter, const QColor& colour) {
  painter.setPen(Line(colour.darker(130)));
  painter.setBrush(colour);
  painter.drawEllipse(QRectF(1.5, 1.5, 13, 13));
}

void DrawRandomInfo(QPainter& painter) {
  DrawDisc(painter, kBlue);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kPaper);
  painter.drawEllipse(QRectF(7, 3.5, 2, 2));
  painter.drawRect(QRectF(7, 6.5, 2, 6));
}

// A spanner.
void DrawTools(QPainter& painter) {
  painter.setPen(RoundLine(kInk, 3));
  painter.drawLine(QPointF(3.5, 12.5), QPointF(9, 7));
  QPainterPath head;
  head.addEllipse(QPointF(11, 5), 4, 4);
  QPainterPath mouth;
  mouth.addPolygon(QPolygonF({{11, 5.8}, {10.2, 5}, {13.6, 0.2}, {16, 2.4}, {11, 5.8}}));
  painter.setPen(Qt::NoPen);
  painter.setBrush(kInk);
  painter.drawPath(head.subtracted(mouth));
}

// A list, and an arrow that leaves it (down: -1) or enters it from above.
void DrawListArrow(QPainter& painter, bool out) {
  DrawSheet(painter, {1.5, 1.5, 9, 13});
  painter.setPen(Line(kInk.lighter(160)));
  for (const double y : {4.5, 6.5, 11.5}) {
    painter.drawLine(QPointF(3, y), QPointF(9, y));
  }
  const QColor colour = out ? kGreen : kBlue;
  const double tip = out ? 15.5 : 6.5;
  const double neck = out ? 12 : 10;
  const double tail = out ? 7 : 15;
  painter.setPen(Line(colour.darker(115), 2));
  painter.drawLine(QPointF(tail, 9), QPointF(neck, 9));
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour.darker(115));
  painter.drawPolygon(QPolygonF({{neck, 5.5}, {neck, 12.5}, {tip, 9}}));
}

// The program's own: a box of layers.
void DrawProgram(QPainter& painter) {
  painter.setPen(Line(kInk));
  painter.setBrush(kBlue);
  painter.drawRoundedRect(QRectF(1.5, 1.5, 13, 13), 2, 2);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kPaper);
  painter.drawRect(QRectF(4, 4, 8, 2));
  painter.setBrush(kAmber);
  painter.drawRect(QRectF(4, 7, 8, 2));
  painter.setBrush(kPaper);
  painter.drawRect(QRectF(4, 10, 5, 2));
}

// A triangle with an exclamation mark.
void DrawWarning(QPainter& painter) {
  painter.setPen(RoundLine(kAmberInk, 1));
  painter.setBrush(kAmber);
  painter.drawPolygon(QPolygonF({{8, 1.5}, {15, 14.5}, {1, 14.5}}));
  painter.setPen(Qt::NoPen);
  painter.setBrush(kInk.darker(150));
  painter.drawPolygon(QPolygonF({{7, 5.5}, {9, 5.5}, {8.6, 10.5}, {7.4, 10.5}}));
  painter.drawEllipse(QRectF(7.1, 11.3, 1.8, 1.8));
}

void DrawCritical(QPainter& painter) {
  DrawDisc(painter, kRed);
  painter.setPen(RoundLine(kPaper, 1.8));
  painter.drawLine(QPointF(5.5, 5.5), QPointF(10.5, 10.5));
  painter.drawLine(QPointF(10.5, 5.5), QPointF(5.5, 10.5));
}

void DrawQuestion(QPainter& painter) {
  DrawDisc(painter, kBlue);
  QPainterPath hook;
  hook.moveTo(5.9, 6.3);
  hook.cubicTo({5.9, 3}, {10.4, 3.2}, {10.2, 6.2});
  hook.cubicTo({10.1, 7.8}, {8, 7.7}, {8, 9.6});
  painter.setPen(RoundLine(kPaper, 1.6));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(hook);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kPaper);
  painter.drawEllipse(QRectF(7.1, 11.1, 1.8, 1.8));
}

void Draw(QPainter& painter, Drawing drawing) {
  switch (drawing) {
    case Drawing::GeneralTab:
      return DrawGeneralTab(painter);
    case Drawing::TextTab:
      return DrawTextTab(painter);
    case Drawing::PageTab:
      return DrawPageTab(painter);
    case Drawing::AnimTab:
      return DrawAnimTab(painter);
    case Drawing::Open:
      return DrawOpen(painter);
    case Drawing::Options:
      return DrawOptions(painter);
    case Drawing::RandomInfo:
      return DrawRandomInfo(painter);
    case Drawing::Tools:
      return DrawTools(painter);
    case Drawing::ExportList:
      return DrawListArrow(painter, true);
    case Drawing::ImportList:
      return DrawListArrow(painter, false);
    case Drawing::Program:
      return DrawProgram(painter);
    case Drawing::Warning:
      return DrawWarning(painter);
    case Drawing::Critical:
      return DrawCritical(painter);
    case Drawing::Question:
      return DrawQuestion(painter);
  }
}

class DrawnIconEngine : public QIconEngine {
 public:
  explicit DrawnIconEngine(Drawing drawing) : drawing_(drawing) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const double scale = painter->device()->devicePixelRatioF();
    painter->drawPixmap(rect, scaledPixmap(rect.size() * scale, mode, state, scale));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return scaledPixmap(size, mode, state, 1);
  }

  // `size` is in the device's pixels.
  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/, qreal /*scale*/) override {
    QImage image(size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size.width() / 16.0, size.height() / 16.0);
    Draw(painter, drawing_);
    painter.end();
    return QPixmap::fromImage(mode == QIcon::Disabled ? GreyCopy(image) : image);
  }

  [[nodiscard]] QIconEngine* clone() const override { return new DrawnIconEngine(drawing_); }

 private:
  Drawing drawing_;
};

}  // namespace

QIcon DrawnIcon(Drawing drawing) {
  return QIcon(new DrawnIconEngine(drawing));
}

QIcon IconOfTab(int tab) {
  constexpr std::array<Drawing, 4> kIcons = {Drawing::GeneralTab, Drawing::TextTab, Drawing::PageTab, Drawing::AnimTab};
  return DrawnIcon(kIcons.at(static_cast<std::size_t>(tab)));
}

QImage GreyCopy(const QImage& image) {
  QImage grey = image.convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < grey.height(); ++y) {
    for (int x = 0; x < grey.width(); ++x) {
      const QRgb pixel = image.pixel(x, y);
      const int value = static_cast<int>(0.59 * qGreen(pixel) + 0.33 * qBlue(pixel) + 0.11 * qRed(pixel));
      grey.setPixel(x, y, qRgba(value, value, value, qAlpha(pixel)));
    }
  }
  return grey;
}

}  // namespace kelvane
