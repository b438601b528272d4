#include "platform/win32/Win32Pictures.h"

#include "platform/win32/Win32Handles.h"

#include <objbase.h>
#include <wincodec.h>

#include <cmath>
#include <cstdlib>

namespace platform::win32 {

namespace {

constexpr int kScales[] = {100, 125, 150, 200};
// Larger files than this are not pictures of ours; they are not decoded.
constexpr UINT kMaxSide = 8192;

// What a COM call hands out through its out parameter, owned at once; empty when
// the call failed.
template <class T, class Call>
ComPtr<T> Obtain(Call&& call) {
  ComPtr<T> owned;
  const HRESULT hr = call(owned.Out());
  if (FAILED(hr)) owned.Reset();
  return owned;
}

// A memory DC with a bitmap selected into it; the DC's own bitmap goes back in
// before the DC is deleted.
class MemoryDc {
 public:
  MemoryDc(HDC like, HBITMAP bitmap) : dc_(CreateCompatibleDC(like)) {
    if (dc_) old_ = SelectObject(dc_.Get(), bitmap);
  }
  ~MemoryDc() {
    if (dc_ && old_) SelectObject(dc_.Get(), old_);
  }
  MemoryDc(const MemoryDc&) = delete;
  MemoryDc& operator=(const MemoryDc&) = delete;

  HDC Get() const { return dc_.Get(); }
  explicit operator bool() const { return dc_ && old_; }

 private:
  UniqueDC dc_;
  HGDIOBJ old_ = nullptr;
};

base::Text FileName(const base::Text& key, int scale) {
  if (scale == 100) return key + u".png";
  return key + u"@" + base::FromNumber(scale) + u".png";
}

int ScaledSize(int size100, int scale) {
  // The artwork's rule: the size at 96 dpi times the scale, halves up.
  return static_cast<int>(std::floor(size100 * scale / 100.0 + 0.5));
}

int ScaleForDpi(int dpi) {
  if (dpi <= 96) return 100;
  if (dpi <= 120) return 125;
  if (dpi <= 144) return 150;
  return 200;
}

bool IsAbsolute(const base::Text& path) {
  return (path.size() > 1 && path[1] == u':') || base::StartsWith(path, u"\\\\");
}

bool IsIconFile(const base::Text& keyOrPath) {
  return base::EndsWith(base::ToLower(keyOrPath), u".ico");
}

bool FileExists(const base::Text& path) {
  const DWORD attributes = GetFileAttributesW(Wide(path));
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

}  // namespace

// COM on this thread for as long as the pictures live (balanced by CoUninitialize
// only when this call counted: S_OK or S_FALSE; a thread in another apartment
// keeps it), and one imaging factory. The factory is a member after the apartment,
// so it is released first.
class Pictures::Decoder {
 public:
  Decoder() : com_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {
    factory_ = Obtain<IWICImagingFactory>([](IWICImagingFactory** out) {
      return CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                              IID_IWICImagingFactory, reinterpret_cast<void**>(out));
    });
  }

  // The PNG (or any format the platform reads) as a top-down 32-bit DIB section
  // with premultiplied alpha; an empty bitmap when the file cannot be read.
  Bitmap Decode(const base::Text& path) const {
    Bitmap out;
    if (!factory_) return out;
    auto decoder = Obtain<IWICBitmapDecoder>([&](IWICBitmapDecoder** d) {
      return factory_->CreateDecoderFromFilename(Wide(path), nullptr, GENERIC_READ,
                                                 WICDecodeMetadataCacheOnDemand, d);
    });
    if (!decoder) return out;
    auto frame = Obtain<IWICBitmapFrameDecode>(
        [&](IWICBitmapFrameDecode** f) { return decoder->GetFrame(0, f); });
    auto converter = Obtain<IWICFormatConverter>(
        [&](IWICFormatConverter** c) { return factory_->CreateFormatConverter(c); });
    UINT w = 0, h = 0;
    if (!frame || !converter ||
        FAILED(converter->Initialize(frame.Get(), GUID_WICPixelFormat32bppPBGRA,
                                     WICBitmapDitherTypeNone, nullptr, 0.0,
                                     WICBitmapPaletteTypeCustom)) ||
        FAILED(converter->GetSize(&w, &h)) || w == 0 || h == 0 || w > kMaxSide || h > kMaxSide)
      return out;

    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = static_cast<LONG>(w);
    info.bmiHeader.biHeight = -static_cast<LONG>(h);  // top-down, as WIC's rows come
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    UniqueBitmap dib(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!dib || !bits ||
        FAILED(converter->CopyPixels(nullptr, w * 4, w * 4 * h, static_cast<BYTE*>(bits))))
      return out;
    out.handle = std::move(dib);
    out.width = static_cast<int>(w);
    out.height = static_cast<int>(h);
    return out;
  }

 private:
  struct Apartment {
    explicit Apartment(HRESULT hr) : counted(SUCCEEDED(hr)) {}
    ~Apartment() {
      if (counted) CoUninitialize();
    }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
    bool counted;
  };

  Apartment com_;
  ComPtr<IWICImagingFactory> factory_;
};

Pictures::Pictures(base::Text folder, int dpi) : folder_(std::move(folder)), dpi_(dpi) {}

Pictures::~Pictures() = default;

const Bitmap* Pictures::Load(const base::Text& key, int scale) {
  auto& scales = cache_[key];
  auto it = scales.find(scale);
  if (it == scales.end()) {
    if (!decoder_) decoder_ = std::make_unique<Decoder>();
    Bitmap bmp = decoder_->Decode(folder_ + u"\\" + FileName(key, scale));
    bmp.scale = scale;
    it = scales.emplace(scale, std::move(bmp)).first;
  }
  return it->second.handle ? &it->second : nullptr;
}

bool Pictures::Exists(const base::Text& key) { return !key.empty() && Load(key, 100) != nullptr; }

const Bitmap* Pictures::Find(const base::Text& key, int targetHeight) {
  if (key.empty()) return nullptr;
  const Bitmap* base = Load(key, 100);
  if (base == nullptr) return nullptr;
  int best = ScaleForDpi(dpi_);
  if (targetHeight > 0) {
    // The scale whose height comes closest; a tie goes to the screen's own scale.
    int bestDiff = std::abs(ScaledSize(base->height, best) - targetHeight);
    for (int s : kScales) {
      int diff = std::abs(ScaledSize(base->height, s) - targetHeight);
      if (diff < bestDiff) {
        best = s;
        bestDiff = diff;
      }
    }
  }
  const Bitmap* chosen = Load(key, best);
  return chosen != nullptr ? chosen : base;
}

void Pictures::Draw(HDC dc, const Bitmap& bmp, int x, int y, int w, int h) {
  MemoryDc src(dc, bmp.handle.Get());
  if (!src) return;
  BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  SetStretchBltMode(dc, HALFTONE);
  GdiAlphaBlend(dc, x, y, w, h, src.Get(), 0, 0, bmp.width, bmp.height, blend);
}

namespace {

// A clear top-down 32-bit DIB section of w by h, and its pixels.
UniqueBitmap ClearDib(HDC like, int w, int h, void** bits) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info.bmiHeader.biWidth = w;
  info.bmiHeader.biHeight = -h;  // top-down
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  return UniqueBitmap(CreateDIBSection(like, &info, DIB_RGB_COLORS, bits, nullptr, 0));
}

}  // namespace

namespace {

// A clear w by h DIB with `paint` drawn on it, its pixels then handed to `finish`.
template <class Paint, class Finish>
UniqueBitmap DrawnDib(int w, int h, Paint paint, Finish finish) {
  if (w <= 0 || h <= 0) return {};
  void* bits = nullptr;
  win32::WindowDC screen(nullptr);
  UniqueBitmap out = ClearDib(screen.Get(), w, h, &bits);
  if (!out || bits == nullptr) return {};
  {
    win32::UniqueDC dc(CreateCompatibleDC(screen.Get()));
    if (!dc) return {};
    win32::Selected selected(dc.Get(), out.Get());
    paint(dc.Get());
    GdiFlush();
  }
  finish(static_cast<unsigned char*>(bits));
  return out;
}

}  // namespace

UniqueBitmap Pictures::Placeholder(int w, int h) {
  return DrawnDib(
      w, h,
      [&](HDC dc) {
        DrawPlaceholder(dc, RECT{0, 0, w, h});
      },
      // Drawn without alpha: every pixel is whole.
      [&](unsigned char* px) {
        for (int i = 0; i < w * h; ++i) px[i * 4 + 3] = 255;
      });
}

UniqueBitmap Pictures::Straight(const Bitmap& bmp, int w, int h) {
  if (!bmp.handle) return {};
  // Blended onto clear pixels the picture comes out premultiplied, at the size asked;
  // then each colour is divided by its alpha.
  return DrawnDib(
      w, h, [&](HDC dc) { Draw(dc, bmp, 0, 0, w, h); },
      [&](unsigned char* px) {
        for (int i = 0; i < w * h; ++i, px += 4) {
          const int a = px[3];
          if (a == 0 || a == 255) continue;
          for (int c = 0; c < 3; ++c)
            px[c] = static_cast<unsigned char>(std::min(255, (px[c] * 255 + a / 2) / a));
        }
      });
}

void Pictures::DrawFace(HDC dc, const Bitmap& bmp, const RECT& r) {
  const int w = r.right - r.left;
  const int h = r.bottom - r.top;
  if (w <= 0 || h <= 0) return;
  // 4 pixels at each end at 100 %, 5 at 125 %, 6 at 150 %, 8 at 200 %.
  const int end = ScaledSize(4, bmp.scale);
  if (w == bmp.width || bmp.width <= 2 * end || w <= 2 * end) {
    Draw(dc, bmp, r.left, r.top, w, h);
    return;
  }
  MemoryDc src(dc, bmp.handle.Get());
  if (!src) return;
  BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  GdiAlphaBlend(dc, r.left, r.top, end, h, src.Get(), 0, 0, end, bmp.height, blend);
  GdiAlphaBlend(dc, r.left + end, r.top, w - 2 * end, h, src.Get(), end, 0, 1, bmp.height, blend);
  GdiAlphaBlend(dc, r.right - end, r.top, end, h, src.Get(), bmp.width - end, 0, end, bmp.height,
                blend);
}

void Pictures::DrawPlaceholder(HDC dc, const RECT& r) {
  const UniqueBrush fill(CreateSolidBrush(RGB(0xEA, 0xEF, 0xF1)));
  if (fill) FillRect(dc, &r, fill.Get());
  const UniqueBrush edge(CreateSolidBrush(RGB(0xB8, 0xC3, 0xC8)));
  if (edge) FrameRect(dc, &r, edge.Get());
}

HICON Pictures::LoadIconFile(const base::Text& path, int cx, int cy) {
  if (path.empty()) return nullptr;
  return static_cast<HICON>(LoadImageW(nullptr, Wide(path), IMAGE_ICON, cx, cy, LR_LOADFROMFILE));
}

base::Text Pictures::IconPath(const base::Text& keyOrPath) const {
  if (keyOrPath.empty()) return {};
  if (IsIconFile(keyOrPath)) {
    return IsAbsolute(keyOrPath) ? keyOrPath : folder_ + u"\\" + keyOrPath;
  }
  return folder_ + u"\\" + keyOrPath + u".ico";
}

base::Text Pictures::IconPath(const base::Text& keyOrPath, bool lightTaskbar) const {
  if (lightTaskbar && !keyOrPath.empty() && !IsIconFile(keyOrPath)) {
    const base::Text light = folder_ + u"\\" + keyOrPath + u"_light.ico";
    if (FileExists(light)) return light;
  }
  return IconPath(keyOrPath);
}

}  // namespace platform::win32
