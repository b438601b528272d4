#pragma once
// A small JSON writer for qvjobs' --json output: one value built by calls in document
// order, commas and the quoting done here. Text is written as ASCII: quotes,
// backslashes and control characters are escaped, and every unit outside ASCII goes out
// as \uXXXX (a character beyond the first plane as its two surrogates), so the output
// reads the same whatever code page the console or the script that reads it assumes.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Text.h"

namespace qvjobs {

// One text as a JSON string, quotes included.
std::string JsonString(base::TextView text);

class JsonWriter {
 public:
  JsonWriter& BeginObject();
  JsonWriter& EndObject();
  JsonWriter& BeginArray();
  JsonWriter& EndArray();
  // The name of the next member of the open object.
  JsonWriter& Key(const char* name);

  JsonWriter& String(base::TextView text);
  JsonWriter& Number(std::int64_t value);
  // Whole numbers without a fraction; others with up to 15 significant digits. A value
  // that is not finite is written as null, which is all JSON has for it.
  JsonWriter& Number(double value);
  JsonWriter& Bool(bool value);
  JsonWriter& Null();

  // Null when empty.
  JsonWriter& StringOrNull(const std::optional<base::Text>& text);
  JsonWriter& NumberOrNull(const std::optional<std::int64_t>& value);
  JsonWriter& NumberOrNull(const std::optional<double>& value);
  JsonWriter& BoolOrNull(const std::optional<bool>& value);

  // The document so far, followed by a line end once the outermost value is closed.
  std::string Document() const;

 private:
  void BeforeValue();

  std::string out_;
  // One entry per open object or array: whether it has a member yet.
  std::vector<bool> open_;
  bool afterKey_ = false;
};

}  // namespace qvjobs
