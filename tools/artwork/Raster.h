#pragma once
// A tiny software rasteriser for the monitor's artwork.
//
// Shapes are signed distance functions (negative inside, in pixels). A pixel's
// coverage is taken at its centre as clamp(0.5 - d, 0, 1), which is exact for a
// straight edge and gives one pixel of anti-aliasing on curves and diagonals. An
// edge on a whole pixel boundary therefore comes out fully crisp, which is how the
// 100% pictures keep 1 px-aligned borders.
//
// The canvas keeps premultiplied RGBA in floats, composited source-over.
#include <cstdint>
#include <functional>
#include <vector>

namespace art {

struct Color {
  float r = 0, g = 0, b = 0, a = 0;  // straight (not premultiplied), 0..1
};

Color Rgb(uint32_t rgb, float alpha = 1.0f);  // 0xRRGGBB
Color Mix(const Color& a, const Color& b, float t);
Color WithAlpha(const Color& c, float alpha);

struct Point {
  float x = 0, y = 0;
};

struct Box {
  float x0 = 0, y0 = 0, x1 = 0, y1 = 0;
};

// A shape: a distance function and the box outside which it is surely empty.
struct Shape {
  std::function<float(float, float)> sdf;
  Box bounds;
};

// Primitive shapes. Coordinates are pixels with (0,0) the top left corner of the
// top left pixel; the centre of pixel (i,j) is (i+0.5, j+0.5).
Shape RoundRect(float x0, float y0, float x1, float y1, float radius);
Shape Rect(float x0, float y0, float x1, float y1);
Shape Circle(float cx, float cy, float r);
Shape Ellipse(float cx, float cy, float rx, float ry);
// A line of the given width with round ends.
Shape Line(Point a, Point b, float width);
// Connected segments with round joins and ends.
Shape Polyline(const std::vector<Point>& pts, float width);
// A filled polygon (even-odd), grown outwards by `grow` pixels, which rounds its
// convex corners with that radius.
Shape Polygon(const std::vector<Point>& pts, float grow = 0.0f);
// A circular arc from angle a0 to a1 (degrees, 0 = right, 90 = down), stroked.
Shape Arc(float cx, float cy, float r, float a0, float a1, float width);
// A ring (outline of a circle).
Shape Ring(float cx, float cy, float r, float width);

// Set operations.
Shape Union(const Shape& a, const Shape& b);
Shape Subtract(const Shape& a, const Shape& b);
Shape Intersect(const Shape& a, const Shape& b);
// The outline of a shape, `width` wide, lying inside its edge.
Shape Inset(const Shape& s, float by);
Shape Outline(const Shape& s, float width);
Shape Translate(const Shape& s, float dx, float dy);

// Points of an elliptic arc, for glyph paths. Angles in degrees as in Arc.
std::vector<Point> ArcPoints(float cx, float cy, float rx, float ry, float a0, float a1,
                             int steps = 0);

// Paint: the colour at a point.
using Paint = std::function<Color(float, float)>;
Paint Solid(const Color& c);
Paint VerticalGradient(float y0, const Color& c0, float y1, const Color& c1);

class Canvas {
 public:
  Canvas(int width, int height);

  int Width() const { return w_; }
  int Height() const { return h_; }

  // Paints the shape with the paint; `feather` widens the edge ramp (1 = crisp).
  void Fill(const Shape& s, const Paint& p, float feather = 1.0f);
  void Fill(const Shape& s, const Color& c, float feather = 1.0f);
  // Makes the shape's area transparent (a knockout), keeping what is outside it.
  void Erase(const Shape& s);
  // Paints the whole canvas.
  void Flood(const Paint& p);
  // The same for a paint that changes only from top to bottom (one call a row).
  void FloodRows(const Paint& p);

  // Premultiplied pixel, channels 0..1.
  Color PremultipliedAt(int x, int y) const;
  // The picture as 8-bit premultiplied BGRA, rows top to bottom.
  std::vector<uint8_t> PremultipliedBgra() const;
  // The picture as 8-bit straight BGRA, rows top to bottom (for icons and PNG).
  std::vector<uint8_t> StraightBgra() const;

  // Draws another canvas onto this one at (x, y).
  void Blit(const Canvas& src, int x, int y);

 private:
  // Source-over of a straight colour with the given coverage at one pixel.
  void Blend(int x, int y, const Color& c, float cover);

  int w_, h_;
  std::vector<float> px_;  // premultiplied r, g, b, a
};

// Coverage of a distance at a pixel centre.
inline float Coverage(float d, float feather = 1.0f) {
  float c = 0.5f - d / feather;
  return c < 0 ? 0 : (c > 1 ? 1 : c);
}

}  // namespace art
