#include "platform/fake/FakeServices.h"

namespace platform {

namespace {
Text KeyName(const Text& key) {
  Text k = base::ToLower(key);
  while (!k.empty() && k.back() == u'\\') k.pop_back();
  return k;
}
}  // namespace

std::optional<Text> FakeRegistry::ReadString(RegRoot root, const Text& key, const Text& name,
                                             std::size_t maxBytes) {
  auto it = keys_.find({root, KeyName(key)});
  if (it == keys_.end()) return std::nullopt;
  auto v = it->second.find(base::ToLower(name));
  if (v == it->second.end()) return std::nullopt;
  if ((v->second.size() + 1) * 2 > maxBytes) return std::nullopt;
  return v->second;
}

bool FakeRegistry::WriteString(RegRoot root, const Text& key, const Text& name, const Text& value,
                               unsigned long) {
  KeyId id{root, KeyName(key)};
  if (readOnlyKeys.count(id)) return false;
  keys_[id][base::ToLower(name)] = value;
  return true;
}

bool FakeRegistry::DeleteValue(RegRoot root, const Text& key, const Text& name) {
  auto it = keys_.find({root, KeyName(key)});
  if (it == keys_.end()) return false;
  return it->second.erase(base::ToLower(name)) > 0;
}

bool FakeRegistry::HasKey(RegRoot root, const Text& key) const {
  return keys_.count({root, KeyName(key)}) > 0;
}

void FakeClock::Sleep(std::uint32_t ms) {
  sleptMs += ms;
  tick += ms;
  now = now.AddSeconds(ms / 1000);
}

IMutexService::Created FakeMutexService::CreateMutex(const Text& name, bool) {
  calls.push_back("create");
  if (kernel_->otherUsersObjects.count(name)) return {0, kErrorAccessDenied};
  int& count = kernel_->openCounts[name];
  unsigned long error = count > 0 ? kErrorAlreadyExists : 0;
  ++count;
  std::uintptr_t h = next_++;
  handles_[h] = name;
  return {h, error};
}

bool FakeMutexService::CloseHandle(std::uintptr_t handle) {
  calls.push_back("close");
  auto it = handles_.find(handle);
  if (it == handles_.end()) return false;
  if (--kernel_->openCounts[it->second] <= 0) kernel_->openCounts.erase(it->second);
  handles_.erase(it);
  return true;
}

bool FakeMutexService::ReleaseMutex(std::uintptr_t handle) {
  calls.push_back("release");
  return handles_.count(handle) > 0;
}

std::optional<Text> FakeSystemInfo::Environment(const Text& name) {
  auto it = environment.find(name);
  if (it == environment.end()) return std::nullopt;
  return it->second;
}

DialUpListing FakeDialUp::Connections() {
  ++listings;
  DialUpListing listing;
  if (connections.empty()) {
    listing.none = true;
    return listing;
  }
  listing.error = listError;
  if (listError == 0) listing.connections = connections;
  return listing;
}

unsigned long FakeDialUp::HangUp(std::uintptr_t handle) {
  hangUps.push_back({handle, clock_ ? clock_->TickMs() : 0});
  auto failing = hangUpErrors.find(handle);
  if (failing != hangUpErrors.end()) return failing->second;
  std::erase_if(connections, [handle](const DialUpConnection& c) { return c.handle == handle; });
  return 0;
}

}  // namespace platform
