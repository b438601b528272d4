#include "platform/win32/Win32Accessible.h"
#include "platform/win32/Win32Handles.h"

#include <oleacc.h>

namespace platform::win32 {

long AccessibleRole(UiRole role) {
  switch (role) {
    case UiRole::StaticText: return ROLE_SYSTEM_STATICTEXT;
    case UiRole::Graphic: return ROLE_SYSTEM_GRAPHIC;
    case UiRole::Pane: return ROLE_SYSTEM_PANE;
    case UiRole::PushButton: return ROLE_SYSTEM_PUSHBUTTON;
    case UiRole::Indicator: return ROLE_SYSTEM_INDICATOR;
    case UiRole::Slider: return ROLE_SYSTEM_SLIDER;
    case UiRole::CheckBox: return ROLE_SYSTEM_CHECKBUTTON;
    case UiRole::RadioButton: return ROLE_SYSTEM_RADIOBUTTON;
    case UiRole::Text: return ROLE_SYSTEM_TEXT;
    case UiRole::List: return ROLE_SYSTEM_LIST;
    case UiRole::ProgressBar: return ROLE_SYSTEM_PROGRESSBAR;
    case UiRole::DatePicker: return ROLE_SYSTEM_DROPLIST;
    case UiRole::ComboBox: return ROLE_SYSTEM_COMBOBOX;
    case UiRole::Window: return ROLE_SYSTEM_CLIENT;
    case UiRole::None: break;
  }
  return ROLE_SYSTEM_CLIENT;
}

Text AccessibleName(const Text& caption) {
  Text name;
  name.reserve(caption.size());
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == u'&') {
      if (i + 1 < caption.size() && caption[i + 1] == u'&') {
        name += u'&';
        ++i;
      }
      continue;
    }
    name += caption[i];
  }
  return name;
}

namespace {

// The interface's identity by __uuidof: the import library of oleacc.dll carries a
// symbol of the same name as IID_IAccessible that is not the GUID, and the link
// order decides which one a program gets.

// The standard client object with the kit's role, name and state on top.
class KitAccessible final : public IAccessible {
 public:
  KitAccessible(IAccessible* standard, long role, Text name, long state)
      : standard_(ComPtr<IAccessible>::Attach(standard)),
        role_(role),
        name_(std::move(name)),
        state_(state) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) override {
    if (out == nullptr) return E_POINTER;
    if (riid == IID_IUnknown || riid == IID_IDispatch || riid == __uuidof(IAccessible)) {
      *out = static_cast<IAccessible*>(this);
      AddRef();
      return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    return static_cast<ULONG>(InterlockedIncrement(&refs_));
  }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG left = InterlockedDecrement(&refs_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* n) override {
    return standard_->GetTypeInfoCount(n);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT i, LCID l, ITypeInfo** t) override {
    return standard_->GetTypeInfo(i, l, t);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID r, LPOLESTR* n, UINT c, LCID l,
                                          DISPID* d) override {
    return standard_->GetIDsOfNames(r, n, c, l, d);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID d, REFIID r, LCID l, WORD f, DISPPARAMS* p, VARIANT* v,
                                   EXCEPINFO* e, UINT* a) override {
    return standard_->Invoke(d, r, l, f, p, v, e, a);
  }

  HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* out) override {
    if (!Self(child)) return standard_->get_accName(child, out);
    if (out == nullptr) return E_POINTER;
    if (name_.empty()) {
      *out = nullptr;
      return S_FALSE;
    }
    *out = SysAllocStringLen(Wide(name_), static_cast<UINT>(name_.size()));
    return *out != nullptr ? S_OK : E_OUTOFMEMORY;
  }
  HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* out) override {
    if (!Self(child)) return standard_->get_accRole(child, out);
    if (out == nullptr) return E_POINTER;
    out->vt = VT_I4;
    out->lVal = role_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* out) override {
    if (!Self(child)) return standard_->get_accState(child, out);
    if (out == nullptr) return E_POINTER;
    VARIANT base;
    VariantInit(&base);
    const long live =
        SUCCEEDED(standard_->get_accState(child, &base)) && base.vt == VT_I4 ? base.lVal : 0;
    // The standard object knows focus, visibility and enabling; the kit knows whether
    // Tab stops here and what is checked.
    out->vt = VT_I4;
    out->lVal = (live & ~STATE_SYSTEM_FOCUSABLE) | state_;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** p) override {
    return standard_->get_accParent(p);
  }
  HRESULT STDMETHODCALLTYPE get_accChildCount(long* n) override {
    return standard_->get_accChildCount(n);
  }
  HRESULT STDMETHODCALLTYPE get_accChild(VARIANT c, IDispatch** p) override {
    return standard_->get_accChild(c, p);
  }
  HRESULT STDMETHODCALLTYPE get_accValue(VARIANT c, BSTR* p) override {
    return standard_->get_accValue(c, p);
  }
  HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT c, BSTR* p) override {
    return standard_->get_accDescription(c, p);
  }
  HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT c, BSTR* p) override {
    return standard_->get_accHelp(c, p);
  }
  HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* f, VARIANT c, long* t) override {
    return standard_->get_accHelpTopic(f, c, t);
  }
  HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT c, BSTR* p) override {
    return standard_->get_accKeyboardShortcut(c, p);
  }
  HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* p) override { return standard_->get_accFocus(p); }
  HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* p) override {
    return standard_->get_accSelection(p);
  }
  HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT c, BSTR* p) override {
    if (Self(c) && role_ == ROLE_SYSTEM_PUSHBUTTON && p != nullptr) {
      *p = SysAllocString(L"Press");
      return *p != nullptr ? S_OK : E_OUTOFMEMORY;
    }
    return standard_->get_accDefaultAction(c, p);
  }
  HRESULT STDMETHODCALLTYPE accSelect(long f, VARIANT c) override {
    return standard_->accSelect(f, c);
  }
  HRESULT STDMETHODCALLTYPE accLocation(long* x, long* y, long* w, long* h, VARIANT c) override {
    return standard_->accLocation(x, y, w, h, c);
  }
  HRESULT STDMETHODCALLTYPE accNavigate(long d, VARIANT s, VARIANT* e) override {
    return standard_->accNavigate(d, s, e);
  }
  HRESULT STDMETHODCALLTYPE accHitTest(long x, long y, VARIANT* c) override {
    return standard_->accHitTest(x, y, c);
  }
  HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT c) override {
    return standard_->accDoDefaultAction(c);
  }
  HRESULT STDMETHODCALLTYPE put_accName(VARIANT c, BSTR n) override {
    return standard_->put_accName(c, n);
  }
  HRESULT STDMETHODCALLTYPE put_accValue(VARIANT c, BSTR v) override {
    return standard_->put_accValue(c, v);
  }

 private:
  ~KitAccessible() = default;
  static bool Self(const VARIANT& v) { return v.vt == VT_I4 && v.lVal == CHILDID_SELF; }

  LONG refs_ = 1;
  ComPtr<IAccessible> standard_;
  long role_;
  Text name_;
  long state_;
};

}  // namespace

LRESULT AnswerGetObject(HWND hwnd, WPARAM wp, LPARAM lp, const UiControl& state) {
  if (static_cast<LONG>(lp) != OBJID_CLIENT || state.role == UiRole::None) return 0;
  IAccessible* standard = nullptr;
  if (FAILED(CreateStdAccessibleObject(hwnd, OBJID_CLIENT, __uuidof(IAccessible),
                                       reinterpret_cast<void**>(&standard))) ||
      standard == nullptr)
    return 0;
  long flags = state.tabStop ? STATE_SYSTEM_FOCUSABLE : 0;
  if (state.kind == UiKind::CheckBox || state.kind == UiKind::OptionButton) {
    if (state.check == 1) flags |= STATE_SYSTEM_CHECKED;
    if (state.check == 2) flags |= STATE_SYSTEM_MIXED;
  }
  // A text box, combo box or date picker is named by what it holds; the standard
  // object says that as its value.
  const bool holdsText = state.kind == UiKind::TextBox || state.kind == UiKind::ComboBox ||
                         state.kind == UiKind::DatePicker;
  // The answer starts with one reference, ours, given back once the result holds its own.
  const auto answer = ComPtr<IAccessible>::Attach(
      new KitAccessible(standard, AccessibleRole(state.role),
                        holdsText ? Text() : AccessibleName(state.caption), flags));
  return LresultFromObject(__uuidof(IAccessible), wp, answer.Get());
}

}  // namespace platform::win32
