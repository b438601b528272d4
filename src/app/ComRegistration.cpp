#include "app/ComRegistration.h"

#include <memory>

#include "engine/MonitorCallback.h"
#include "frame/Logs.h"

namespace app {

namespace {

bool IsSwitch(const base::Text& arguments, base::TextView word) {
  const base::Text a = base::Trim(arguments);
  if (a.size() != word.size() + 1 || (a[0] != u'/' && a[0] != u'-')) return false;
  return base::EqualsNoCase(base::TextView(a).substr(1), word);
}

}  // namespace

bool IsRegServerCommand(const base::Text& arguments) { return IsSwitch(arguments, u"RegServer"); }
bool IsEmbeddingCommand(const base::Text& arguments) { return IsSwitch(arguments, u"Embedding"); }

void ServeMonitorClass(frame::AppState& app, platform::Win32ComServer& server) {
  if (!server.RegisterServer()) frame::WriteTrace(app, u"Unable to register the IMonitor class.");
  const bool served =
      server.RegisterClassObject([&app] { return std::make_unique<engine::MonitorCallback>(app); });
  if (!served) frame::WriteTrace(app, u"Unable to serve the IMonitor class.");
}

}  // namespace app
