// echo-server.exe [sta|mta] [READY_FILE]: the server of the bare call. Registers its class
// and type library in the prefix, offers the class object, writes READY_FILE, and pumps
// messages until WM_QUIT (or for ever, as the monitor does). Every method returns at
// once and keeps nothing.
#include <windows.h>
#include <initguid.h>
#include <objbase.h>
#include <oleauto.h>

#include <cstring>
#include <string>

#include "Echo_h.h"

namespace {

const wchar_t kClsid[] = L"{5E0C7A33-2B64-4C1F-9D3A-7F1E2B6C0A41}";
const wchar_t kIid[] = L"{5E0C7A32-2B64-4C1F-9D3A-7F1E2B6C0A41}";
const wchar_t kLibid[] = L"{5E0C7A31-2B64-4C1F-9D3A-7F1E2B6C0A41}";
const wchar_t kTypeLibMarshaler[] = L"{00020424-0000-0000-C000-000000000046}";

void Set(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
  HKEY h;
  if (RegCreateKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &h,
                      nullptr) != ERROR_SUCCESS)
    return;
  RegSetValueExW(h, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                 static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
  RegCloseKey(h);
}

ITypeInfo* Register() {
  wchar_t exe[MAX_PATH];
  GetModuleFileNameW(nullptr, exe, MAX_PATH);
  const std::wstring clsid = std::wstring(L"CLSID\\") + kClsid;
  const std::wstring iface = std::wstring(L"Interface\\") + kIid;
  Set(clsid + L"\\LocalServer32", nullptr, std::wstring(L"\"") + exe + L"\"");
  Set(L"ComEcho.Echo", nullptr, L"ComEcho.Echo");
  Set(L"ComEcho.Echo\\Clsid", nullptr, kClsid);
  Set(clsid + L"\\TypeLib", nullptr, kLibid);
  Set(iface, nullptr, L"IEcho");
  Set(iface + L"\\ProxyStubClsid32", nullptr, kTypeLibMarshaler);
  Set(iface + L"\\TypeLib", nullptr, kLibid);
  Set(iface + L"\\TypeLib", L"Version", L"1.0");
  ITypeLib* lib = nullptr;
  ITypeInfo* info = nullptr;
  if (SUCCEEDED(LoadTypeLibEx(exe, REGKIND_REGISTER, &lib)) && lib) {
    lib->GetTypeInfoOfGuid(IID_IEcho, &info);
    lib->Release();
  }
  return info;
}

class Echo final : public IEcho {
 public:
  explicit Echo(ITypeInfo* info) : info_(info) {}
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) override {
    if (riid == IID_IUnknown || riid == IID_IDispatch || riid == IID_IEcho) {
      *out = static_cast<IEcho*>(this);
      AddRef();
      return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return InterlockedIncrement(&refs_); }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG left = InterlockedDecrement(&refs_);
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* n) override {
    *n = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** out) override {
    info_->AddRef();
    *out = info_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT n, LCID,
                                          DISPID* ids) override {
    return DispGetIDsOfNames(info_, names, n, ids);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* p,
                                   VARIANT* result, EXCEPINFO* e, UINT* err) override {
    return DispInvoke(static_cast<IEcho*>(this), info_, id, flags, p, result, e, err);
  }
  HRESULT STDMETHODCALLTYPE Progress(BSTR*, double*, double*, double*, double*, BSTR*, short*,
                                     short*, float*, BSTR*, BSTR*, short*, short*, LONG,
                                     VARIANT* result) override {
    if (result) {
      VariantInit(result);
      result->vt = VT_I2;
      result->iVal = 1;
    }
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Ping() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Values(double, double, short, LONG, short* result) override {
    *result = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Text(BSTR, short* result) override {
    *result = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Strings(BSTR*, BSTR*, BSTR*, BSTR*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Numbers(double*, short*, float*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Answer(VARIANT* result) override {
    VariantInit(result);
    result->vt = VT_I2;
    result->iVal = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Optionals(short*, LONG) override { return S_OK; }

 private:
  LONG refs_ = 1;
  ITypeInfo* info_;
};

class Factory final : public IClassFactory {
 public:
  explicit Factory(ITypeInfo* info) : info_(info) {}
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) override {
    if (riid == IID_IUnknown || riid == IID_IClassFactory) {
      *out = static_cast<IClassFactory*>(this);
      AddRef();
      return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID riid, void** out) override {
    Echo* e = new Echo(info_);
    const HRESULT hr = e->QueryInterface(riid, out);
    e->Release();
    return hr;
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  ITypeInfo* info_;
};

}  // namespace

int main(int argc, char** argv) {
  const bool mta = argc > 1 && std::strcmp(argv[1], "mta") == 0;
  CoInitializeEx(nullptr, mta ? COINIT_MULTITHREADED : COINIT_APARTMENTTHREADED);
  ITypeInfo* info = Register();
  if (!info) return 2;
  static Factory factory(info);
  DWORD cookie = 0;
  if (FAILED(CoRegisterClassObject(CLSID_Echo, &factory, CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE,
                                   &cookie)))
    return 3;
  // A client that came before this would make COM start a second server of its own.
  if (argc > 2) {
    HANDLE ready = CreateFileA(argv[2], GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                               FILE_ATTRIBUTE_NORMAL, nullptr);
    if (ready != INVALID_HANDLE_VALUE) CloseHandle(ready);
  }
  // A window of its own, as a program with a user interface has.
  CreateWindowExW(0, L"STATIC", L"echo-server", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  MSG msg;
  while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
    TranslateMessage(&msg);
    DispatchMessageW(&msg);
  }
  return 0;
}
