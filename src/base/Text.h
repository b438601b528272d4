#pragma once
// Text is a sequence of UTF-16 units: one element is one unit, which is what the
// product's lengths, cuts and positions count, identically on Linux and Windows.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace base {

using Text = std::u16string;
using TextView = std::u16string_view;

Text FromUtf8(std::string_view utf8);
std::string ToUtf8(TextView text);  // unpaired surrogates become U+FFFD
// Bytes 0..255 taken as the units of the same value (what a single-byte write puts out).
Text FromLatin1(std::string_view bytes);

// Blanks only (U+0020), as the product's trim has always done; tabs stay.
Text Trim(TextView text);
Text LTrim(TextView text);
Text RTrim(TextView text);
bool IsBlank(TextView text);  // empty after Trim

Text ToLower(TextView text);
Text ToUpper(TextView text);
bool EqualsNoCase(TextView a, TextView b);
bool StartsWith(TextView text, TextView prefix);
bool EndsWith(TextView text, TextView suffix);

// Cuts by UTF-16 unit; counts past the end are clamped, never thrown.
Text Left(TextView text, size_t count);
Text Right(TextView text, size_t count);
// 1-based start as in the design's texts; a start past the end gives "".
Text Mid(TextView text, size_t start1, size_t count = Text::npos);
// 1-based position of `find` at or after `start1`, 0 when absent (an empty `find` gives start1).
size_t InStr(TextView text, TextView find, size_t start1 = 1);
size_t InStrNoCase(TextView text, TextView find, size_t start1 = 1);

// Splits at every occurrence of `separator`. An empty text gives an empty list;
// an empty separator gives the whole text as one item.
std::vector<Text> Split(TextView text, TextView separator);
Text Join(const std::vector<Text>& items, TextView separator);
Text Replace(TextView text, TextView from, TextView to);
Text CutAtNul(TextView text);

// Numbers. ParseLong accepts optional blanks and sign then digits only; anything
// else fails (returns false) and leaves `out` untouched.
bool ParseLong(TextView text, long long& out);
// The leading number of a text, 0 when there is none (blanks skipped, like Val).
double LeadingNumber(TextView text);
bool IsNumeric(TextView text);
Text FromNumber(long long value);
Text PadLeft(TextView text, size_t width, char16_t fill);

}  // namespace base
