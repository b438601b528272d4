#include "JsonWriter.h"

#include <cmath>
#include <cstdio>

namespace qvjobs {

namespace {

void AppendEscape(std::string& out, unsigned unit) {
  char buffer[8];
  std::snprintf(buffer, sizeof buffer, "\\u%04x", unit & 0xFFFFu);
  out += buffer;
}

}  // namespace

std::string JsonString(base::TextView text) {
  std::string out = "\"";
  for (char16_t c : text) {
    switch (c) {
      case u'"': out += "\\\""; break;
      case u'\\': out += "\\\\"; break;
      case u'\b': out += "\\b"; break;
      case u'\f': out += "\\f"; break;
      case u'\n': out += "\\n"; break;
      case u'\r': out += "\\r"; break;
      case u'\t': out += "\\t"; break;
      default:
        if (c < 0x20 || c > 0x7E)
          AppendEscape(out, c);
        else
          out += static_cast<char>(c);
    }
  }
  return out + "\"";
}

void JsonWriter::BeforeValue() {
  if (afterKey_) {
    afterKey_ = false;
    return;
  }
  if (!open_.empty()) {
    if (open_.back()) out_ += ",";
    open_.back() = true;
  }
}

JsonWriter& JsonWriter::BeginObject() {
  BeforeValue();
  out_ += "{";
  open_.push_back(false);
  return *this;
}

JsonWriter& JsonWriter::EndObject() {
  out_ += "}";
  if (!open_.empty()) open_.pop_back();
  return *this;
}

JsonWriter& JsonWriter::BeginArray() {
  BeforeValue();
  out_ += "[";
  open_.push_back(false);
  return *this;
}

JsonWriter& JsonWriter::EndArray() {
  out_ += "]";
  if (!open_.empty()) open_.pop_back();
  return *this;
}

JsonWriter& JsonWriter::Key(const char* name) {
  BeforeValue();
  out_ += JsonString(base::FromUtf8(name)) + ":";
  afterKey_ = true;
  return *this;
}

JsonWriter& JsonWriter::String(base::TextView text) {
  BeforeValue();
  out_ += JsonString(text);
  return *this;
}

JsonWriter& JsonWriter::Number(std::int64_t value) {
  BeforeValue();
  out_ += std::to_string(value);
  return *this;
}

JsonWriter& JsonWriter::Number(double value) {
  if (!std::isfinite(value)) return Null();
  BeforeValue();
  char buffer[40];
  if (value == std::trunc(value) && std::fabs(value) < 9.0e15)
    std::snprintf(buffer, sizeof buffer, "%.0f", value);
  else
    std::snprintf(buffer, sizeof buffer, "%.15g", value);
  out_ += buffer;
  return *this;
}

JsonWriter& JsonWriter::Bool(bool value) {
  BeforeValue();
  out_ += value ? "true" : "false";
  return *this;
}

JsonWriter& JsonWriter::Null() {
  BeforeValue();
  out_ += "null";
  return *this;
}

JsonWriter& JsonWriter::StringOrNull(const std::optional<base::Text>& text) {
  return text ? String(base::TextView(*text)) : Null();
}
JsonWriter& JsonWriter::NumberOrNull(const std::optional<std::int64_t>& value) {
  return value ? Number(*value) : Null();
}
JsonWriter& JsonWriter::NumberOrNull(const std::optional<double>& value) {
  return value ? Number(*value) : Null();
}
JsonWriter& JsonWriter::BoolOrNull(const std::optional<bool>& value) {
  return value ? Bool(*value) : Null();
}

std::string JsonWriter::Document() const { return open_.empty() ? out_ + "\n" : out_; }

}  // namespace qvjobs
