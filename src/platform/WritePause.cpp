#include "platform/WritePause.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

namespace platform {

namespace {

struct Request {
  bool active = false;
  WriteStep step = WriteStep::Written;
  base::Text fileName;
  std::string marker;
};

bool StepNamed(std::string_view name, WriteStep& step) {
  static constexpr std::pair<std::string_view, WriteStep> kSteps[] = {
      {"written", WriteStep::Written},     {"flushed", WriteStep::Flushed},
      {"replacing", WriteStep::Replacing}, {"replaced", WriteStep::Replaced},
      {"appending", WriteStep::Appending},
  };
  for (const auto& [text, value] : kSteps) {
    if (text == name) {
      step = value;
      return true;
    }
  }
  return false;
}

Request ReadRequest() {
  Request request;
  const char* value = std::getenv("QV_WRITE_PAUSE");
  if (value == nullptr) return request;
  const std::string text(value);
  const auto first = text.find('|');
  const auto second = first == std::string::npos ? first : text.find('|', first + 1);
  if (second == std::string::npos) return request;
  if (!StepNamed(std::string_view(text).substr(0, first), request.step)) return request;
  request.fileName = base::FromUtf8(text.substr(first + 1, second - first - 1));
  request.marker = text.substr(second + 1);
  request.active = !request.fileName.empty() && !request.marker.empty();
  return request;
}

Request& TheRequest() {
  static Request request = ReadRequest();
  return request;
}

}  // namespace

bool PauseAsked(WriteStep step, base::TextView path) {
  const Request& request = TheRequest();
  return request.active && request.step == step && base::EndsWith(path, request.fileName);
}

void PauseHere() {
  if (std::FILE* marker = std::fopen(TheRequest().marker.c_str(), "wb")) std::fclose(marker);
  for (;;) std::this_thread::sleep_for(std::chrono::seconds(1));
}

}  // namespace platform
