#include "Raster.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace art {

namespace {

constexpr float kPi = std::numbers::pi_v<float>;
constexpr float kBig = 1e6f;

float SegmentDistance(float px, float py, Point a, Point b) {
  float vx = b.x - a.x, vy = b.y - a.y;
  float wx = px - a.x, wy = py - a.y;
  float len2 = vx * vx + vy * vy;
  float t = len2 > 0 ? std::clamp((wx * vx + wy * vy) / len2, 0.0f, 1.0f) : 0.0f;
  float dx = wx - vx * t, dy = wy - vy * t;
  return std::sqrt(dx * dx + dy * dy);
}

// A distance beyond every anti-aliasing ramp used.
constexpr float kFar = 4.0f;

// Distance from a point to a box, 0 inside: a lower bound of any shape within it.
float BoxDistance(const Box& b, float x, float y) {
  const float dx = std::max({b.x0 - x, 0.0f, x - b.x1});
  const float dy = std::max({b.y0 - y, 0.0f, y - b.y1});
  return std::sqrt(dx * dx + dy * dy);
}

Box Grow(Box b, float by) { return {b.x0 - by, b.y0 - by, b.x1 + by, b.y1 + by}; }

Box Hull(Box a, Box b) {
  return {std::min(a.x0, b.x0), std::min(a.y0, b.y0), std::max(a.x1, b.x1), std::max(a.y1, b.y1)};
}

Box PointsBox(const std::vector<Point>& pts) {
  Box b{kBig, kBig, -kBig, -kBig};
  for (const Point& p : pts) {
    b.x0 = std::min(b.x0, p.x);
    b.y0 = std::min(b.y0, p.y);
    b.x1 = std::max(b.x1, p.x);
    b.y1 = std::max(b.y1, p.y);
  }
  return b;
}

float Channel(float v) { return std::clamp(v, 0.0f, 1.0f); }

uint8_t Byte(float v) { return static_cast<uint8_t>(std::lround(Channel(v) * 255.0f)); }

}  // namespace

Color Rgb(uint32_t rgb, float alpha) {
  return {((rgb >> 16) & 0xFF) / 255.0f, ((rgb >> 8) & 0xFF) / 255.0f, (rgb & 0xFF) / 255.0f,
          alpha};
}

Color Mix(const Color& a, const Color& b, float t) {
  return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t,
          a.a + (b.a - a.a) * t};
}

Color WithAlpha(const Color& c, float alpha) { return {c.r, c.g, c.b, alpha}; }

Shape RoundRect(float x0, float y0, float x1, float y1, float radius) {
  float cx = (x0 + x1) / 2, cy = (y0 + y1) / 2;
  float hx = (x1 - x0) / 2, hy = (y1 - y0) / 2;
  float r = std::min({radius, hx, hy});
  return {[=](float x, float y) {
            float qx = std::fabs(x - cx) - (hx - r);
            float qy = std::fabs(y - cy) - (hy - r);
            float ox = std::max(qx, 0.0f), oy = std::max(qy, 0.0f);
            return std::sqrt(ox * ox + oy * oy) + std::min(std::max(qx, qy), 0.0f) - r;
          },
          {x0, y0, x1, y1}};
}

Shape Rect(float x0, float y0, float x1, float y1) { return RoundRect(x0, y0, x1, y1, 0); }

Shape Circle(float cx, float cy, float r) {
  return {[=](float x, float y) { return std::hypot(x - cx, y - cy) - r; },
          {cx - r, cy - r, cx + r, cy + r}};
}

Shape Ellipse(float cx, float cy, float rx, float ry) {
  // A first-order estimate of the distance: exact on the axes, close elsewhere for
  // the mild ellipses used here.
  return {[=](float x, float y) {
            float nx = (x - cx) / rx, ny = (y - cy) / ry;
            float k0 = std::sqrt(nx * nx + ny * ny);
            float gx = nx / rx, gy = ny / ry;
            float k1 = std::sqrt(gx * gx + gy * gy);
            if (k1 == 0) return -std::min(rx, ry);
            return k0 * (k0 - 1.0f) / k1;
          },
          {cx - rx, cy - ry, cx + rx, cy + ry}};
}

Shape Line(Point a, Point b, float width) {
  float h = width / 2;
  return {[=](float x, float y) { return SegmentDistance(x, y, a, b) - h; },
          Grow(PointsBox({a, b}), h)};
}

Shape Polyline(const std::vector<Point>& pts, float width) {
  float h = width / 2;
  return {[=](float x, float y) {
            float d = kBig;
            if (pts.size() == 1) return std::hypot(x - pts[0].x, y - pts[0].y) - h;
            for (size_t i = 0; i + 1 < pts.size(); ++i)
              d = std::min(d, SegmentDistance(x, y, pts[i], pts[i + 1]));
            return d - h;
          },
          Grow(PointsBox(pts), h)};
}

Shape Polygon(const std::vector<Point>& pts, float grow) {
  return {[=](float x, float y) {
            float d = kBig;
            bool inside = false;
            size_t n = pts.size();
            for (size_t i = 0, j = n - 1; i < n; j = i++) {
              d = std::min(d, SegmentDistance(x, y, pts[j], pts[i]));
              const Point& a = pts[i];
              const Point& b = pts[j];
              if ((a.y > y) != (b.y > y) && x < (b.x - a.x) * (y - a.y) / (b.y - a.y) + a.x)
                inside = !inside;
            }
            return (inside ? -d : d) - grow;
          },
          Grow(PointsBox(pts), grow)};
}

Shape Arc(float cx, float cy, float r, float a0, float a1, float width) {
  if (a1 < a0) std::swap(a0, a1);
  float h = width / 2;
  float r0 = a0 * kPi / 180, r1 = a1 * kPi / 180;
  Point p0{cx + r * std::cos(r0), cy + r * std::sin(r0)};
  Point p1{cx + r * std::cos(r1), cy + r * std::sin(r1)};
  return {[=](float x, float y) {
            float ang = std::atan2(y - cy, x - cx);
            // Bring the angle into [r0, r0 + 2 pi).
            while (ang < r0) ang += 2 * kPi;
            while (ang >= r0 + 2 * kPi) ang -= 2 * kPi;
            float d;
            if (ang <= r1)
              d = std::fabs(std::hypot(x - cx, y - cy) - r);
            else
              d = std::min(std::hypot(x - p0.x, y - p0.y), std::hypot(x - p1.x, y - p1.y));
            return d - h;
          },
          {cx - r - h, cy - r - h, cx + r + h, cy + r + h}};
}

Shape Ring(float cx, float cy, float r, float width) {
  float h = width / 2;
  return {[=](float x, float y) { return std::fabs(std::hypot(x - cx, y - cy) - r) - h; },
          {cx - r - h, cy - r - h, cx + r + h, cy + r + h}};
}

Shape Union(const Shape& a, const Shape& b) {
  auto fa = a.sdf, fb = b.sdf;
  const Box ba = a.bounds, bb = b.bounds;
  // Far from a part's box its box distance is as good as its own: no coverage
  // either way. This keeps long unions (text, clouds) cheap.
  return {[=](float x, float y) {
            const float da = BoxDistance(ba, x, y), db = BoxDistance(bb, x, y);
            return std::min(da > kFar ? da : fa(x, y), db > kFar ? db : fb(x, y));
          },
          Hull(a.bounds, b.bounds)};
}

Shape Subtract(const Shape& a, const Shape& b) {
  auto fa = a.sdf, fb = b.sdf;
  return {[=](float x, float y) { return std::max(fa(x, y), -fb(x, y)); }, a.bounds};
}

Shape Intersect(const Shape& a, const Shape& b) {
  auto fa = a.sdf, fb = b.sdf;
  Box box{std::max(a.bounds.x0, b.bounds.x0), std::max(a.bounds.y0, b.bounds.y0),
          std::min(a.bounds.x1, b.bounds.x1), std::min(a.bounds.y1, b.bounds.y1)};
  return {[=](float x, float y) { return std::max(fa(x, y), fb(x, y)); }, box};
}

Shape Inset(const Shape& s, float by) {
  auto f = s.sdf;
  return {[=](float x, float y) { return f(x, y) + by; }, s.bounds};
}

Shape Outline(const Shape& s, float width) { return Subtract(s, Inset(s, width)); }

Shape Translate(const Shape& s, float dx, float dy) {
  auto f = s.sdf;
  return {[=](float x, float y) { return f(x - dx, y - dy); },
          {s.bounds.x0 + dx, s.bounds.y0 + dy, s.bounds.x1 + dx, s.bounds.y1 + dy}};
}

std::vector<Point> ArcPoints(float cx, float cy, float rx, float ry, float a0, float a1,
                             int steps) {
  if (steps <= 0) steps = std::max(6, static_cast<int>(std::fabs(a1 - a0) / 8));
  std::vector<Point> pts;
  for (int i = 0; i <= steps; ++i) {
    float a = (a0 + (a1 - a0) * i / steps) * kPi / 180;
    pts.push_back({cx + rx * std::cos(a), cy + ry * std::sin(a)});
  }
  return pts;
}

Paint Solid(const Color& c) {
  return [c](float, float) { return c; };
}

Paint VerticalGradient(float y0, const Color& c0, float y1, const Color& c1) {
  return [=](float, float y) {
    float t = y1 == y0 ? 0 : std::clamp((y - y0) / (y1 - y0), 0.0f, 1.0f);
    return Mix(c0, c1, t);
  };
}

Canvas::Canvas(int width, int height)
    : w_(width), h_(height), px_(static_cast<size_t>(width) * height * 4, 0.0f) {}

void Canvas::Fill(const Shape& s, const Paint& p, float feather) {
  float grow = feather;
  int x0 = std::max(0, static_cast<int>(std::floor(s.bounds.x0 - grow)));
  int y0 = std::max(0, static_cast<int>(std::floor(s.bounds.y0 - grow)));
  int x1 = std::min(w_, static_cast<int>(std::ceil(s.bounds.x1 + grow)));
  int y1 = std::min(h_, static_cast<int>(std::ceil(s.bounds.y1 + grow)));
  for (int y = y0; y < y1; ++y) {
    for (int x = x0; x < x1; ++x) {
      float cx = x + 0.5f, cy = y + 0.5f;
      float cov = Coverage(s.sdf(cx, cy), feather);
      if (cov <= 0) continue;
      Blend(x, y, p(cx, cy), cov);
    }
  }
}

void Canvas::Fill(const Shape& s, const Color& c, float feather) { Fill(s, Solid(c), feather); }

void Canvas::Erase(const Shape& s) {
  int x0 = std::max(0, static_cast<int>(std::floor(s.bounds.x0 - 1)));
  int y0 = std::max(0, static_cast<int>(std::floor(s.bounds.y0 - 1)));
  int x1 = std::min(w_, static_cast<int>(std::ceil(s.bounds.x1 + 1)));
  int y1 = std::min(h_, static_cast<int>(std::ceil(s.bounds.y1 + 1)));
  for (int y = y0; y < y1; ++y) {
    for (int x = x0; x < x1; ++x) {
      float cov = Coverage(s.sdf(x + 0.5f, y + 0.5f));
      if (cov <= 0) continue;
      float* d = &px_[(static_cast<size_t>(y) * w_ + x) * 4];
      for (int i = 0; i < 4; ++i) d[i] *= 1 - cov;
    }
  }
}

void Canvas::Flood(const Paint& p) {
  for (int y = 0; y < h_; ++y) {
    for (int x = 0; x < w_; ++x) {
      const Color c = p(x + 0.5f, y + 0.5f);
      Blend(x, y, c, 1);
    }
  }
}

void Canvas::FloodRows(const Paint& p) {
  for (int y = 0; y < h_; ++y) {
    const Color c = p(0.5f, y + 0.5f);
    for (int x = 0; x < w_; ++x) Blend(x, y, c, 1);
  }
}

void Canvas::Blend(int x, int y, const Color& c, float cover) {
  const float a = Channel(c.a) * cover;
  float* d = &px_[(static_cast<size_t>(y) * w_ + x) * 4];
  const float keep = 1 - a;
  d[0] = c.r * a + d[0] * keep;
  d[1] = c.g * a + d[1] * keep;
  d[2] = c.b * a + d[2] * keep;
  d[3] = a + d[3] * keep;
}

Color Canvas::PremultipliedAt(int x, int y) const {
  const float* d = &px_[(static_cast<size_t>(y) * w_ + x) * 4];
  return {d[0], d[1], d[2], d[3]};
}

std::vector<uint8_t> Canvas::PremultipliedBgra() const {
  std::vector<uint8_t> out(static_cast<size_t>(w_) * h_ * 4);
  for (size_t i = 0; i < static_cast<size_t>(w_) * h_; ++i) {
    const float* d = &px_[i * 4];
    uint8_t a = Byte(d[3]);
    // Rounding each channel on its own could leave a colour above its alpha, which
    // premultiplied blending would turn into an overflow; clamp to the alpha.
    out[i * 4 + 0] = std::min(Byte(d[2]), a);
    out[i * 4 + 1] = std::min(Byte(d[1]), a);
    out[i * 4 + 2] = std::min(Byte(d[0]), a);
    out[i * 4 + 3] = a;
  }
  return out;
}

std::vector<uint8_t> Canvas::StraightBgra() const {
  std::vector<uint8_t> out(static_cast<size_t>(w_) * h_ * 4);
  for (size_t i = 0; i < static_cast<size_t>(w_) * h_; ++i) {
    const float* d = &px_[i * 4];
    uint8_t a = Byte(d[3]);
    float inv = d[3] > 0 ? 1.0f / d[3] : 0.0f;
    out[i * 4 + 0] = a ? Byte(d[2] * inv) : 0;
    out[i * 4 + 1] = a ? Byte(d[1] * inv) : 0;
    out[i * 4 + 2] = a ? Byte(d[0] * inv) : 0;
    out[i * 4 + 3] = a;
  }
  return out;
}

void Canvas::Blit(const Canvas& src, int ox, int oy) {
  for (int y = 0; y < src.h_; ++y) {
    int ty = oy + y;
    if (ty < 0 || ty >= h_) continue;
    for (int x = 0; x < src.w_; ++x) {
      int tx = ox + x;
      if (tx < 0 || tx >= w_) continue;
      const float* s = &src.px_[(static_cast<size_t>(y) * src.w_ + x) * 4];
      float* d = &px_[(static_cast<size_t>(ty) * w_ + tx) * 4];
      float keep = 1 - s[3];
      for (int i = 0; i < 4; ++i) d[i] = s[i] + d[i] * keep;
    }
  }
}

}  // namespace art
