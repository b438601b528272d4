#pragma once
// A small stroke font drawn by hand for the few words the artwork carries (the tab
// captions and the word mark). Glyphs are polylines on a grid where the capital
// height is 8 units and the x-height 6; a unit is one pixel at 100%.
#include <string_view>

#include "Raster.h"

namespace art {

struct TextStyle {
  float unit = 1.0f;      // pixels per grid unit
  float stroke = 1.3f;    // pixels
  float tracking = 0.7f;  // extra units between letters
};

// Whether the font has a glyph for every character of the text.
bool FontCovers(std::string_view text);
// The advance of the text in pixels.
float TextWidth(std::string_view text, const TextStyle& style);
// The text as one shape, starting at x with its baseline at y.
Shape TextShape(std::string_view text, float x, float baseline, const TextStyle& style);

}  // namespace art
