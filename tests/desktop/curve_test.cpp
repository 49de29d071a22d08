// What a curve consists of, every line, dot and word, with place and look; and texts that may be cut.
#include <gtest/gtest.h>

#include <QApplication>
#include <QHelpEvent>
#include <QPaintEngine>
#include <QPainterPath>
#include <QScreen>
#include <QTest>
#include <QTextStream>
#include <QToolTip>

#include "desktop/control_ties.h"
#include "desktop/curve_painting.h"
#include "desktop/curve_text.h"
#include "desktop/quiet_label.h"
#include "desktop/time_axis.h"
#include "support/expected_text.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

/// Writes down what is painted, as places in the plot. Those of texts, which other fonts make wider, are told
/// by the edge or the middle that stands where it should.
class Recorder : public QPaintEngine, public QPaintDevice {
 public:
  explicit Recorder(const QFont& font) : QPaintEngine(AllFeatures), font_(font) {}

  std::string Paint(const QRect& area, const CurveData& data, const QPalette& palette,
                    std::optional<double> marked) {
    QPainter painter(this);
    painter.setFont(font_);
    layout_.emplace(area, painter.fontMetrics(), data);
    area_ = area;
    PaintCurve(painter, area, palette, data, marked);
    return std::exchange(written_, {}).toStdString() + "\n";
  }

  bool begin(QPaintDevice* /*device*/) override { return true; }
  bool end() override { return true; }
  void updateState(const QPaintEngineState& /*state*/) override {}
  Type type() const override { return User; }
  void drawPixmap(const QRectF& /*to*/, const QPixmap& /*map*/, const QRectF& /*from*/) override {}
  void drawLines(const QLineF* lines, int count) override {
    for (int line = 0; line < count; ++line) Write("line", {lines[line].p1(), lines[line].p2()});
  }
  void drawRects(const QRectF* rects, int count) override {
    for (int rect = 0; rect < count; ++rect)
      Write("frame", {rects[rect].topLeft(), rects[rect].bottomRight()});
  }
  void drawEllipse(const QRectF& rect) override { Write("dot", {rect.topLeft(), rect.bottomRight()}); }
  void drawPath(const QPainterPath& path) override {
    QList<QPointF> points;
    QString moves;
    for (int at = 0; at < path.elementCount(); ++at) {
      points += path.elementAt(at);
      moves += path.elementAt(at).isMoveTo() ? "m" : "l";
    }
    Write("path " + moves, points);
  }
  void drawTextItem(const QPointF& at, const QTextItem& item) override {
    const QRectF box(at.x(), at.y() - item.ascent(), item.width(), item.ascent() + item.descent());
    QString place;
    const auto stands = [&](const char* edge, double where, double wanted) {
      if (std::abs(where - wanted) < 1.01) place += QString(" ") + edge;
    };
    const QRect& plot = layout_->plot;
    stands("left", box.left(), area_.left());
    stands("beside the axis", box.right(), plot.left() - 6);
    stands("behind", box.left(), plot.right() + 6);
    stands("below", box.top(), plot.bottom() + 4);
    stands("in the centre", box.center().x(), plot.center().x());
    stands("at its line", box.center().x(), lastX_);
    for (std::size_t line = 0; line < kCurveLines; ++line) {
      const QRect band = layout_->Band(line);
      stands("at the top", box.top(), band.top());
      stands("at the bottom", box.bottom(), band.bottom());
      stands("in the middle", box.center().y(), band.center().y());
      stands("above the middle", box.bottom(), band.center().y());
    }
    written_ += item.text() + ":" + place + (item.font().bold() ? " bold " : " ") +
                state->pen().color().name(QColor::HexArgb) + "\n";
  }

 private:
  QPaintEngine* paintEngine() const override { return const_cast<Recorder*>(this); }
  int metric(PaintDeviceMetric which) const override {
    if (which == PdmDevicePixelRatioScaled) return static_cast<int>(devicePixelRatioFScale());
    return which == PdmDevicePixelRatio ? 1 : 96;
  }
  void Write(const QString& what, const QList<QPointF>& points) {
    QTextStream line(&written_);
    line << what << (state->renderHints().testFlag(QPainter::Antialiasing) ? "" : " rough");
    for (const QPointF& point : points) {
      // The piece of a line below its name stands half a text below the middle of the band.
      const bool sample = point.x() < layout_->plot.left() - 9;
      const QPointF from =
          sample ? QPointF(area_.left(), layout_->plot.top() + QFontMetrics(font_).height() / 2.0)
                 : QPointF(layout_->plot.topLeft());
      line << " " << QString::number(point.x() - from.x(), 'f', 1) << ","
           << QString::number(point.y() - from.y(), 'f', 1);
    }
    const QPen& pen = state->pen();
    if (pen.style() != Qt::NoPen)
      line << " pen " << pen.widthF() << " " << static_cast<int>(pen.style()) << " "
           << pen.color().name(QColor::HexArgb);
    if (what != "line" && state->brush().style() != Qt::NoBrush)
      line << " filled " << state->brush().color().name(QColor::HexArgb);
    line << "\n";
    lastX_ = points.front().x();
  }

  QFont font_;
  std::optional<CurveLayout> layout_;
  QRect area_;
  QString written_;
  double lastX_ = 0;
};

const CurveData kData{
    .lines = {{{"Ladung", "%", 1, 1}, {"Spannung", "V", 3, 0.1}, {"Temperatur", "°C", 0, 5}}},
    .start = {2026, 12, 31, 23, 59, 50},
    .spans = {{0, 0, false, {{{50, 50, 50}, {6.8, 6.8, 6.8}, {-3, -3, -3}}}},
              {2, 20, false, {{{40, 60, 45}, {6.7, 6.9, 6.8}, {-3, 20, 20}}}},
              {50, 50, true, {{{45, 45, 45}, {6.8, 6.8, 6.8}, {20, 20, 20}}}},
              {60, 90, false, {{{10, 30, 20}, {6.75, 6.75, 6.75}, {5, 6, 6}}}}}};

TEST(Curve, ConsistsOfItsLinesDotsAndWords) {
  const CurveData &data = kData, empty{.lines = data.lines, .start = data.start, .spans = {}};
  QFont font;
  for (int size = 8; QFontMetrics(font).horizontalAdvance("00:00:00") < 53; ++size) font.setPixelSize(size);
  const QFontMetrics metrics(font);
  // The plot has one size, whatever the font.
  const QRect large(0, 0, 3000, 3000);
  const CurveLayout around(large, metrics, data);
  const QRect area(3, 5, 451 + 3000 - around.plot.width(), 162 + 3000 - around.plot.height());
  const int left = metrics.horizontalAdvance("Temperatur") + metrics.horizontalAdvance("-00.000°C") + 12,
            right = metrics.horizontalAdvance("00.000 bis 00.000V") * 5 / 4 + 6;
  EXPECT_EQ(around.plot, large.adjusted(left, 0, -right, -metrics.height() - 4));
  EXPECT_EQ(CurveLayout::LeastHeight(metrics), 6 * metrics.height() + 12 + metrics.height() + 4);
  EXPECT_NEAR(around.TimeAt(around.PlaceOf(33)), 33, 1e-9);

  Recorder recorder(font);
  QPalette palette;
  const auto paint = [&](const CurveData& painted, QColor ground, QColor ink, std::optional<double> marked) {
    palette.setColor(QPalette::Base, ground);
    palette.setColor(QPalette::Text, ink);
    return recorder.Paint(area, painted, palette, marked);
  };
  ExpectFile("desktop/curve.txt", paint(data, Qt::white, Qt::black, {}) +
                                      paint(data, QColor(127, 127, 127), Qt::white, 10) +
                                      paint(empty, QColor(128, 128, 128), Qt::black, 10));

  QApplication::setPalette(QColor(30, 30, 30));  // a dark screen
  const QImage picture = QImage::fromData(PictureOfCurve(data, "Titel"));
  QApplication::setPalette(QPalette());
  QImage wanted(2000, 960, QImage::Format_RGB32);
  wanted.setDevicePixelRatio(2);
  wanted.fill(Qt::white);
  QPainter painter(&wanted);
  painter.drawText(QRect(12, 12, 976, 456), 0, "Titel, 31.12.2026 23:59:50 bis 01.01. 00:01:20");
  const int top = 24 + painter.fontMetrics().height();
  palette.setColor(QPalette::Base, Qt::white);
  PaintCurve(painter, QRect(12, top, 976, 468 - top), palette, data, {});
  EXPECT_EQ(picture.convertToFormat(QImage::Format_RGB32), wanted);
}

TEST(Curve, ShowsWhatTheMouseAndTheKeysAreOn) {
  TestHost test;
  struct OneCurve : Window {
    using Window::Window;
    Curve curve{*this, "Verlauf"};
  } window(test.host.windows, "", "");
  CurveData data = kData;
  data.spans.insert(data.spans.end() - 1, {data.spans[2], data.spans[2]});  // closer than a step of the keys
  data.spans[3].first = data.spans[3].last = 50.2;
  data.spans[4].first = data.spans[4].last = 50.4;
  std::string nearest;
  for (const double second : {-1., 0., 0.9, 1.1, 20., 34., 35., 60., 91.})
    nearest += std::to_string(SpanAt(data, second) - data.spans.data());
  EXPECT_EQ(nearest, "000111255");

  CurveView view(nullptr);
  TieCurve(window.curve, view);
  EXPECT_EQ(view.minimumSizeHint(), QSize(400, CurveLayout::LeastHeight(view.fontMetrics()) + 8));
  QPalette colours = view.palette();
  colours.setColor(QPalette::WindowText, Qt::darkBlue);
  colours.setColor(QPalette::Base, Qt::black);
  view.setPalette(colours);
  colours.setColor(QPalette::Base, colours.color(QPalette::Window));
  colours.setColor(QPalette::Text, Qt::darkBlue);
  view.resize(800, 300);
  view.show();
  QApplication::setActiveWindow(&view);
  view.clearFocus();
  const QRect area = view.rect().adjusted(4, 4, -4, -4);
  const QRect plot = CurveLayout(area, view.fontMetrics(), data).plot;
  const auto send = [&](QEvent&& event) { QCoreApplication::sendEvent(&view, &event); };
  const auto move = [&](int x) {
    send(QMouseEvent(QEvent::MouseMove, QPointF(x, 50), QPointF(x, 50), Qt::NoButton, {}, {}));
  };
  const auto press = [&](Qt::Key key) { QTest::keyClick(&view, key); };
  press(Qt::Key_Home);
  move(plot.left());
  QCoreApplication::processEvents();
  /// What the user does, the number of the span that is marked then, and whether the keys are for the curve.
  const std::tuple<std::function<void()>, int, bool> steps[] = {
      {[&] { window.curve.Show(data); }, -1, false},
      {[&] { move(plot.left()); }, 0, false},
      {[&] { move(plot.left() - 1); }, -1, false},
      {[&] { move(plot.right()); }, 5, false},
      {[&] { move(plot.right() + 1); }, -1, false},
      {[&] { move(plot.left() + plot.width() / 9); }, 1, false},
      {[&] { send(QEvent(QEvent::Leave)); }, -1, false},
      {[&] { view.setFocus(); }, -1, true},
      {[&] { press(Qt::Key_Home); }, 0, true},
      {[&] { press(Qt::Key_Right); }, 1, true},
      {[&] { press(Qt::Key_Right); }, 2, true},
      {[&] { press(Qt::Key_Right); }, 4, true},
      {[&] { press(Qt::Key_Left), press(Qt::Key_A); }, 2, true},
      {[&] { press(Qt::Key_End), press(Qt::Key_Left); }, 4, true},
      {[&] { press(Qt::Key_Right), press(Qt::Key_Right); }, 5, true},
      {[&] { send(QEvent(QEvent::Leave)); }, 5, true},
      {[&] { send(QFocusEvent(QEvent::FocusOut, Qt::PopupFocusReason)); }, 5, true},
      {[&] { view.clearFocus(); }, -1, false}};
  for (const auto& step : steps) {
    const auto& [act, span, focused] = step;
    act();
    QCoreApplication::processEvents();
    QImage wanted(view.size(), QImage::Format_RGB32);
    wanted.fill(colours.color(QPalette::Window));
    QPainter painter(&wanted);
    PaintCurve(painter, area, colours, data,
               span < 0 ? std::nullopt : std::optional(data.spans[static_cast<std::size_t>(span)].last));
    painter.setPen(focused ? QPen(colours.color(QPalette::Highlight)) : QPen(Qt::NoPen));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(0, 0, view.width() - 1, view.height() - 1);
    painter.end();
    const QImage seen = view.screen()->grabWindow(view.winId()).toImage();
    EXPECT_EQ(seen.convertToFormat(QImage::Format_RGB32), wanted) << "step " << &step - steps;
  }
}

TEST(TimeAxis, HasAStepForEveryLengthAndMarksAtRoundTimesAndWhereDaysBegin) {
  const int minute = 60, hour = 3600, day = 86400;
  QString seen;
  QTextStream told(&seen);
  told.setRealNumberPrecision(12);
  const auto tell = [&](int hours, int minutes, int seconds, int length) {
    told << length << " s:";
    for (const TimeMark& mark : TimeMarks({2026, 12, 31, hours, minutes, seconds}, length, 5))
      told << " " << mark.text.c_str() << " at " << mark.second;
    told << "\n";
  };
  for (const int step : {1,          2,          5,           10,          15,          30,      minute,
                         2 * minute, 5 * minute, 10 * minute, 15 * minute, 30 * minute, hour,    2 * hour,
                         3 * hour,   6 * hour,   12 * hour,   day,         2 * day,     7 * day, 14 * day})
    tell(0, 0, 0, 4 * step);
  for (const int length : {10, hour, day, 7 * day, 400 * day}) tell(22, 59, 50, length);
  const double leastAndGreatest[][2] = {{0, 10}, {0, 10.1}, {0, 19}, {0, 21},
                                        {0, 49}, {0, 51},   {5, 5},  {-3.2, 98.7}};
  for (const auto& [least, greatest] : leastAndGreatest) {
    const AxisRange range = RangeAround(least, greatest, 1);
    told << least << " to " << greatest << ": " << range.low << " to " << range.high << "\n";
  }
  told.flush();
  ExpectFile("desktop/axes.txt", seen.toStdString());
}

TEST(Labels, AQuietLineIsPaintedAsAnyTextThatFits) {
  QuietLabel quiet(nullptr);
  QLabel usual;
  usual.setAlignment(Qt::AlignLeft | Qt::AlignTop);
  for (QLabel* label : {static_cast<QLabel*>(&quiet), &usual}) {
    label->resize(200, 100);
    label->setFrameStyle(QFrame::Box | QFrame::Plain);
    label->setIndent(0);
    label->setText("eins\nzwei");
  }
  EXPECT_EQ(quiet.grab().toImage(), usual.grab().toImage());
  quiet.setProperty("lines", 3);
  usual.setText("eins\nzwei\ndrei");
  EXPECT_EQ(quiet.sizeHint(), QSize(2, usual.sizeHint().height()));
  for (QLabel* label : {static_cast<QLabel*>(&quiet), &usual}) label->resize(200, quiet.sizeHint().height());
  QHelpEvent ask(QEvent::ToolTip, {}, {});
  quiet.setText("eins\nzwei\ndrei");
  EXPECT_FALSE(QCoreApplication::sendEvent(&quiet, &ask) && ask.isAccepted()) << "all of it is in sight";
  quiet.setText("eins\nzwei\ndrei\n" + QString(99, 'x'));
  EXPECT_TRUE(QCoreApplication::sendEvent(&quiet, &ask) && QToolTip::text() == "<p>" + quiet.text() + "</p>");
  usual.setText("eins\nzwei\n" +
                usual.fontMetrics().elidedText("drei " + QString(99, 'x'), Qt::ElideRight, 198));
  EXPECT_EQ(quiet.grab().toImage(), usual.grab().toImage());
  quiet.resize(200, 100);
  const QRect secondLine(0, 99 / 2, 200, 30);
  quiet.setText("");
  const QImage empty = quiet.grab(secondLine).toImage();
  quiet.setText(QString(300, 'x'));
  EXPECT_NE(quiet.grab(secondLine).toImage(), empty) << "what has no blank is broken too";
  SteadyLabel cut(nullptr);
  cut.setIndent(0);
  for (QLabel* label : {static_cast<QLabel*>(&cut), &usual}) {
    label->resize(50, 30);
    label->setMargin(3);
    label->setFrameStyle(QFrame::Box | QFrame::Plain);
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  }
  usual.setText("y");
  EXPECT_EQ(cut.sizeHint(), QSize(8, usual.sizeHint().height()));
  for (const QString& text : {QString(99, 'x'), QString("a\nb")}) {
    cut.setText("c" + text);
    usual.setText(usual.fontMetrics().elidedText(QString(cut.text()).replace('\n', ' '), Qt::ElideLeft, 42));
    EXPECT_EQ(cut.grab().toImage(), usual.grab().toImage());
  }
}

}  // namespace
}  // namespace ox::test
