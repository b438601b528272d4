#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32OsNameProvider.h"
#include "platform/win32/Win32Handles.h"

#include <objbase.h>
#include <oleauto.h>

namespace platform {
namespace {

constexpr wchar_t kProgId[] = L"QVOSInfo.OSName";
constexpr wchar_t kMethod[] = L"GetOSName";

// COM for the length of one call; a thread that has it already keeps it as it is.
class ComScope {
 public:
  ComScope() : hr_(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
  ~ComScope() {
    if (SUCCEEDED(hr_)) ::CoUninitialize();
  }
  ComScope(const ComScope&) = delete;
  ComScope& operator=(const ComScope&) = delete;

 private:
  HRESULT hr_;
};

}  // namespace

std::optional<Text> Win32OsNameProvider::OsName() noexcept {
  return win32::NoThrow(std::optional<Text>(), []() -> std::optional<Text> {
    ComScope com;
    CLSID clsid{};
    if (FAILED(::CLSIDFromProgID(kProgId, &clsid))) return std::nullopt;

    win32::ComPtr<IDispatch> object;
    if (FAILED(
            ::CoCreateInstance(clsid, nullptr, CLSCTX_SERVER, IID_IDispatch, object.OutVoid())) ||
        !object)
      return std::nullopt;

    std::optional<Text> name;
    DISPID id = 0;
    LPOLESTR method = const_cast<LPOLESTR>(kMethod);
    if (SUCCEEDED(object->GetIDsOfNames(IID_NULL, &method, 1, LOCALE_USER_DEFAULT, &id))) {
      DISPPARAMS none{};
      VARIANT result;
      ::VariantInit(&result);
      if (SUCCEEDED(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none,
                                   &result, nullptr, nullptr)) &&
          SUCCEEDED(::VariantChangeType(&result, &result, 0, VT_BSTR)) && result.bstrVal) {
        name = win32::FromWide(result.bstrVal, ::SysStringLen(result.bstrVal));
      } else if (result.vt == VT_EMPTY) {
        name = Text();
      }
      ::VariantClear(&result);
    }
    return name;
  });
}

}  // namespace platform
