#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32ComServer.h"

#include <initguid.h>
#include <oleauto.h>

#include <atomic>
#include <memory>
#include <utility>
#include <vector>

#include "QVMonitor_h.h"
#include "base/Guarded.h"
#include "platform/win32/Win32Handles.h"

// In the import library but not declared by the headers of this tool chain.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib* lib, OLECHAR* path, OLECHAR* helpDir);

namespace platform {

using win32::FromWide;
using win32::Wide;

namespace {

constexpr wchar_t kTypeLibMarshaler[] = L"{00020424-0000-0000-C000-000000000046}";

Text ProgramPath() {
  wchar_t buffer[MAX_PATH * 2] = {};
  DWORD n = ::GetModuleFileNameW(nullptr, buffer, MAX_PATH * 2);
  return FromWide(buffer, n);
}

Text FromBstr(const BSTR* value) {
  if (!value || !*value) return Text();
  return FromWide(*value, ::SysStringLen(*value));
}

// The type library embedded in this program, for IDispatch.
win32::ComPtr<ITypeInfo> LoadMonitorTypeInfo() {
  win32::ComPtr<ITypeLib> lib;
  win32::ComPtr<ITypeInfo> info;
  const Text path = ProgramPath();
  if (FAILED(::LoadTypeLibEx(Wide(path), REGKIND_NONE, lib.Out())) || !lib) return info;
  lib->GetTypeInfoOfGuid(IID__IMonitor, info.Out());
  return info;
}

bool SetValue(HKEY root, const Text& key, const Text& name, const Text& value) {
  win32::UniqueKey h;
  if (::RegCreateKeyExW(root, Wide(key), 0, nullptr, 0, KEY_WRITE, nullptr, h.Out(), nullptr) !=
      ERROR_SUCCESS)
    return false;
  return ::RegSetValueExW(h.Get(), name.empty() ? nullptr : Wide(name), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(Wide(value)),
                          static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))) ==
         ERROR_SUCCESS;
}

// Whether the value is there with exactly this text.
bool HasValue(HKEY root, const Text& key, const Text& name, const Text& value) {
  win32::UniqueKey h;
  if (::RegOpenKeyExW(root, Wide(key), 0, KEY_QUERY_VALUE, h.Out()) != ERROR_SUCCESS) return false;
  std::vector<wchar_t> buffer(value.size() + 2, L'\0');
  DWORD bytes = static_cast<DWORD>(buffer.size() * sizeof(wchar_t));
  DWORD type = 0;
  if (::RegQueryValueExW(h.Get(), name.empty() ? nullptr : Wide(name), nullptr, &type,
                         reinterpret_cast<BYTE*>(buffer.data()), &bytes) != ERROR_SUCCESS ||
      type != REG_SZ)
    return false;
  return Text(FromWide(buffer.data())) == value;
}

// The class, program id, interface and type library under `root` + `prefix`: written,
// or (with `write` false) only checked to be there as they would be written.
bool ClassKeys(HKEY root, const Text& prefix, const Text& exePath, bool write) {
  const Text folder = exePath.substr(0, exePath.rfind(u'\\'));
  const Text clsid = prefix + u"CLSID\\" + kMonitorClsid;
  const Text iface = prefix + u"Interface\\" + kMonitorIid;
  const Text lib = prefix + u"TypeLib\\" + kMonitorLibid + u"\\1.0";
  const Text marshaler = FromWide(kTypeLibMarshaler);
  const struct {
    Text key, name, value;
  } values[] = {
      {clsid, Text(), kMonitorProgId},
      {clsid + u"\\LocalServer32", Text(), u"\"" + exePath + u"\""},
      {clsid + u"\\ProgID", Text(), kMonitorProgId},
      {clsid + u"\\TypeLib", Text(), kMonitorLibid},
      {clsid + u"\\VERSION", Text(), u"1.0"},
      {prefix + kMonitorProgId, Text(), kMonitorProgId},
      {prefix + kMonitorProgId + u"\\Clsid", Text(), kMonitorClsid},
      {iface, Text(), u"_IMonitor"},
      {iface + u"\\ProxyStubClsid", Text(), marshaler},
      {iface + u"\\ProxyStubClsid32", Text(), marshaler},
      {iface + u"\\TypeLib", Text(), kMonitorLibid},
      {iface + u"\\TypeLib", u"Version", u"1.0"},
      {lib, Text(), u"QVMonitor"},
      {lib + u"\\0\\win64", Text(), exePath},
      {lib + u"\\0\\win32", Text(), exePath},
      {lib + u"\\FLAGS", Text(), u"0"},
      {lib + u"\\HELPDIR", Text(), folder},
  };
  bool ok = true;
  for (const auto& v : values) {
    ok &= write ? SetValue(root, v.key, v.name, v.value) : HasValue(root, v.key, v.name, v.value);
    if (!ok && !write) return false;
  }
  return ok;
}

// What COM will find when it looks the class up.
Text RegisteredServer() {
  win32::UniqueKey h;
  const Text key = Text(u"CLSID\\") + kMonitorClsid + u"\\LocalServer32";
  if (::RegOpenKeyExW(HKEY_CLASSES_ROOT, Wide(key), 0, KEY_READ, h.Out()) != ERROR_SUCCESS)
    return Text();
  wchar_t buffer[1024] = {};
  DWORD bytes = sizeof(buffer) - sizeof(wchar_t);
  DWORD type = 0;
  const LONG rc =
      ::RegQueryValueExW(h.Get(), nullptr, nullptr, &type, reinterpret_cast<BYTE*>(buffer), &bytes);
  return rc == ERROR_SUCCESS ? Text(FromWide(buffer)) : Text();
}

// The line of a call of the engine that failed inside.
void ReportCallFailure(const std::shared_ptr<ComFailureSink>& sink, const char16_t* call,
                       const base::ErrorInfo& error) {
  if (sink && *sink) {
    (*sink)(u"COM server: " + Text(call) + u": " + error.description + u" (error " +
            base::FromNumber(error.number) + u"); the call answered with its defaults");
  }
}

// One instance of the class for one client.
class MonitorObject final : public _IMonitor {
 public:
  MonitorObject(std::unique_ptr<IMonitorCallback> callback, ITypeInfo* typeInfo,
                std::shared_ptr<ComFailureSink> failureSink)
      : callback_(std::move(callback)),
        typeInfo_(win32::ComPtr<ITypeInfo>::Share(typeInfo)),
        failureSink_(std::move(failureSink)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) noexcept override {
    if (!out) return E_POINTER;
    if (riid == IID_IUnknown || riid == IID_IDispatch || riid == IID__IMonitor) {
      *out = static_cast<_IMonitor*>(this);
      AddRef();
      return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++refs_; }
  ULONG STDMETHODCALLTYPE Release() noexcept override {
    const ULONG left = --refs_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) noexcept override {
    if (!count) return E_POINTER;
    *count = typeInfo_ ? 1 : 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) noexcept override {
    if (!info) return E_POINTER;
    *info = nullptr;
    if (index != 0 || !typeInfo_) return DISP_E_BADINDEX;
    typeInfo_->AddRef();
    *info = typeInfo_.Get();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) noexcept override {
    if (!typeInfo_) return E_NOTIMPL;
    return ::DispGetIDsOfNames(typeInfo_.Get(), names, count, ids);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO* excep,
                                   UINT* argErr) noexcept override {
    if (!typeInfo_) return E_NOTIMPL;
    return ::DispInvoke(static_cast<_IMonitor*>(this), typeInfo_.Get(), id, flags, params, result,
                        excep, argErr);
  }

  HRESULT STDMETHODCALLTYPE get_dTransferRate(double* value) noexcept override {
    if (!value) return E_POINTER;
    *value = 0;
    base::Guarded([&] { *value = callback_->GetTransferRate(); },
                  [&](const base::ErrorInfo& e) { Failed(u"get_dTransferRate", e); });
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE put_dTransferRate(double value) noexcept override {
    base::Guarded([&] { callback_->SetTransferRate(value); },
                  [&](const base::ErrorInfo& e) { Failed(u"put_dTransferRate", e); });
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE UpdateMonitor(BSTR* sFileName, double* dFileSize,
                                          double* dTotalFilesize, double* dfileBuff,
                                          double* dTotalBuffer, BSTR* sTrfRate, short* iFileProg,
                                          short* iTotalProg, float* StartTime, BSTR* timeelapsed,
                                          BSTR* TimeRemaining, short* engNumber, short* preCall,
                                          LONG sBkStatus, VARIANT* result) noexcept override {
    short answer = 1;
    base::Guarded(
        [&] {
          UpdateMonitorArgs a;
          a.sFileName = FromBstr(sFileName);
          a.dFileSize = dFileSize ? *dFileSize : 0;
          a.dTotalFilesize = dTotalFilesize ? *dTotalFilesize : 0;
          a.dfileBuff = dfileBuff ? *dfileBuff : 0;
          a.dTotalBuffer = dTotalBuffer ? *dTotalBuffer : 0;
          a.sTrfRate = FromBstr(sTrfRate);
          a.iFileProg = iFileProg ? *iFileProg : 0;
          a.iTotalProg = iTotalProg ? *iTotalProg : 0;
          a.StartTime = StartTime ? *StartTime : 0;
          a.timeelapsed = FromBstr(timeelapsed);
          a.TimeRemaining = FromBstr(TimeRemaining);
          a.engNumber = engNumber ? *engNumber : 0;
          a.preCall = preCall ? *preCall : 0;
          a.sBkStatus = sBkStatus;
          answer = callback_->UpdateMonitor(a);
        },
        [&](const base::ErrorInfo& e) { Failed(u"UpdateMonitor", e); });
    if (result) {
      ::VariantInit(result);
      result->vt = VT_I2;
      result->iVal = answer;
    }
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE GetProperTime(LONG lTimeValue, BSTR* result) noexcept override {
    if (!result) return E_POINTER;
    *result = nullptr;
    Text text;
    base::Guarded([&] { text = callback_->GetProperTime(lTimeValue); },
                  [&](const base::ErrorInfo& e) { Failed(u"GetProperTime", e); });
    *result = ::SysAllocStringLen(Wide(text), static_cast<UINT>(text.size()));
    return S_OK;
  }

 private:
  std::atomic<ULONG> refs_{1};
  void Failed(const char16_t* call, const base::ErrorInfo& error) {
    ReportCallFailure(failureSink_, call, error);
  }

  std::unique_ptr<IMonitorCallback> callback_;
  win32::ComPtr<ITypeInfo> typeInfo_;
  std::shared_ptr<ComFailureSink> failureSink_;
};

class MonitorFactory final : public IClassFactory {
 public:
  MonitorFactory(MonitorCallbackFactory make, std::shared_ptr<ComFailureSink> failureSink)
      : make_(std::move(make)),
        typeInfo_(LoadMonitorTypeInfo()),
        failureSink_(std::move(failureSink)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) noexcept override {
    if (!out) return E_POINTER;
    if (riid == IID_IUnknown || riid == IID_IClassFactory) {
      *out = static_cast<IClassFactory*>(this);
      AddRef();
      return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++refs_; }
  ULONG STDMETHODCALLTYPE Release() noexcept override {
    const ULONG left = --refs_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID riid,
                                           void** out) noexcept override {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    HRESULT hr = E_OUTOFMEMORY;
    base::Guarded(
        [&] {
          std::unique_ptr<IMonitorCallback> callback = make_ ? make_() : nullptr;
          if (!callback) {
            hr = E_FAIL;
            return;
          }
          // The new object's first reference is ours; the client's comes from the query.
          const auto object = win32::ComPtr<_IMonitor>::Attach(
              new MonitorObject(std::move(callback), typeInfo_.Get(), failureSink_));
          hr = object->QueryInterface(riid, out);
        },
        [&](const base::ErrorInfo& e) { ReportCallFailure(failureSink_, u"CreateInstance", e); });
    return hr;
  }
  // The monitor lives on its own; a lock from a client does not change that.
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) noexcept override { return S_OK; }

 private:
  std::atomic<ULONG> refs_{1};
  MonitorCallbackFactory make_;
  win32::ComPtr<ITypeInfo> typeInfo_;
  std::shared_ptr<ComFailureSink> failureSink_;
};

}  // namespace

Win32ComServer::~Win32ComServer() { RevokeClassObject(); }

bool Win32ComServer::RegisterServer() noexcept {
  bool ok = false;
  // A failure answers false, which the caller traces.
  base::IgnoreFailure([&] {
    const Text exe = ProgramPath();
    if (exe.empty()) return;
    // The user's classes are what the monitor may write without rights of an
    // administrator; the installer registers for the machine.
    // Registered by an earlier start from this very file: nothing to write, and the
    // start goes on sooner.
    if (RegisteredServer() == u"\"" + exe + u"\"" &&
        ClassKeys(HKEY_CURRENT_USER, u"Software\\Classes\\", exe, false)) {
      ok = true;
      return;
    }
    ok = ClassKeys(HKEY_CURRENT_USER, u"Software\\Classes\\", exe, true);
    // Where the user's classes are not seen through the classes root, the root
    // itself is written, so that the class is found at all.
    if (RegisteredServer() != u"\"" + exe + u"\"")
      ok = ClassKeys(HKEY_CLASSES_ROOT, Text(), exe, true);
    win32::ComPtr<ITypeLib> lib;
    if (SUCCEEDED(::LoadTypeLibEx(Wide(exe), REGKIND_NONE, lib.Out())) && lib) {
      const Text folder = exe.substr(0, exe.rfind(u'\\'));
      std::wstring dir(folder.begin(), folder.end());
      std::wstring path(exe.begin(), exe.end());
      ::RegisterTypeLibForUser(lib.Get(), path.data(), dir.data());
    } else {
      ok = false;
    }
  });
  return ok;
}

bool Win32ComServer::RegisterClassObject(MonitorCallbackFactory factory) noexcept {
  bool ok = false;
  // A failure answers false, which the caller traces.
  base::IgnoreFailure([&] {
    RevokeClassObject();
    // The calls must arrive on this (the window's) thread: an apartment of its own.
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    auto f =
        win32::ComPtr<IClassFactory>::Attach(new MonitorFactory(std::move(factory), failureSink_));
    DWORD cookie = 0;
    const HRESULT hr = ::CoRegisterClassObject(CLSID_IMonitor, f.Get(), CLSCTX_LOCAL_SERVER,
                                               REGCLS_MULTIPLEUSE, &cookie);
    if (FAILED(hr)) return;
    cookie_ = cookie;
    // Held from here by the server until it is revoked.
    factory_ = f.Detach();
    ok = true;
  });
  return ok;
}

void Win32ComServer::RevokeClassObject() noexcept {
  if (cookie_ != 0) ::CoRevokeClassObject(cookie_);
  cookie_ = 0;
  // The reference taken at registration is given back here, once.
  win32::ComPtr<IClassFactory>::Attach(
      static_cast<IClassFactory*>(std::exchange(factory_, nullptr)))
      .Reset();
}

}  // namespace platform
