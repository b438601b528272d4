#pragma once
// The product's own closed objects, which the monitor only creates and calls.
#include <functional>
#include <optional>

#include "base/Text.h"

namespace platform {

using base::Text;

class IOsNameProvider {
 public:
  virtual ~IOsNameProvider() = default;
  // The operating system's name; nullopt when the object is not registered.
  virtual std::optional<Text> OsName() = 0;
};

class ISettingsProvider {
 public:
  virtual ~ISettingsProvider() = default;
  // Asked with a key and two zeros; "" when unknown or unavailable.
  virtual Text GetSetting(const Text& key, long a, long b) = 0;
};

class ILoginObject {
 public:
  virtual ~ILoginObject() = default;
  virtual bool Login(const Text& userName, const Text& password) = 0;
};

class IHttpObject {
 public:
  virtual ~IHttpObject() = default;
  virtual Text EncodeQueryValue(const Text& value) = 0;
  virtual Text FilterLine(const Text& line) = 0;
  virtual Text Request(const Text& host, const Text& path) = 0;
  struct MailEvents {
    std::function<void()> onSent;
    std::function<void(const Text& error)> onFailed;
    std::function<void(long percent)> onProgress;
  };
  virtual bool SendMail(const Text& to, const Text& subject, const Text& body,
                        const Text& attachment, const MailEvents& events) = 0;
};

}  // namespace platform
