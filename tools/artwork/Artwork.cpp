#include "Artwork.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>

#include "Font.h"

namespace art {

namespace {

constexpr float kPi = std::numbers::pi_v<float>;

// One palette for everything. Teal is the product colour, amber stands for
// warnings and waiting, red for errors and stops, green for success and running.
namespace pal {
const Color teal = Rgb(0x0E7C86);
const Color tealDark = Rgb(0x0A5C64);
const Color tealDeep = Rgb(0x07434A);
const Color tealBright = Rgb(0x1A9BA6);
const Color tealMid = Rgb(0x5FB4BB);
const Color tealSoft = Rgb(0x9CCBD0);
const Color tealPale = Rgb(0xDDEFF1);
const Color tealMist = Rgb(0xF1F8F9);
const Color amber = Rgb(0xF0A020);
const Color amberLight = Rgb(0xF7BD4A);
const Color amberPale = Rgb(0xFCEBC8);
const Color amberInk = Rgb(0x3D2C06);
const Color red = Rgb(0xD6453D);
const Color redLight = Rgb(0xE8675F);
const Color redPale = Rgb(0xF8DAD7);
const Color green = Rgb(0x2E9E5B);
const Color greenLight = Rgb(0x45B873);
const Color greenPale = Rgb(0xD5EFDF);
const Color ink = Rgb(0x263238);
const Color grey700 = Rgb(0x4A5A62);
const Color grey500 = Rgb(0x7E8C93);
const Color grey300 = Rgb(0xB8C3C8);
const Color grey200 = Rgb(0xD5DDE0);
const Color grey100 = Rgb(0xEAEFF1);
const Color grey50 = Rgb(0xF6F8F9);
const Color white = Rgb(0xFFFFFF);
}  // namespace pal

// ---------------------------------------------------------------- building blocks

enum class State { Normal, Hover, Down, Disabled };

struct FaceColours {
  Color border, top, bottom, glyph;
};

// The four faces every pressable picture shares. Light faces carry dark labels
// and glyphs, the teal faces white ones.
FaceColours FaceFor(State st) {
  switch (st) {
    case State::Normal: return {pal::tealSoft, pal::white, Rgb(0xE9F2F3), pal::tealDark};
    case State::Hover: return {pal::tealDark, Rgb(0x12858F), Rgb(0x0B6F78), pal::white};
    case State::Down: return {pal::tealDeep, pal::tealDark, Rgb(0x0C6A73), pal::white};
    case State::Disabled: return {pal::grey200, pal::grey50, pal::grey50, pal::grey300};
  }
  return {};
}

void Face(Canvas& c, const Ctx& k, float x0, float y0, float x1, float y1, float r, State st) {
  const FaceColours f = FaceFor(st);
  const float bw = k.W(1);
  c.Fill(RoundRect(x0, y0, x1, y1, r), f.border);
  c.Fill(RoundRect(x0 + bw, y0 + bw, x1 - bw, y1 - bw, std::max(0.0f, r - bw)),
         VerticalGradient(y0, f.top, y1, f.bottom));
}

Point Polar(float cx, float cy, float r, float deg) {
  float a = deg * kPi / 180;
  return {cx + r * std::cos(a), cy + r * std::sin(a)};
}

// Two arcs chasing each other clockwise, each with an arrow head.
void RefreshGlyph(Canvas& c, float cx, float cy, float r, float sw, float head, const Color& col) {
  for (float start : {200.0f, 20.0f}) {
    const float end = start + 115;
    c.Fill(Arc(cx, cy, r, start, end, sw), col);
    const float a = end * kPi / 180;
    const Point p = Polar(cx, cy, r, end);
    const Point dir{-std::sin(a), std::cos(a)};
    const Point n{std::cos(a), std::sin(a)};
    c.Fill(
        Polygon(
            {{p.x + dir.x * head * 1.15f, p.y + dir.y * head * 1.15f},
             {p.x + n.x * head - dir.x * head * 0.35f, p.y + n.y * head - dir.y * head * 0.35f},
             {p.x - n.x * head - dir.x * head * 0.35f, p.y - n.y * head - dir.y * head * 0.35f}}),
        col);
  }
}

Shape Check(float cx, float cy, float size, float sw) {
  // size is the width of the mark; the long stroke rises to the right.
  const float u = size / 12;
  return Polyline(
      {{cx - 6 * u, cy + 0.2f * u}, {cx - 2 * u, cy + 4.2f * u}, {cx + 6 * u, cy - 4.2f * u}}, sw);
}

Shape Cross(float cx, float cy, float half, float sw) {
  return Union(Line({cx - half, cy - half}, {cx + half, cy + half}, sw),
               Line({cx - half, cy + half}, {cx + half, cy - half}, sw));
}

// A question mark whose bowl is centred at (cx, cy) with radius r.
Shape QuestionMark(float cx, float cy, float r, float sw, float dotR) {
  std::vector<Point> hook = ArcPoints(cx, cy, r, r, 195, 400);
  hook.push_back({cx, cy + r * 1.25f});
  hook.push_back({cx, cy + r * 1.6f});
  return Union(Polyline(hook, sw), Circle(cx, cy + r * 2.55f, dotR));
}

// A cloud in a box of the given width, its top left at (x, y); about 0.6 w high.
Shape Cloud(float x, float y, float w) {
  auto X = [&](float v) { return x + v * w; };
  auto Y = [&](float v) { return y + v * w; };
  Shape s = Circle(X(0.31f), Y(0.34f), 0.17f * w);
  s = Union(s, Circle(X(0.56f), Y(0.25f), 0.24f * w));
  s = Union(s, Circle(X(0.79f), Y(0.40f), 0.15f * w));
  s = Union(s, RoundRect(X(0.06f), Y(0.33f), X(0.94f), Y(0.58f), 0.125f * w));
  return s;
}

Shape ArrowUp(float cx, float top, float bottom, float headW, float shaftW) {
  return Union(
      Polygon({{cx, top}, {cx + headW / 2, top + headW / 2}, {cx - headW / 2, top + headW / 2}}),
      Rect(cx - shaftW / 2, top + headW / 2 - 0.5f, cx + shaftW / 2, bottom));
}

Shape ArrowDown(float cx, float top, float bottom, float headW, float shaftW) {
  return Union(Polygon({{cx, bottom},
                        {cx + headW / 2, bottom - headW / 2},
                        {cx - headW / 2, bottom - headW / 2}}),
               Rect(cx - shaftW / 2, top, cx + shaftW / 2, bottom - headW / 2 + 0.5f));
}

// A round badge at (cx, cy) with a clear gap around it, cut into what lies below.
void Badge(Canvas& c, float cx, float cy, float r, float gap, const Color& top,
           const Color& bottom) {
  c.Erase(Circle(cx, cy, r + gap));
  c.Fill(Circle(cx, cy, r), VerticalGradient(cy - r, top, cy + r, bottom));
}

// ---------------------------------------------------------------- message icons

void RoundIcon(Canvas& c, const Ctx& k, const Color& top, const Color& bottom) {
  const float r = k.Cx() - k.S(1);
  c.Fill(Circle(k.Cx(), k.Cy(), r), VerticalGradient(k.Cy() - r, top, k.Cy() + r, bottom));
}

void MsgInfo(Canvas& c, const Ctx& k) {
  RoundIcon(c, k, pal::tealBright, pal::teal);
  const float sw = k.E(4);
  const float cx = k.Cx();
  c.Fill(RoundRect(cx - sw / 2, k.P(13), cx + sw / 2, k.P(24), k.S(1)), pal::white);
  c.Fill(Circle(cx, k.S(8.6f), sw / 2 + k.S(0.4f)), pal::white);
}

void MsgQuestion(Canvas& c, const Ctx& k) {
  RoundIcon(c, k, pal::tealBright, pal::teal);
  c.Fill(QuestionMark(k.Cx(), k.S(11.2f), k.S(4.6f), k.S(3.4f), k.S(2.2f)), pal::white);
}

void MsgCross(Canvas& c, const Ctx& k) {
  RoundIcon(c, k, pal::redLight, pal::red);
  c.Fill(Cross(k.Cx(), k.Cy(), k.S(5.5f), k.S(3.6f)), pal::white);
}

void MsgWarn(Canvas& c, const Ctx& k) {
  const float cx = k.Cx();
  c.Fill(Polygon({{cx, k.S(5.2f)}, {k.S(28.4f), k.S(26.6f)}, {k.S(3.6f), k.S(26.6f)}}, k.S(2.2f)),
         VerticalGradient(k.S(3), pal::amberLight, k.S(29), pal::amber));
  const float sw = k.E(4);
  c.Fill(RoundRect(cx - sw / 2, k.P(11), cx + sw / 2, k.P(20), k.S(1.2f)), pal::amberInk);
  c.Fill(Circle(cx, k.S(23.3f), k.S(2.1f)), pal::amberInk);
}

// ---------------------------------------------------------------- small corner pictures

void SmallDisc(Canvas& c, const Ctx& k) {
  const float r = k.Cx() - k.S(0.5f);
  c.Fill(Circle(k.Cx(), k.Cy(), r), VerticalGradient(0, pal::tealDark, k.h, pal::tealDeep));
  c.Fill(Ring(k.Cx(), k.Cy(), r - k.S(0.5f), k.S(1)), WithAlpha(pal::white, 0.35f));
}

void SmallHelp(Canvas& c, const Ctx& k) {
  SmallDisc(c, k);
  c.Fill(QuestionMark(k.Cx(), k.S(6.1f), k.S(2.3f), k.S(1.6f), k.S(1.05f)), pal::white);
}

void SmallClose(Canvas& c, const Ctx& k) {
  SmallDisc(c, k);
  c.Fill(Cross(k.Cx(), k.Cy(), k.S(2.9f), k.S(1.6f)), pal::white);
}

// ---------------------------------------------------------------- skinned buttons

DrawFn Button(State st) {
  return [st](Canvas& c, const Ctx& k) { Face(c, k, 0, 0, k.w, k.h, k.S(3), st); };
}

// ---------------------------------------------------------------- picture buttons

using Glyph = std::function<void(Canvas&, const Ctx&, const Color& ink, const Color& face)>;

DrawFn Tile(State st, Glyph glyph) {
  return [st, glyph](Canvas& c, const Ctx& k) {
    Face(c, k, 0, 0, k.w, k.h, k.S(4), st);
    const FaceColours f = FaceFor(st);
    glyph(c, k, f.glyph, Mix(f.top, f.bottom, 0.5f));
  };
}

void GlyphEdit(Canvas& c, const Ctx& k, const Color& ink, const Color&) {
  // A pencil lying from lower left (its point) to upper right.
  const Point a{k.S(9), k.S(23)}, b{k.S(23), k.S(9)};
  const float len = std::hypot(b.x - a.x, b.y - a.y);
  const Point u{(b.x - a.x) / len, (b.y - a.y) / len};
  const Point n{-u.y, u.x};
  const float hw = k.S(2.6f), tip = k.S(4.2f), gap = k.S(1.1f), cap = k.S(3.2f);
  auto at = [&](float t, float side) {
    return Point{a.x + u.x * t + n.x * side, a.y + u.y * t + n.y * side};
  };
  c.Fill(Polygon({at(0, 0), at(tip, hw), at(tip, -hw)}), ink);
  c.Fill(Polygon({at(tip + gap, hw), at(len - cap - gap, hw), at(len - cap - gap, -hw),
                  at(tip + gap, -hw)}),
         ink);
  c.Fill(Polygon({at(len - cap, hw), at(len, hw), at(len, -hw), at(len - cap, -hw)}, k.S(0.4f)),
         ink);
}

void GlyphDelete(Canvas& c, const Ctx& k, const Color& ink, const Color& face) {
  const float lidTop = k.P(9), lidH = k.W(2);
  c.Fill(RoundRect(k.P(8), lidTop, k.P(24), lidTop + lidH, k.S(0.8f)), ink);
  c.Fill(Outline(RoundRect(k.P(13), k.P(6), k.P(19), lidTop + k.S(0.5f), k.S(1)), k.W(2)), ink);
  c.Fill(Polygon(
             {{k.S(10), k.S(12.5f)}, {k.S(22), k.S(12.5f)}, {k.S(21), k.S(25)}, {k.S(11), k.S(25)}},
             k.S(0.6f)),
         ink);
  for (float x : {13.6f, 16.0f, 18.4f})
    c.Fill(Line({k.S(x), k.S(15.5f)}, {k.S(x), k.S(22)}, k.S(1.2f)), face);
}

void GlyphPlay(Canvas& c, const Ctx& k, const Color& ink, const Color&) {
  c.Fill(Polygon({{k.S(13), k.S(10)}, {k.S(22.5f), k.S(16)}, {k.S(13), k.S(22)}}, k.S(1.3f)), ink);
}

void GlyphStop(Canvas& c, const Ctx& k, const Color& ink, const Color&) {
  c.Fill(RoundRect(k.P(10), k.P(10), k.P(22), k.P(22), k.S(2)), ink);
}

void GlyphPower(Canvas& c, const Ctx& k, const Color& ink, const Color&) {
  const float cx = k.Cx();
  c.Fill(Arc(cx, k.S(17), k.S(6.8f), -55, 235, k.S(2.4f)), ink);
  c.Fill(Line({cx, k.S(7.5f)}, {cx, k.S(15.5f)}, k.S(2.4f)), ink);
}

void GlyphRefresh(Canvas& c, const Ctx& k, const Color& ink, const Color&) {
  RefreshGlyph(c, k.Cx(), k.Cy(), k.S(7), k.S(2.3f), k.S(3.1f), ink);
}

// ---------------------------------------------------------------- monitor window

void ViewGlyph(Canvas& c, const Ctx& k, const Color& ink, const Color&) {
  for (float y : {7.0f, 11.0f, 15.0f}) {
    const float top = k.P(y), bar = k.W(2);
    c.Fill(RoundRect(k.P(6), top, k.P(8), top + bar, k.S(0.5f)), ink);
    c.Fill(RoundRect(k.P(10), top, k.P(18), top + bar, k.S(0.5f)), ink);
  }
}

void StopGlyph(Canvas& c, const Ctx& k, const Color&, const Color&) {
  c.Fill(RoundRect(k.P(8), k.P(8), k.P(16), k.P(16), k.S(1.5f)),
         VerticalGradient(k.S(8), pal::redLight, k.S(16), pal::red));
}

void SmallRefreshGlyph(Canvas& c, const Ctx& k, const Color& ink, const Color&) {
  RefreshGlyph(c, k.Cx(), k.Cy(), k.S(5.4f), k.S(2), k.S(2.6f), ink);
}

// The picture of the idle pane: the engine waits, all is well.
void IdlePane(Canvas& c, const Ctx& k) {
  c.Fill(Circle(k.Cx(), k.Cy(), k.S(31)), VerticalGradient(0, pal::tealMist, k.h, pal::tealPale));
  const Shape cloud = Cloud(k.S(9), k.S(14), k.S(46));
  c.Fill(cloud, pal::white);
  c.Fill(Outline(cloud, k.W(2)), pal::teal);
  c.Fill(ArrowUp(k.S(32), k.S(22), k.S(37), k.S(9), k.S(3)), pal::tealMid);
  Badge(c, k.S(46), k.S(44), k.S(9), k.S(2), pal::greenLight, pal::green);
  c.Fill(Check(k.S(46), k.S(44), k.S(9.5f), k.S(2.4f)), pal::white);
}

void TabFace(Canvas& c, const Ctx& k, bool selected, std::string_view word, bool statusIcon) {
  const float top = selected ? 0 : k.P(3);
  const Shape shape = RoundRect(0, top, k.w, k.h + k.S(8), k.S(4));
  const float bw = k.W(1);
  if (selected) {
    c.Fill(shape, pal::tealSoft);
    c.Fill(Inset(shape, bw), pal::white);
    c.Fill(Intersect(shape, Rect(0, 0, k.w, k.P(3))), pal::teal);
  } else {
    c.Fill(shape, pal::grey200);
    c.Fill(Inset(shape, bw), VerticalGradient(top, pal::grey100, k.h, pal::grey50));
    c.Fill(Rect(0, k.h - bw, k.w, k.h), pal::tealSoft);
  }
  const Color ink = selected ? pal::tealDeep : pal::grey700;
  TextStyle st{k.s, k.S(1.3f), 0.7f};
  const float iconW = k.S(9), gap = k.S(6);
  const float textW = TextWidth(word, st);
  const float x0 = std::round((k.w - iconW - gap - textW) / 2);
  const float mid = (top + k.h) / 2 + (selected ? k.S(1) : 0);
  if (statusIcon) {
    const Color dot = selected ? pal::green : pal::grey500;
    c.Fill(Circle(x0 + iconW / 2, mid, k.S(4)), WithAlpha(dot, 0.25f));
    c.Fill(Circle(x0 + iconW / 2, mid, k.S(2.6f)), dot);
  } else {
    for (float dy : {-3.0f, 0.0f, 3.0f}) {
      const float y = std::round(mid + k.S(dy) - k.W(1) / 2);
      c.Fill(Rect(std::round(x0), y, std::round(x0 + iconW), y + k.W(1)), ink);
    }
  }
  c.Fill(TextShape(word, x0 + iconW + gap, std::round(mid + k.S(4)), st), ink);
}

void TrafficLight(Canvas& c, const Ctx& k, int lit) {
  c.Fill(RoundRect(0, 0, k.w, k.h, k.S(5)), VerticalGradient(0, Rgb(0x3A474E), k.h, pal::ink));
  const Color lamps[3] = {pal::red, pal::amber, pal::green};
  const Color lights[3] = {Rgb(0xF0827B), Rgb(0xFBD27A), Rgb(0x7BD6A0)};
  for (int i = 0; i < 3; ++i) {
    const float cy = k.S(8 + 12 * i), cx = k.Cx(), r = k.S(5);
    if (i == lit) {
      c.Fill(Circle(cx, cy, r), VerticalGradient(cy - r, lights[i], cy + r, lamps[i]));
      c.Fill(Circle(cx - k.S(1.4f), cy - k.S(1.6f), k.S(1.5f)), WithAlpha(pal::white, 0.55f),
             k.S(1.5f));
    } else {
      c.Fill(Circle(cx, cy, r), Rgb(0x47555C));
      c.Fill(Circle(cx, cy, r - k.W(1)), Mix(lamps[i], Rgb(0x3A474E), 0.78f));
    }
  }
}

void SliderBox(Canvas& c, const Ctx& k) {
  const float y0 = k.P(6), y1 = k.P(12);
  const Shape track = RoundRect(k.S(1), y0, k.w - k.S(1), y1, k.S(3));
  c.Fill(track, pal::grey300);
  c.Fill(Inset(track, k.W(1)), VerticalGradient(y0, pal::grey200, y1, pal::grey100));
  // Ticks at 0, 25, 50, 75 and 100 percent, under the knob's centre positions.
  const float knob = ScaledSize(12, static_cast<int>(std::lround(k.s * 100)));
  for (int i = 0; i <= 4; ++i) {
    const float x = std::round(knob / 2 + (k.w - knob) * i / 4.0f - k.W(1) / 2);
    c.Fill(Rect(x, k.P(14), x + k.W(1), k.P(17)), pal::grey300);
  }
}

void SliderKnob(Canvas& c, const Ctx& k) {
  c.Fill(RoundRect(0, 0, k.w, k.h, k.S(3)), pal::tealDark);
  c.Fill(RoundRect(k.W(1), k.W(1), k.w - k.W(1), k.h - k.W(1), k.S(2)),
         VerticalGradient(0, pal::tealBright, k.h, pal::teal));
  for (float y : {6.0f, 8.5f, 11.0f}) {
    const float top = k.P(y);
    c.Fill(Rect(k.P(3.5f), top, k.w - k.P(3.5f), top + k.W(1)), WithAlpha(pal::white, 0.75f));
  }
}

// ---------------------------------------------------------------- job screens

void DayBox(Canvas& c, const Ctx& k, int kind) {
  const Shape box = RoundRect(0, 0, k.w, k.h, k.S(3));
  const float bw = k.W(1);
  if (kind == 1) {  // checked
    c.Fill(box, pal::tealDark);
    c.Fill(Inset(box, bw), VerticalGradient(0, pal::tealBright, k.h, pal::teal));
    c.Fill(Check(k.Cx(), k.Cy() + k.S(0.3f), k.S(9), k.S(2)), pal::white);
  } else if (kind == 0) {  // not checked
    c.Fill(box, pal::tealMid);
    c.Fill(Inset(box, bw), VerticalGradient(0, pal::white, k.h, pal::tealMist));
  } else {  // disabled
    c.Fill(box, pal::grey200);
    c.Fill(Inset(box, bw), pal::grey100);
  }
}

void Pager(Canvas& c, const Ctx& k, bool next, bool enabled) {
  Face(c, k, 0, 0, k.w, k.h, k.S(3), enabled ? State::Normal : State::Disabled);
  const float d = next ? 1 : -1, cx = k.Cx() + k.S(0.5f) * d;
  c.Fill(
      Polyline({{cx - k.S(2) * d, k.S(6)}, {cx + k.S(2) * d, k.S(10)}, {cx - k.S(2) * d, k.S(14)}},
               k.S(2)),
      enabled ? pal::tealDark : pal::grey300);
}

void BackupNowPicture(Canvas& c, const Ctx& k) {
  const Shape cloud = Cloud(k.S(1), k.S(5), k.S(30));
  c.Fill(cloud, VerticalGradient(k.S(5), pal::tealBright, k.S(23), pal::teal));
  c.Fill(ArrowUp(k.S(15.5f), k.S(9.5f), k.S(20.5f), k.S(8), k.S(3)), pal::white);
  Badge(c, k.S(24.5f), k.S(24.5f), k.S(6.5f), k.S(1.5f), pal::amberLight, pal::amber);
  c.Fill(Polygon({{k.S(25.6f), k.S(19.8f)},
                  {k.S(22.2f), k.S(25.2f)},
                  {k.S(24.6f), k.S(25.2f)},
                  {k.S(23.4f), k.S(29.2f)},
                  {k.S(26.8f), k.S(23.8f)},
                  {k.S(24.4f), k.S(23.8f)}}),
         pal::amberInk);
}

void CalendarPicture(Canvas& c, const Ctx& k) {
  // Drawn on a 16 grid.
  const Shape body = RoundRect(k.P(1), k.P(2), k.P(15), k.P(15), k.S(2));
  c.Fill(body, pal::tealDark);
  c.Fill(Inset(body, k.W(1)), pal::white);
  c.Fill(Intersect(body, Rect(0, 0, k.w, k.P(6))),
         VerticalGradient(k.S(2), pal::tealBright, k.S(6), pal::teal));
  for (float x : {4.0f, 11.0f})
    c.Fill(RoundRect(k.P(x), k.P(1), k.P(x) + k.W(1), k.P(4), 0), pal::tealDeep);
  if (k.w >= 24) {
    c.Fill(Circle(k.S(11), k.S(11.2f), k.S(3.6f)), pal::amber);
    c.Fill(Polyline({{k.S(11), k.S(9.2f)}, {k.S(11), k.S(11.4f)}, {k.S(12.6f), k.S(11.4f)}},
                    k.S(0.9f)),
           pal::white);
    for (int i = 0; i < 2; ++i)
      for (int j = 0; j < 2; ++j)
        c.Fill(Rect(k.P(3.5f + 2.5f * i), k.P(8 + 2.5f * j), k.P(3.5f + 2.5f * i) + k.W(1.3f),
                    k.P(8 + 2.5f * j) + k.W(1.3f)),
               pal::tealMid);
  } else {
    for (int i = 0; i < 3; ++i)
      for (int j = 0; j < 2; ++j)
        c.Fill(Rect(k.P(3.5f + 3 * i), k.P(8 + 3 * j), k.P(3.5f + 3 * i) + k.W(2),
                    k.P(8 + 3 * j) + k.W(2)),
               i == 2 && j == 1 ? pal::amber : pal::tealMid);
  }
}

// ---------------------------------------------------------------- sessions

void LogsPicture(Canvas& c, const Ctx& k) {
  const Shape page = Polygon({{k.P(6), k.P(3)},
                              {k.P(20), k.P(3)},
                              {k.P(26), k.P(9)},
                              {k.P(26), k.P(29)},
                              {k.P(6), k.P(29)}});
  c.Fill(page, pal::teal);
  c.Fill(Inset(page, k.W(1)), VerticalGradient(0, pal::white, k.h, pal::tealMist));
  c.Fill(Polygon({{k.P(20), k.P(3)}, {k.P(26), k.P(9)}, {k.P(20), k.P(9)}}), pal::tealSoft);
  for (int i = 0; i < 4; ++i) {
    const float y = k.P(12 + 3.5f * i);
    c.Fill(Rect(k.P(10), y, k.P(i == 3 ? 16 : 22), y + k.W(1.5f)), pal::tealMid);
  }
  Badge(c, k.S(24), k.S(24), k.S(7), k.S(1.5f), pal::tealBright, pal::teal);
  c.Fill(Polyline({{k.S(24), k.S(20)}, {k.S(24), k.S(24.5f)}, {k.S(27), k.S(24.5f)}}, k.S(1.6f)),
         pal::white);
}

void SessionIcon(Canvas& c, const Ctx& k, bool restore) {
  const float r = k.Cx() - k.S(0.5f);
  c.Fill(Circle(k.Cx(), k.Cy(), r), VerticalGradient(0, restore ? pal::tealMid : pal::tealBright,
                                                     k.h, restore ? pal::tealDark : pal::teal));
  const float cx = k.Cx();
  if (restore)
    c.Fill(ArrowDown(cx, k.S(3.5f), k.S(12.5f), k.S(7), k.E(2)), pal::white);
  else
    c.Fill(ArrowUp(cx, k.S(3.5f), k.S(12.5f), k.S(7), k.E(2)), pal::white);
}

// ---------------------------------------------------------------- notifications

void ResultBadge(Canvas& c, const Ctx& k, bool ok) {
  const float cx = k.Cx(), cy = k.Cy();
  c.Fill(Circle(cx, cy, k.S(19.5f)), ok ? pal::greenPale : pal::redPale);
  c.Fill(Circle(cx, cy, k.S(15)),
         VerticalGradient(cy - k.S(15), ok ? pal::greenLight : pal::redLight, cy + k.S(15),
                          ok ? pal::green : pal::red));
  if (ok)
    c.Fill(Check(cx, cy + k.S(0.5f), k.S(14), k.S(3.6f)), pal::white);
  else
    c.Fill(Cross(cx, cy, k.S(5.5f), k.S(3.6f)), pal::white);
}

// ---------------------------------------------------------------- the mark

// The product's mark on a 32 grid: a teal tile with a white cloud and an upward
// arrow; below 24 px just the arrow, which is what reads at that size.
void Mark(Canvas& c, const Ctx& k, bool greyed = false) {
  const Color top = greyed ? pal::grey300 : pal::tealBright;
  const Color bottom = greyed ? pal::grey500 : pal::tealDark;
  const Color edge = greyed ? pal::grey500 : pal::tealDeep;
  const Shape tile = RoundRect(k.P(1), k.P(1), k.P(31), k.P(31), k.S(6.5f));
  const Paint face = VerticalGradient(0, top, k.h, bottom);
  c.Fill(tile, edge);
  c.Fill(Inset(tile, std::max(1.0f, std::round(k.S(0.5f)))), face);
  if (k.w < 24) {
    const float cx = k.Cx();
    c.Fill(ArrowUp(cx, k.S(6), k.S(26), k.S(18), k.E(6)), pal::white);
    return;
  }
  // The arrow is cut out of the cloud, down through its lower edge.
  c.Fill(Cloud(k.S(4), k.S(7.5f), k.S(24)), pal::white);
  c.Fill(ArrowUp(k.Cx(), k.S(11.5f), k.S(22), k.S(9), k.S(3.2f)), face);
}

DrawFn MarkIcon() {
  return [](Canvas& c, const Ctx& k) { Mark(c, k); };
}

void LogoMonitor(Canvas& c, const Ctx& k) {
  Ctx inner = k;
  inner.s = k.s * 2;  // the 32 grid mark at 64
  Mark(c, inner);
  Badge(c, k.S(51), k.S(51), k.S(11), k.S(2.5f), pal::white, pal::tealMist);
  c.Fill(Ring(k.S(51), k.S(51), k.S(10.2f), k.S(1.6f)), pal::tealSoft);
  c.Fill(Polyline({{k.S(44), k.S(52)},
                   {k.S(47.5f), k.S(52)},
                   {k.S(49.5f), k.S(46)},
                   {k.S(52.5f), k.S(57)},
                   {k.S(54.5f), k.S(51)},
                   {k.S(58), k.S(51)}},
                  k.S(2)),
         pal::teal);
}

// ---------------------------------------------------------------- tray

enum class Tray { Running, Paused, Stopped, Transfer, Unknown };

// Tray icons on a 16 grid: the mark, with a state badge in the lower right. The
// light variant is for a light taskbar: the grey tile is darker, the tile's dark
// edge runs along the cut around the badge as well, every badge gets a rim in a
// deeper shade of its colour, and the white transfer badge turns teal with a white
// arrow, so that badge and tile both keep an outline against light grey.
void TrayIcon(Canvas& c, const Ctx& k, Tray t, bool light) {
  const bool greyed = t == Tray::Stopped || t == Tray::Unknown;
  Color top = greyed ? pal::grey300 : pal::tealBright;
  Color bottom = greyed ? pal::grey500 : pal::tealDark;
  Color edge = greyed ? pal::grey500 : pal::tealDeep;
  if (light && greyed) top = pal::grey500, bottom = pal::grey700, edge = pal::ink;
  const Shape tile = RoundRect(0, 0, k.w, k.h, k.S(3.5f));
  c.Fill(tile, edge);
  c.Fill(Inset(tile, std::max(1.0f, std::round(k.S(0.75f)))),
         VerticalGradient(0, top, k.h, bottom));
  // The shaft's edges sit on whole pixels; the head is centred on the shaft.
  const float left = k.P(5), right = k.P(8);
  c.Fill(ArrowUp((left + right) / 2, k.S(2.6f), k.P(12), k.S(8), right - left), pal::white);

  const float bx = k.S(11.6f), by = k.S(11.6f), br = k.S(4.2f);
  Color bt = pal::greenLight, bb = pal::green, rim = Rgb(0x17693A);
  if (t == Tray::Paused) bt = pal::amberLight, bb = pal::amber, rim = Rgb(0x85570B);
  if (t == Tray::Stopped) bt = pal::redLight, bb = pal::red, rim = Rgb(0xA32F28);
  if (t == Tray::Unknown) bt = pal::grey500, bb = pal::grey700, rim = pal::ink;
  if (t == Tray::Transfer && !light) bt = pal::white, bb = pal::tealPale;
  if (t == Tray::Transfer && light) bt = pal::tealBright, bb = pal::teal, rim = pal::tealDeep;
  const float gap = k.S(1.1f), rimWidth = k.W(0.8f);
  // On a light taskbar the tile's edge follows the cut around the badge too.
  if (light) c.Fill(Intersect(Circle(bx, by, br + gap + rimWidth), tile), edge);
  Badge(c, bx, by, br, gap, bt, bb);
  if (light) c.Fill(Ring(bx, by, br - rimWidth / 2, rimWidth), rim);
  Color ink = pal::white;
  if (t == Tray::Paused) ink = pal::amberInk;
  if (t == Tray::Transfer && !light) ink = pal::teal;
  switch (t) {
    case Tray::Running:
      if (k.w >= 24) c.Fill(Check(bx, by, k.S(5), k.S(1.2f)), ink);
      break;
    case Tray::Paused:
      for (float dx : {-1.2f, 1.2f})
        c.Fill(Line({bx + k.S(dx), by - k.S(1.7f)}, {bx + k.S(dx), by + k.S(1.7f)}, k.S(1.3f)),
               ink);
      break;
    case Tray::Stopped:
      c.Fill(Rect(bx - k.S(1.6f), by - k.S(1.6f), bx + k.S(1.6f), by + k.S(1.6f)), ink);
      break;
    case Tray::Transfer:
      c.Fill(Polygon({{bx, by - k.S(2.6f)},
                      {bx + k.S(2.4f), by + k.S(0.2f)},
                      {bx - k.S(2.4f), by + k.S(0.2f)}}),
             ink);
      c.Fill(Rect(bx - k.S(0.8f), by, bx + k.S(0.8f), by + k.S(2.4f)), ink);
      break;
    case Tray::Unknown:
      if (k.w >= 24) c.Fill(QuestionMark(bx, by - k.S(1.2f), k.S(1.3f), k.S(0.9f), k.S(0.6f)), ink);
      break;
  }
}

// ---------------------------------------------------------------- backgrounds

enum class Decor { Plain, About, CustomAbout };

// Window backgrounds: a teal header band with room for the title and the small
// help and close pictures, a quiet light body, a one pixel frame.
void Background(Canvas& c, const Ctx& k, Decor decor) {
  const float band = k.P(34);
  c.FloodRows(VerticalGradient(band, pal::white, k.h, Rgb(0xEDF4F5)));
  c.Fill(Rect(0, 0, k.w, band), VerticalGradient(0, Rgb(0x12858F), band, pal::tealDark));
  c.Fill(Intersect(Circle(k.w - k.S(30), k.S(-40), k.S(90)), Rect(0, 0, k.w, band)),
         WithAlpha(pal::white, 0.06f));
  c.Fill(Intersect(Circle(k.w - k.S(150), k.S(80), k.S(100)), Rect(0, 0, k.w, band)),
         WithAlpha(pal::white, 0.04f));
  c.Fill(Rect(0, band, k.w, band + k.W(1)), pal::tealMid);
  if (decor != Decor::Plain) {
    c.Fill(Intersect(Circle(k.w + k.S(10), k.h + k.S(30), k.S(150)), Rect(0, band, k.w, k.h)),
           WithAlpha(pal::tealPale, 0.55f));
    c.Fill(Intersect(Circle(k.w + k.S(10), k.h + k.S(30), k.S(100)), Rect(0, band, k.w, k.h)),
           WithAlpha(pal::tealPale, 0.6f));
  }
  if (decor == Decor::About) {
    const TextStyle st{k.S(3.2f), k.S(3.4f), 0.8f};
    const float tw = TextWidth("Corvane", st);
    c.Fill(TextShape("Corvane", k.w - tw - k.S(26), k.h - k.S(24), st),
           WithAlpha(pal::teal, 0.16f));
  }
  // The frame as four bars: a full-canvas outline shape would cost a distance
  // evaluation for every pixel of the window.
  const float f = k.W(1);
  c.Fill(Rect(0, 0, k.w, f), pal::tealDark);
  c.Fill(Rect(0, k.h - f, k.w, k.h), pal::tealDark);
  c.Fill(Rect(0, f, f, k.h - f), pal::tealDark);
  c.Fill(Rect(k.w - f, f, k.w, k.h - f), pal::tealDark);
}

DrawFn Bg(Decor d) {
  return [d](Canvas& c, const Ctx& k) { Background(c, k, d); };
}

// ---------------------------------------------------------------- the list

std::vector<Picture> Build() {
  std::vector<Picture> v;
  auto bmp = [&](std::string key, int w, int h, std::string group, std::string use,
                 std::string states, DrawFn draw) {
    v.push_back({std::move(key),
                 Kind::Bitmap,
                 "",
                 w,
                 h,
                 {},
                 std::move(group),
                 std::move(use),
                 std::move(states),
                 std::move(draw)});
  };
  auto ico = [&](std::string file, std::string folder, int grid, std::vector<int> sizes,
                 std::string group, std::string use, std::string states, DrawFn draw) {
    v.push_back({std::move(file), Kind::Icon, std::move(folder), grid, grid, std::move(sizes),
                 std::move(group), std::move(use), std::move(states), std::move(draw)});
  };

  // Message box.
  const std::string msg = "Message box";
  bmp("qv_msg_info", 32, 32, msg, "`MesgBox` `picIcon(0)`, icon 0", "information", MsgInfo);
  bmp("qv_msg_question", 32, 32, msg, "`MesgBox` `picIcon(1)`, icon 1", "question", MsgQuestion);
  bmp("qv_msg_cross", 32, 32, msg, "`MesgBox` `picIcon(2)`, icon 2", "error", MsgCross);
  bmp("qv_msg_warn", 32, 32, msg, "`MesgBox` `picIcon(3)`, icon 3", "warning", MsgWarn);

  const std::string corner = "Corner pictures";
  bmp("qv_small_help", 16, 16, corner,
      "`Picture1` (help) of the monitor window, `bkupjobnotify`, `frmBKErrNotify`, the dial-up "
      "window, "
      "`frmUpdatePassword`",
      "single picture", SmallHelp);
  bmp("qv_small_close", 16, 16, corner,
      "`MsgClose` of `MesgBox`, `btnClose` of the monitor window, `Picture2` (close) of the "
      "notices, the "
      "dial-up window and `frmUpdatePassword`",
      "single picture", SmallClose);

  // Skinned buttons: four families, four states each.
  const std::string btn = "Skinned buttons (picture + `lbl_` label)";
  struct Fam {
    const char* base;
    int w;
    const char* use;
  };
  const Fam fams[] = {
      {"button", 53,
       "the standard key: every skinned button given an empty key (`MesgBox` `cmdButton`, "
       "View Log, Close, Apply, Reset, Send, Exit, Backup Now ...)"},
      {"button_OK", 64, "`lblcopy` (OK) of `AboutQVWIN`"},
      {"button_med", 90, "View Details, Delete Log and Close of `frmSessionLog`"},
      {"button_large200", 120, "`Disconnect` of the dial-up window (its countdown caption)"},
  };
  struct St {
    const char* suffix;
    State state;
    const char* text;
  };
  const St sts[] = {
      {"_enb", State::Normal, "normal (state 0) and disabled (state 2, label greyed); dark label"},
      {"_ovr", State::Hover, "hover (state 1); white label"},
      {"_dwn", State::Down, "pressed (extra); white label"},
      {"_dis", State::Disabled, "disabled (extra, for a renderer that shows it); grey label"},
  };
  for (const Fam& f : fams)
    for (const St& s : sts)
      bmp(std::string(f.base) + s.suffix, f.w, 23, btn, f.use, s.text, Button(s.state));

  // Main window.
  const std::string mon = "Monitor window";
  bmp("qvmon_view", 24, 24, mon, "`btnLogFile` (view the scheduled jobs log)", "single picture",
      Tile(State::Normal, ViewGlyph));
  bmp("qvmon_refresh", 24, 24, mon, "`btnRefresh`", "single picture",
      Tile(State::Normal, SmallRefreshGlyph));
  bmp("qvmon_stop", 24, 24, mon, "`btnStopTransfer`", "single picture",
      Tile(State::Normal, StopGlyph));
  bmp("qv_nor", 64, 64, mon, "`pic_nor`, the picture of the idle pane (`FrameNormal`)",
      "single picture", IdlePane);
  bmp("tab_status_sel", 88, 24, mon, "`pic_Status`, tab image list entry 1", "Status tab selected",
      [](Canvas& c, const Ctx& k) { TabFace(c, k, true, "Status", true); });
  bmp("tab_status", 88, 24, mon, "`pic_Status`, tab image list entry 2", "Status tab not selected",
      [](Canvas& c, const Ctx& k) { TabFace(c, k, false, "Status", true); });
  bmp("tab_details_sel", 88, 24, mon, "`cmdDetails`, tab image list entry 3",
      "Details tab selected",
      [](Canvas& c, const Ctx& k) { TabFace(c, k, true, "Details", false); });
  bmp("tab_details", 88, 24, mon, "`cmdDetails`, tab image list entry 4",
      "Details tab not selected",
      [](Canvas& c, const Ctx& k) { TabFace(c, k, false, "Details", false); });
  bmp("light_green", 16, 40, mon, "`TrafficLights1`, status image list entry 5", "running",
      [](Canvas& c, const Ctx& k) { TrafficLight(c, k, 2); });
  bmp("light_amber", 16, 40, mon, "`TrafficLights1`, status image list entry 6",
      "paused, stopping, unknown", [](Canvas& c, const Ctx& k) { TrafficLight(c, k, 1); });
  bmp("light_red", 16, 40, mon, "`TrafficLights1`, status image list entry 7", "stopped",
      [](Canvas& c, const Ctx& k) { TrafficLight(c, k, 0); });
  bmp("light_off", 16, 40, mon, "`TrafficLights1`, the waiting image (Start, Stop clicks)",
      "waiting", [](Canvas& c, const Ctx& k) { TrafficLight(c, k, -1); });
  bmp("slider_box", 150, 18, mon, "`PictSliderBox1`, the bandwidth slider's track",
      "single picture", SliderBox);
  bmp("slider_knob2", 12, 18, mon, "`PictSliderKnob1`, the bandwidth slider's knob",
      "single picture", SliderKnob);

  // Job screens.
  const std::string jobs = "Job screens";
  struct Btn {
    const char* base;
    const char* use;
    Glyph glyph;
  };
  const Btn btns[] = {
      {"edit", "`Pic_Edit` of `frmManageScheduledJobs`", GlyphEdit},
      {"del", "`Pic_Delete` of `frmManageScheduledJobs` and `frmDTEmail`", GlyphDelete},
      {"imme", "`Pic_Imme` (run now) of `frmManageScheduledJobs`", GlyphPlay},
      {"stop", "`Pic_Sttrf` (stop transfer) of `frmManageScheduledJobs` and `frmDTEmail`",
       GlyphStop},
      {"stcomp", "`Pic_Stcomp` (stop completely) of `frmManageScheduledJobs`", GlyphPower},
      {"ref", "`Pic_Refresh` of `frmManageScheduledJobs` and `frmDTEmail`", GlyphRefresh},
  };
  const St pst[] = {
      {"_gen", State::Normal, "normal"},
      {"_ove", State::Hover, "under the mouse, and with the focus"},
      {"_dwn", State::Down, "pressed (left button down)"},
      {"_dis", State::Disabled, "disabled"},
  };
  for (const Btn& b : btns)
    for (const St& s : pst)
      bmp(std::string(b.base) + s.suffix, 32, 32, jobs, b.use, s.text, Tile(s.state, b.glyph));
  bmp("checked", 16, 16, jobs, "day buttons `pic_Sun_Day` ... `Pic_Sat_Day` of `frmDTEmail`",
      "day chosen", [](Canvas& c, const Ctx& k) { DayBox(c, k, 1); });
  bmp("gen", 16, 16, jobs, "day buttons of `frmDTEmail`", "day not chosen",
      [](Canvas& c, const Ctx& k) { DayBox(c, k, 0); });
  bmp("dis", 16, 16, jobs, "day buttons of `frmDTEmail`", "disabled",
      [](Canvas& c, const Ctx& k) { DayBox(c, k, 2); });
  bmp("qv_backup_imm", 32, 32, jobs, "the picture of `frmBackupNow`", "single picture",
      BackupNowPicture);
  bmp("qv_sch4", 16, 16, jobs, "the form icon of `frmDTEmail` (as an image list picture)",
      "single picture", CalendarPicture);
  ico("qv_sch4.ico", "", 16, kSmallIconSizes, jobs, "the form icon of `frmDTEmail` (as an icon)",
      "single picture", CalendarPicture);
  bmp("bg_auto", 675, 520, jobs,
      "background of `frmManageScheduledJobs` (675 x 520) and `frmSessionLog`", "single picture",
      Bg(Decor::Plain));

  // Session log.
  const std::string ses = "Session Log";
  bmp("next_reg", 20, 20, ses, "`lblNext` of `frmSessionLog`", "enabled",
      [](Canvas& c, const Ctx& k) { Pager(c, k, true, true); });
  bmp("next_dis", 20, 20, ses, "`lblNext` of `frmSessionLog`", "disabled",
      [](Canvas& c, const Ctx& k) { Pager(c, k, true, false); });
  bmp("back_reg", 20, 20, ses, "`lblBack` of `frmSessionLog`", "enabled",
      [](Canvas& c, const Ctx& k) { Pager(c, k, false, true); });
  bmp("back_dis", 20, 20, ses, "`lblBack` of `frmSessionLog`", "disabled",
      [](Canvas& c, const Ctx& k) { Pager(c, k, false, false); });
  bmp("qv_logs", 32, 32, ses, "title picture of `frmSessionLog`", "single picture", LogsPicture);
  bmp("session_backup", 16, 16, ses, "`LstSessionLogView` small image list entry 1 (backup kinds)",
      "single picture", [](Canvas& c, const Ctx& k) { SessionIcon(c, k, false); });
  bmp("session_restore", 16, 16, ses, "`LstSessionLogView` small image list entry 2 (restore)",
      "single picture", [](Canvas& c, const Ctx& k) { SessionIcon(c, k, true); });

  // Notifications.
  const std::string notes = "Notifications and dialogs";
  bmp("qv_desk_notify", 450, 270, notes, "background of `bkupjobnotify` (6750 x 4050 twips)",
      "single picture", Bg(Decor::Plain));
  bmp("qv_dsktp_notification", 360, 190, notes,
      "background of `frmBKErrNotify`, `frmUpdatePassword` (5400 x 2850 twips) and the dial-up "
      "window",
      "single picture", Bg(Decor::Plain));
  bmp("qv_desknoti_success", 40, 40, notes, "`PicSuccessJob` of `bkupjobnotify`", "job succeeded",
      [](Canvas& c, const Ctx& k) { ResultBadge(c, k, true); });
  bmp("qv_desknoti_fail", 40, 40, notes, "`PicFailedJob` of `bkupjobnotify` and `frmBKErrNotify`",
      "job failed / missed", [](Canvas& c, const Ctx& k) { ResultBadge(c, k, false); });
  bmp("qv_medium", 575, 422, notes, "`picbkgrd` of `frmErrorReport` (8625 x 6330 twips)",
      "single picture", Bg(Decor::Plain));
  bmp("qv_feedback", 32, 32, notes, "`imgTitleinfo` of `frmErrorReport`", "single picture",
      [](Canvas& c, const Ctx& k) {
        const Shape env = RoundRect(k.P(2), k.P(7), k.P(28), k.P(25), k.S(2.5f));
        c.Fill(env, pal::teal);
        c.Fill(Inset(env, k.W(1)), VerticalGradient(k.S(7), pal::white, k.S(25), pal::tealPale));
        c.Fill(
            Polyline({{k.S(3.5f), k.S(9)}, {k.S(15), k.S(17.5f)}, {k.S(26.5f), k.S(9)}}, k.S(1.8f)),
            pal::teal);
        Badge(c, k.S(25), k.S(24), k.S(6.5f), k.S(1.5f), pal::amberLight, pal::amber);
        c.Fill(RoundRect(k.S(24), k.S(20), k.S(26), k.S(25), k.S(0.8f)), pal::amberInk);
        c.Fill(Circle(k.S(25), k.S(27.3f), k.S(1.1f)), pal::amberInk);
      });
  bmp("qv_about_us", 450, 330, notes, "`picbkgrd` of `AboutQVWIN` with the standard title",
      "single picture", Bg(Decor::About));
  bmp("qv_cust_about_us", 450, 330, notes,
      "`picbkgrd` of `AboutQVWIN` with a custom title (no word mark)", "single picture",
      Bg(Decor::CustomAbout));
  bmp("qv_logo_monitor", 64, 64, notes, "`imglogo` of `AboutQVWIN`", "single picture", LogoMonitor);

  // Tray: each state for the default dark taskbar and, as <file>_light.ico, for a
  // light one.
  const std::string tray = "Tray icons";
  struct TrayState {
    const char* file;
    Tray state;
    const char* use;
    const char* text;
  };
  const TrayState trays[] = {
      {"tray_running", Tray::Running, "tray image list entry 1", "engine running (idle)"},
      {"tray_stopped", Tray::Stopped, "tray image list entry 2", "engine not running"},
      {"tray_paused", Tray::Paused, "tray (extra state)", "engine paused"},
      {"tray_transfer", Tray::Transfer, "tray (extra state)", "a job is transferring"},
      {"tray_unknown", Tray::Unknown, "tray (extra state)", "engine state unknown"},
  };
  for (bool light : {false, true})
    for (const TrayState& ts : trays)
      ico(std::string(ts.file) + (light ? "_light.ico" : ".ico"), "", 16, kTraySizes, tray,
          std::string(ts.use) + (light ? ", light taskbar" : ""), ts.text,
          [st = ts.state, light](Canvas& c, const Ctx& k) { TrayIcon(c, k, st, light); });

  // Branding files: written aside, copied into images\ only to brand an install,
  // since MonitorIcon.ico there freezes the tray icon.
  const std::string brand = "Branding files (folder `branding/`)";
  ico("MonitorIcon.ico", "branding", 32, kBrandSizes, brand,
      "`images\\MonitorIcon.ico`: replaces the tray icon and the window icon in every state",
      "single picture", MarkIcon());
  ico("qvwin-desktop4.ico", "branding", 32, kBrandSizes, brand,
      "`images\\qvwin-desktop4.ico`: icon used when `Config.txt` is present", "single picture",
      MarkIcon());
  ico("Screenicon.ico", "branding", 32, kBrandSizes, brand,
      "`images\\Screenicon.ico`: icon of the forms under a custom title", "single picture",
      MarkIcon());
  ico("QVMonitor.ico", "app", 32, kBrandSizes, "Program icon (folder `app/`)",
      "icon resource of `QVMonitor.exe`", "single picture", MarkIcon());
  return v;
}

}  // namespace

float Ctx::P(float v) const { return std::round(v * s); }

float Ctx::W(float v) const { return std::max(1.0f, std::round(v * s)); }

float Ctx::E(float v) const { return 2.0f * std::max(1.0f, std::floor(v * s / 2 + 0.5f - 1e-3f)); }

const std::vector<Picture>& Catalogue() {
  static const std::vector<Picture> all = Build();
  return all;
}

const Picture* FindPicture(const std::string& key) {
  for (const Picture& p : Catalogue())
    if (p.key == key) return &p;
  return nullptr;
}

int ScaledSize(int base, int percent) { return (base * percent + 50) / 100; }

std::string BitmapFileName(const std::string& key, int percent) {
  return percent == 100 ? key + ".png" : key + "@" + std::to_string(percent) + ".png";
}

std::string RelativePath(const Picture& p, int percent) {
  const std::string name = p.kind == Kind::Icon ? p.key : BitmapFileName(p.key, percent);
  return p.folder.empty() ? name : p.folder + "/" + name;
}

Canvas RenderBitmap(const Picture& p, int percent) {
  Ctx k;
  k.s = percent / 100.0f;
  k.w = ScaledSize(p.width, percent);
  k.h = ScaledSize(p.height, percent);
  Canvas c(k.w, k.h);
  p.draw(c, k);
  return c;
}

Canvas RenderIcon(const Picture& p, int size) {
  Ctx k;
  k.s = static_cast<float>(size) / p.width;
  k.w = size;
  k.h = size;
  Canvas c(size, size);
  p.draw(c, k);
  return c;
}

}  // namespace art
