#include "fault/FaultyPlatform.h"

#include "fault/FaultyUiHost.h"

namespace fault {

using F = Fault;

// ---- Process list, dial-up -----------------------------------------------------------

bool FaultyProcessList::EnumProcessIds(std::uint32_t byteCount, std::vector<std::uint32_t>& ids,
                                       std::uint32_t& bytesReturned) {
  const auto fault = plan_.Draw("IProcessList::EnumProcessIds", {F::Error, F::Empty, F::Short});
  if (fault == F::Error) {
    bytesReturned = 0;
    return false;
  }
  if (fault == F::Empty) {
    ids.clear();
    bytesReturned = 0;
    return true;
  }
  const bool ok = in_.EnumProcessIds(byteCount, ids, bytesReturned);
  if (fault == F::Short)
    bytesReturned = static_cast<std::uint32_t>(plan_.ShortLength(bytesReturned / 4) * 4);
  return ok;
}

platform::DialUpListing FaultyDialUp::Connections() {
  const auto fault = plan_.Draw("IDialUp::Connections", {F::Error, F::Empty});
  if (fault == F::Empty) return platform::DialUpListing{true, 0, {}};
  platform::DialUpListing listing = in_.Connections();
  if (fault == F::Error && !listing.none) {
    listing.error = 632;  // the structure size is wrong
    listing.connections.clear();
  }
  return listing;
}

// ---- Network objects -----------------------------------------------------------------

namespace {

// The objects made for the monitor are decorated in turn; each owns what it wraps.
template <class I>
class Owning : public Faulty<I> {
 public:
  Owning(std::unique_ptr<I> inner, FaultPlan& plan)
      : Faulty<I>(*inner, plan), own_(std::move(inner)) {}

 private:
  std::unique_ptr<I> own_;
};

class FaultyLogin : public Owning<platform::ILoginObject> {
 public:
  using Owning::Owning;
  bool Login(const Text& userName, const Text& password, long flags) override {
    return Maybe<&Interface::Login>({F::Error, F::Throw, F::Timeout}, false, userName, password,
                                    flags);
  }
};

class FaultyHttp : public Owning<platform::IHttpObject> {
 public:
  using Owning::Owning;
  Text EncodeQueryValue(const Text& value, long flags) override {
    return Maybe<&Interface::EncodeQueryValue>({F::Throw}, Text(), value, flags);
  }
  Text FilterLine(const Text& line) override {
    return Maybe<&Interface::FilterLine>({F::Throw}, Text(), line);
  }
  Text Request(const Text& host, const Text& path, const Text& query, long mode, Text& status,
               long flags, RequestState& state) override {
    const auto fault =
        plan_.Draw("IHttpObject::Request", {F::Error, F::Throw, F::Short, F::Empty, F::Timeout});
    if (fault == F::Throw) plan_.Throw("IHttpObject::Request");
    if (fault == F::Error || fault == F::Timeout) {
      status = fault == F::Error ? u"The server name or address could not be resolved"
                                 : u"The operation timed out";
      state.statusCode = 0;
      return Text();
    }
    Text reply = in_.Request(host, path, query, mode, status, flags, state);
    if (fault == F::Empty) reply.clear();
    if (fault == F::Short) reply.resize(plan_.ShortLength(reply.size()));
    return reply;
  }
  void SendMail(const Text& to, const Text& subject, const Text& body, const Text& from, bool html,
                const MailEvents& events) override {
    const auto fault = plan_.Draw("IHttpObject::SendMail", {F::Error, F::Throw, F::Timeout});
    if (fault == F::Throw) plan_.Throw("IHttpObject::SendMail");
    if (fault) {
      if (events.onProgress) events.onProgress(25);
      if (events.onFailed)
        events.onFailed(fault == F::Timeout ? u"The operation timed out"
                                            : u"The connection with the server was reset");
      return;
    }
    in_.SendMail(to, subject, body, from, html, events);
  }
};

// Creating an object can fail or throw; what was made is decorated in turn.
template <class Decorated, class Create>
auto Creating(FaultPlan& plan, const char* site, Create create) -> decltype(create()) {
  const auto fault = plan.Draw(site, {F::Error, F::Throw});
  if (fault == F::Throw) plan.Throw(site);
  if (fault) return nullptr;
  auto inner = create();
  if (!inner) return nullptr;
  return std::make_unique<Decorated>(std::move(inner), plan);
}

}  // namespace

std::unique_ptr<platform::ILoginObject> FaultyNetwork::CreateLoginObject(
    const platform::ServiceEndpoints& endpoints) {
  return Creating<FaultyLogin>(plan_, "INetworkObjects::CreateLoginObject",
                               [&] { return in_.CreateLoginObject(endpoints); });
}

std::unique_ptr<platform::IHttpObject> FaultyNetwork::CreateHttpObject(
    const platform::ServiceEndpoints& endpoints) {
  return Creating<FaultyHttp>(plan_, "INetworkObjects::CreateHttpObject",
                              [&] { return in_.CreateHttpObject(endpoints); });
}

// ---- The bundle ----------------------------------------------------------------------

namespace {

// Wraps `service` when there is one; the decorator is kept alive by `keep`.
template <class Decorator, class Interface>
Decorator* Wrap(Interface* service, FaultPlan& plan, std::vector<std::shared_ptr<void>>& keep) {
  if (service == nullptr) return nullptr;
  auto d = std::make_shared<Decorator>(*service, plan);
  keep.push_back(d);
  return d.get();
}

}  // namespace

FaultyPlatform::FaultyPlatform(platform::Platform& inner, FaultPlan& plan) : p_(inner) {
  p_.fs = fs_ = Wrap<FaultyFileSystem>(inner.fs, plan, keep_);
  p_.ui = ui_ = Wrap<FaultyUiHost>(inner.ui, plan, keep_);
  p_.profile = Wrap<FaultyProfile>(inner.profile, plan, keep_);
  p_.registry = Wrap<FaultyRegistry>(inner.registry, plan, keep_);
  p_.clock = Wrap<FaultyClock>(inner.clock, plan, keep_);
  p_.mutex = Wrap<FaultyMutex>(inner.mutex, plan, keep_);
  p_.system = Wrap<FaultySystemInfo>(inner.system, plan, keep_);
  p_.shell = Wrap<FaultyShell>(inner.shell, plan, keep_);
  p_.locale = Wrap<FaultyLocale>(inner.locale, plan, keep_);
  p_.processes = Wrap<FaultyProcessList>(inner.processes, plan, keep_);
  p_.services = Wrap<FaultyServiceManager>(inner.services, plan, keep_);
  p_.dialUp = Wrap<FaultyDialUp>(inner.dialUp, plan, keep_);
  p_.sound = Wrap<FaultySound>(inner.sound, plan, keep_);
  p_.help = Wrap<FaultyHelp>(inner.help, plan, keep_);
  p_.osName = Wrap<FaultyOsName>(inner.osName, plan, keep_);
  p_.settingsProvider = Wrap<FaultySettingsProvider>(inner.settingsProvider, plan, keep_);
  p_.network = Wrap<FaultyNetwork>(inner.network, plan, keep_);
  p_.versions = Wrap<FaultyFileVersions>(inner.versions, plan, keep_);
  p_.localeInfo = Wrap<FaultyLocaleInfo>(inner.localeInfo, plan, keep_);
  // The COM server is the Windows shell around the progress callback; natively the
  // harness plays the engine's calls into the callback itself (see MonitorSoak).
}

}  // namespace fault
