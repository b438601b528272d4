#pragma once
// Owners of Windows handles. Whatever a function or a record of the Windows code
// creates and must give back (GDI objects, icons, menus, windows, kernel, find and
// service handles, registry keys, device contexts, HTTP handles, strings of the
// automation allocator, COM interfaces) is held by one of these, so it
// is given back exactly once, whichever way the owner goes. No release call is
// written by hand outside this header; a handle handed over to the system (a region
// given to SetWindowRgn, a submenu appended to its menu) leaves its holder through
// Detach(), with a comment saying who owns it from there.
#include "platform/win32/Win32Text.h"

#include <commctrl.h>
#include <oleauto.h>
#include <unknwn.h>
#include <winhttp.h>

#include <type_traits>
#include <utility>

namespace platform::win32 {

// The one owner of a handle of type H, given back with Release(h). Null (and, for
// kernel handles, INVALID_HANDLE_VALUE) means none.
template <class H, auto Release>
class Unique {
 public:
  Unique() noexcept = default;
  explicit Unique(H h) noexcept : h_(h) {}
  ~Unique() { Reset(); }
  Unique(Unique&& other) noexcept : h_(other.Detach()) {}
  Unique& operator=(Unique&& other) noexcept {
    if (this != &other) Reset(other.Detach());
    return *this;
  }
  Unique(const Unique&) = delete;
  Unique& operator=(const Unique&) = delete;

  H Get() const noexcept { return h_; }
  explicit operator bool() const noexcept { return Valid(h_); }
  // Gives back what is held and takes `h` (none by default).
  void Reset(H h = H{}) noexcept {
    const H old = h_;
    h_ = h;
    if (Valid(old)) Release(old);
  }
  // Gives the handle up without releasing it: the caller (or the system) owns it now.
  [[nodiscard]] H Detach() noexcept { return std::exchange(h_, H{}); }
  // For calls that return the handle through a pointer; what was held goes first.
  H* Out() noexcept {
    Reset();
    return &h_;
  }

 private:
  static bool Valid(H h) noexcept {
    if constexpr (std::is_same_v<H, HANDLE>) {
      return h != nullptr && h != INVALID_HANDLE_VALUE;
    } else {
      return h != nullptr;
    }
  }

  H h_{};
};

namespace detail {
// A window may already be gone with its owner or parent; only a live one is destroyed.
inline void DestroyLiveWindow(HWND hwnd) noexcept {
  if (::IsWindow(hwnd)) ::DestroyWindow(hwnd);
}
inline void DeleteGdiObject(HGDIOBJ object) noexcept { ::DeleteObject(object); }
inline void DeleteDeviceContext(HDC dc) noexcept { ::DeleteDC(dc); }
inline void DestroyIconHandle(HICON icon) noexcept { ::DestroyIcon(icon); }
inline void DestroyMenuHandle(HMENU menu) noexcept { ::DestroyMenu(menu); }
inline void CloseKernelHandle(HANDLE h) noexcept { ::CloseHandle(h); }
inline void CloseFind(HANDLE h) noexcept { ::FindClose(h); }
inline void CloseServiceManagerHandle(SC_HANDLE h) noexcept { ::CloseServiceHandle(h); }
inline void CloseKey(HKEY key) noexcept { ::RegCloseKey(key); }
inline void DestroyImageListHandle(HIMAGELIST list) noexcept { ::ImageList_Destroy(list); }
inline void CloseInternet(HINTERNET h) noexcept { ::WinHttpCloseHandle(h); }
inline void FreeBstr(BSTR text) noexcept { ::SysFreeString(text); }
}  // namespace detail

using UniqueBitmap = Unique<HBITMAP, &detail::DeleteGdiObject>;
using UniqueBrush = Unique<HBRUSH, &detail::DeleteGdiObject>;
using UniqueFont = Unique<HFONT, &detail::DeleteGdiObject>;
using UniqueRegion = Unique<HRGN, &detail::DeleteGdiObject>;
using UniqueDC = Unique<HDC, &detail::DeleteDeviceContext>;  // from CreateCompatibleDC
using UniqueIcon = Unique<HICON, &detail::DestroyIconHandle>;
using UniqueMenu = Unique<HMENU, &detail::DestroyMenuHandle>;
using UniqueWindow = Unique<HWND, &detail::DestroyLiveWindow>;
using UniqueHandle = Unique<HANDLE, &detail::CloseKernelHandle>;
using UniqueFindHandle = Unique<HANDLE, &detail::CloseFind>;
using UniqueServiceHandle = Unique<SC_HANDLE, &detail::CloseServiceManagerHandle>;
using UniqueKey = Unique<HKEY, &detail::CloseKey>;
using UniqueImageList = Unique<HIMAGELIST, &detail::DestroyImageListHandle>;
using UniqueInternet = Unique<HINTERNET, &detail::CloseInternet>;  // session, connection, request
using UniqueBstr = Unique<BSTR, &detail::FreeBstr>;

// One reference to a COM interface, given back with Release once. A pointer the
// holder takes over (Attach, Out) is counted already; Share adds a reference.
template <class I>
class ComPtr {
 public:
  ComPtr() noexcept = default;
  ~ComPtr() { Reset(); }
  ComPtr(ComPtr&& other) noexcept : p_(other.Detach()) {}
  ComPtr& operator=(ComPtr&& other) noexcept {
    if (this != &other) Reset(other.Detach());
    return *this;
  }
  ComPtr(const ComPtr&) = delete;
  ComPtr& operator=(const ComPtr&) = delete;

  // Takes over a reference the caller was given.
  static ComPtr Attach(I* p) noexcept {
    ComPtr c;
    c.p_ = p;
    return c;
  }
  // Takes a reference of its own to `p`.
  static ComPtr Share(I* p) noexcept {
    if (p != nullptr) p->AddRef();
    return Attach(p);
  }

  I* Get() const noexcept { return p_; }
  I* operator->() const noexcept { return p_; }
  explicit operator bool() const noexcept { return p_ != nullptr; }
  void Reset(I* p = nullptr) noexcept {
    I* old = std::exchange(p_, p);
    if (old != nullptr) old->Release();
  }
  [[nodiscard]] I* Detach() noexcept { return std::exchange(p_, nullptr); }
  // For calls that return the interface through a pointer; what was held goes first.
  I** Out() noexcept {
    Reset();
    return &p_;
  }
  void** OutVoid() noexcept { return reinterpret_cast<void**>(Out()); }

 private:
  I* p_ = nullptr;
};

// An object selected into a device context for the holder's lifetime; the one it
// replaced is selected back at the end.
class Selected {
 public:
  Selected(HDC dc, HGDIOBJ object) noexcept : dc_(dc), old_(::SelectObject(dc, object)) {}
  ~Selected() {
    if (old_ != nullptr && old_ != HGDI_ERROR) ::SelectObject(dc_, old_);
  }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

 private:
  HDC dc_;
  HGDIOBJ old_;
};

// GetDC and ReleaseDC: the device context of a window (null: the screen).
class WindowDC {
 public:
  explicit WindowDC(HWND hwnd) noexcept : hwnd_(hwnd), dc_(::GetDC(hwnd)) {}
  ~WindowDC() {
    if (dc_ != nullptr) ::ReleaseDC(hwnd_, dc_);
  }
  WindowDC(const WindowDC&) = delete;
  WindowDC& operator=(const WindowDC&) = delete;

  HDC Get() const noexcept { return dc_; }
  explicit operator bool() const noexcept { return dc_ != nullptr; }

 private:
  HWND hwnd_;
  HDC dc_;
};

// BeginPaint and EndPaint around the handling of WM_PAINT.
class PaintScope {
 public:
  explicit PaintScope(HWND hwnd) noexcept : hwnd_(hwnd), dc_(::BeginPaint(hwnd, &ps_)) {}
  ~PaintScope() { ::EndPaint(hwnd_, &ps_); }
  PaintScope(const PaintScope&) = delete;
  PaintScope& operator=(const PaintScope&) = delete;

  HDC Get() const noexcept { return dc_; }
  const RECT& Area() const noexcept { return ps_.rcPaint; }

 private:
  HWND hwnd_;
  PAINTSTRUCT ps_{};
  HDC dc_;
};

// A memory device context compatible with `like`, with a bitmap of its own of
// width by height selected into it: drawing is done there and copied out in one go.
// At the end the bitmap is selected out and deleted, then the context.
class MemoryDC {
 public:
  MemoryDC(HDC like, int width, int height) noexcept
      : dc_(::CreateCompatibleDC(like)), bitmap_(::CreateCompatibleBitmap(like, width, height)) {
    if (dc_ && bitmap_) old_ = ::SelectObject(dc_.Get(), bitmap_.Get());
  }
  ~MemoryDC() { Deselect(); }
  MemoryDC(const MemoryDC&) = delete;
  MemoryDC& operator=(const MemoryDC&) = delete;

  HDC Get() const noexcept { return dc_.Get(); }
  explicit operator bool() const noexcept {
    return static_cast<bool>(dc_) && static_cast<bool>(bitmap_);
  }
  // Selects the bitmap out and hands it over, for a picture that is kept.
  UniqueBitmap TakeBitmap() noexcept {
    Deselect();
    return std::move(bitmap_);
  }

 private:
  void Deselect() noexcept {
    if (old_ != nullptr && old_ != HGDI_ERROR) ::SelectObject(dc_.Get(), old_);
    old_ = nullptr;
  }

  UniqueDC dc_;
  UniqueBitmap bitmap_;  // declared after the context: deleted before it
  HGDIOBJ old_ = nullptr;
};

}  // namespace platform::win32
