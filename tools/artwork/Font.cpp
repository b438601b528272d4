#include "Font.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace art {

namespace {

using Path = std::vector<Point>;

struct Glyph {
  float advance = 0;
  std::vector<Path> paths;
};

Path Join(Path a, const Path& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

Path Arc(float cx, float cy, float rx, float ry, float a0, float a1) {
  return ArcPoints(cx, cy, rx, ry, a0, a1, std::max(8, static_cast<int>(std::fabs(a1 - a0) / 10)));
}

// Glyph outlines in grid units: x to the right from the glyph's left edge, y down
// with the baseline at 0 (so the capital height is at y = -8).
bool Lookup(char ch, Glyph& g) {
  switch (ch) {
    case 'C': g = {6.6f, {Arc(3.6f, -4, 3.1f, 4, -40, -320)}}; return true;
    case 'D':
      g = {7.0f,
           {Join(Join({{0.6f, 0}, {0.6f, -8}, {2.6f, -8}}, Arc(2.6f, -4, 3.4f, 4, -90, 90)),
                 {{2.6f, 0}, {0.6f, 0}})}};
      return true;
    case 'M':
      g = {8.8f, {{{0.6f, 0}, {0.6f, -8}, {4.2f, -2.4f}, {7.8f, -8}, {7.8f, 0}}}};
      return true;
    case 'S':
      g = {5.8f, {Join(Arc(2.9f, -6, 2.35f, 2, -25, -270), Arc(2.9f, -2, 2.45f, 2, -90, 155))}};
      return true;
    case 'a': g = {6.2f, {Arc(2.6f, -3, 2.3f, 3, 0, 360), {{4.9f, -6}, {4.9f, 0}}}}; return true;
    case 'e':
      g = {5.9f, {Join({{0.6f, -3}, {5.0f, -3}}, Arc(2.8f, -3, 2.2f, 3, 0, -310))}};
      return true;
    case 'i': g = {2.3f, {{{0.7f, -6}, {0.7f, 0}}, {{0.7f, -8.2f}}}}; return true;
    case 'l': g = {2.3f, {{{0.7f, -8.6f}, {0.7f, 0}}}}; return true;
    case 'n':
      g = {6.2f,
           {{{0.6f, -6}, {0.6f, 0}}, Join(Arc(2.75f, -3.6f, 2.15f, 2.4f, 180, 360), {{4.9f, 0}})}};
      return true;
    case 'o': g = {6.2f, {Arc(2.95f, -3, 2.35f, 3, 0, 360)}}; return true;
    case 'r':
      g = {4.3f, {{{0.6f, -6}, {0.6f, 0}}, Arc(3.2f, -3.4f, 2.6f, 2.6f, 180, 280)}};
      return true;
    case 's':
      g = {5.0f,
           {Join(Arc(2.4f, -4.5f, 1.9f, 1.5f, -25, -270), Arc(2.4f, -1.5f, 2.0f, 1.5f, -90, 155))}};
      return true;
    case 't':
      g = {4.2f,
           {Join({{1.3f, -7.6f}, {1.3f, -1.6f}}, Arc(2.9f, -1.6f, 1.6f, 1.6f, 180, 70)),
            {{0, -6}, {3.4f, -6}}}};
      return true;
    case 'u':
      g = {6.2f,
           {Join({{0.6f, -6}}, Arc(2.75f, -2.4f, 2.15f, 2.4f, 180, 0)), {{4.9f, -6}, {4.9f, 0}}}};
      return true;
    case 'v': g = {5.6f, {{{0.3f, -6}, {2.8f, 0}, {5.3f, -6}}}}; return true;
    case ' ': g = {3.0f, {}}; return true;
    default: return false;
  }
}

}  // namespace

bool FontCovers(std::string_view text) {
  Glyph g;
  return std::all_of(text.begin(), text.end(), [&](char c) { return Lookup(c, g); });
}

float TextWidth(std::string_view text, const TextStyle& st) {
  float w = 0;
  Glyph g;
  for (size_t i = 0; i < text.size(); ++i) {
    if (!Lookup(text[i], g)) continue;
    w += g.advance + (i + 1 < text.size() ? st.tracking : 0);
  }
  return w * st.unit;
}

Shape TextShape(std::string_view text, float x, float baseline, const TextStyle& st) {
  std::vector<Shape> parts;
  float pen = x;
  Glyph g;
  for (char c : text) {
    if (!Lookup(c, g)) continue;
    for (const Path& p : g.paths) {
      Path scaled;
      for (const Point& q : p) scaled.push_back({pen + q.x * st.unit, baseline + q.y * st.unit});
      parts.push_back(Polyline(scaled, st.stroke));
    }
    pen += (g.advance + st.tracking) * st.unit;
  }
  if (parts.empty())
    return {[](float, float) { return std::numeric_limits<float>::max(); }, {0, 0, 0, 0}};
  Shape all = parts[0];
  for (size_t i = 1; i < parts.size(); ++i) all = Union(all, parts[i]);
  return all;
}

}  // namespace art
