// win32::Pictures under Windows (Wine), over the pictures qvartwork drew into the
// program folder: which file a place gets, that the decoded pictures draw the right
// way up with their alpha, COM on the caller's thread, and the tray icons of a light
// taskbar.
#include <windows.h>

#include <gtest/gtest.h>

#include <objbase.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "platform/win32/Win32Handles.h"
#include "platform/win32/Win32Pictures.h"

namespace {

using platform::win32::Bitmap;
using platform::win32::Pictures;
using platform::win32::UniqueBitmap;
using platform::win32::UniqueDC;
using platform::win32::UniqueHandle;
using platform::win32::UniqueIcon;

base::Text ImagesDir() {
  std::string dir = QV_IMAGES_DIR;  // a Unix path of the build: drive Z: under Wine
  for (char& c : dir)
    if (c == '/') c = '\\';
  return u"Z:" + base::Text(dir.begin(), dir.end());
}

int ScaleOf(Pictures& p, const char16_t* key, int height) {
  const Bitmap* b = p.Find(key, height);
  return b ? b->scale : 0;
}

TEST(Pictures, TheFileNearestThePlaceIsTakenUpTo200Percent) {
  Pictures p(ImagesDir(), 96);
  // button_enb is 23 high at 100 %: 29, 35 and 46 at 125, 150 and 200 %.
  EXPECT_EQ(ScaleOf(p, u"button_enb", 23), 100);
  EXPECT_EQ(ScaleOf(p, u"button_enb", 29), 125);
  EXPECT_EQ(ScaleOf(p, u"button_enb", 34), 150);
  EXPECT_EQ(ScaleOf(p, u"button_enb", 44), 200);
  EXPECT_EQ(ScaleOf(p, u"button_enb", 90), 200);
  const Bitmap* big = p.Find(u"button_enb", 46);
  ASSERT_NE(big, nullptr);
  EXPECT_EQ(big->width, 106);
  EXPECT_EQ(big->height, 46);
  EXPECT_EQ(p.Find(u"no_such_picture", 23), nullptr);
  EXPECT_FALSE(p.Exists(u"no_such_picture"));
  EXPECT_TRUE(p.Exists(u"button_enb"));
}

TEST(Pictures, WithoutAPlaceAndOnATieTheScreensScaleWins) {
  for (auto [dpi, scale] : {std::pair{96, 100}, {120, 125}, {144, 150}, {168, 200}, {192, 200}}) {
    Pictures p(ImagesDir(), dpi);
    EXPECT_EQ(ScaleOf(p, u"qv_small_help", 0), scale) << dpi;
  }
  // qv_small_help is 16, 20, 24 and 32 high: 18 lies between the first two, 28
  // between the last two.
  auto tie = [](int dpi, int height) {
    Pictures p(ImagesDir(), dpi);
    return ScaleOf(p, u"qv_small_help", height);
  };
  EXPECT_EQ(tie(96, 18), 100);
  EXPECT_EQ(tie(120, 18), 125);
  EXPECT_EQ(tie(144, 28), 150);
  EXPECT_EQ(tie(192, 28), 200);
}

// A white 32-bit canvas with a picture alpha-blended onto it.
class Canvas {
 public:
  Canvas(int w, int h) : dc_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO bi{};
    bi.bmiHeader = {sizeof(bi.bmiHeader), w, -h, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    bitmap_.Reset(CreateDIBSection(nullptr, &bi, DIB_RGB_COLORS, &bits, nullptr, 0));
    old_ = SelectObject(dc_.Get(), bitmap_.Get());
    RECT all{0, 0, w, h};
    FillRect(dc_.Get(), &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  }
  // The bitmap leaves the context before the holders delete both.
  ~Canvas() { SelectObject(dc_.Get(), old_); }
  HDC Dc() const { return dc_.Get(); }
  COLORREF At(int x, int y) const { return GetPixel(dc_.Get(), x, y); }

 private:
  UniqueDC dc_;
  UniqueBitmap bitmap_;
  HGDIOBJ old_ = nullptr;
};

TEST(Pictures, DecodedPicturesDrawUprightWithTheirAlpha) {
  Pictures p(ImagesDir(), 96);
  for (int height : {40, 50, 60, 80}) {
    // The traffic light: red lamp at the top, green (lit) at the bottom.
    const Bitmap* light = p.Find(u"light_green", height);
    ASSERT_NE(light, nullptr);
    Canvas c(light->width, light->height);
    Pictures::Draw(c.Dc(), *light, 0, 0, light->width, light->height);
    const COLORREF lit = c.At(light->width / 2, light->height * 85 / 100);
    const COLORREF top = c.At(light->width / 2, light->height / 4);
    EXPECT_GT(GetGValue(lit), GetRValue(lit) + 40) << height;
    EXPECT_LT(GetGValue(top), 150) << height;
  }
  for (int height : {23, 29, 35, 46}) {
    const Bitmap* face = p.Find(u"button_ovr", height);
    ASSERT_NE(face, nullptr);
    // Drawn wider than the file: the ends are kept, the middle stretched.
    Canvas c(face->width * 2, face->height);
    Pictures::DrawFace(c.Dc(), *face, RECT{0, 0, face->width * 2, face->height});
    EXPECT_EQ(c.At(0, 0), RGB(255, 255, 255)) << "a clear corner at " << height;
    EXPECT_EQ(c.At(face->width * 2 - 1, 0), RGB(255, 255, 255)) << height;
    const COLORREF mid = c.At(face->width, face->height / 2);
    EXPECT_LT(GetRValue(mid), 60) << "the teal hover face at " << height;
    EXPECT_GT(GetBValue(mid), 90) << height;
    EXPECT_EQ(c.At(face->width / 2, face->height / 2), mid) << height;
  }
}

// Runs `body` on a thread of its own, so that the apartment it sees is its own.
void OnThread(const std::function<void()>& body) { std::thread(body).join(); }

bool PicturesWork() {
  Pictures p(ImagesDir(), 96);
  const Bitmap* b = p.Find(u"qv_msg_info", 32);
  return b != nullptr && b->width == 32;
}

TEST(Pictures, WorkOnAThreadWithoutComAndLeaveItWithout) {
  OnThread([] {
    EXPECT_TRUE(PicturesWork());
    // Nothing is left initialised: the next call is the first again.
    const HRESULT after = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    EXPECT_EQ(after, S_OK);
    if (SUCCEEDED(after)) CoUninitialize();
  });
}

TEST(Pictures, KeepTheApartmentTheThreadHasAlready) {
  for (DWORD model : {DWORD(COINIT_APARTMENTTHREADED), DWORD(COINIT_MULTITHREADED)}) {
    OnThread([model] {
      ASSERT_EQ(CoInitializeEx(nullptr, model), S_OK);
      EXPECT_TRUE(PicturesWork()) << model;
      // Still initialised, in the same model.
      const HRESULT again = CoInitializeEx(nullptr, model);
      EXPECT_EQ(again, S_FALSE) << model;
      if (SUCCEEDED(again)) CoUninitialize();
      CoUninitialize();
    });
  }
}

// A folder of its own under %TEMP%, removed with what was put in it.
class TempFolder {
 public:
  TempFolder() {
    wchar_t temp[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temp);
    path_ = platform::win32::FromWide(temp) + u"qv-pictures-" +
            base::FromNumber(int(GetCurrentProcessId()));
    CreateDirectoryW(W(path_), nullptr);
  }
  ~TempFolder() {
    for (const base::Text& f : files_) DeleteFileW(W(f));
    for (const base::Text& d : folders_) RemoveDirectoryW(W(d));
    RemoveDirectoryW(W(path_));
  }
  const base::Text& Path() const { return path_; }
  // A file of `name` holding `bytes` (an empty one is enough for a lookup).
  void Put(const base::Text& name, const std::string& bytes = {}) {
    const base::Text path = path_ + u"\\" + name;
    const UniqueHandle h(CreateFileW(W(path), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(h);
    DWORD written = 0;
    WriteFile(h.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    files_.push_back(path);
  }
  void Folder(const base::Text& name) {
    CreateDirectoryW(W(path_ + u"\\" + name), nullptr);
    folders_.push_back(path_ + u"\\" + name);
  }
  // A copy of a file of the program folder's pictures.
  void Copy(const base::Text& name) {
    const base::Text path = path_ + u"\\" + name;
    ASSERT_TRUE(CopyFileW(W(ImagesDir() + u"\\" + name), W(path), FALSE));
    files_.push_back(path);
  }

 private:
  static const wchar_t* W(const base::Text& t) {
    return reinterpret_cast<const wchar_t*>(t.c_str());
  }
  base::Text path_;
  std::vector<base::Text> files_, folders_;
};

TEST(Pictures, UnreadableFilesAreMissingPicturesNotFaults) {
  TempFolder dir;
  dir.Put(u"broken.png", "\x89PNG\r\n\x1a\n not really a picture");
  dir.Put(u"empty.png");
  dir.Copy(u"button_enb.png");
  dir.Put(u"button_enb@200.png", "\x89PNG\r\n\x1a\n");  // cut short
  Pictures p(dir.Path(), 192);
  EXPECT_EQ(p.Find(u"broken", 23), nullptr);
  EXPECT_FALSE(p.Exists(u"empty"));
  // The 200 % file cannot be read: the 100 % one stands in for it.
  const Bitmap* b = p.Find(u"button_enb", 46);
  ASSERT_NE(b, nullptr);
  EXPECT_EQ(b->scale, 100);
  EXPECT_EQ(b->height, 23);
}

TEST(Pictures, ALightTaskbarTakesTheLightVariantOfATrayKey) {
  TempFolder dir;
  for (const char16_t* f : {u"tray_running.ico", u"tray_running_light.ico", u"tray_paused.ico"})
    dir.Put(f);
  dir.Folder(u"tray_stopped_light.ico");
  const base::Text& d = dir.Path();

  const Pictures p(d, 96);
  EXPECT_EQ(p.IconPath(u"tray_running", true), d + u"\\tray_running_light.ico");
  EXPECT_EQ(p.IconPath(u"tray_running", false), d + u"\\tray_running.ico");
  // No light file (or a folder of that name): the key's own file.
  EXPECT_EQ(p.IconPath(u"tray_paused", true), d + u"\\tray_paused.ico");
  EXPECT_EQ(p.IconPath(u"tray_stopped", true), d + u"\\tray_stopped.ico");
  // Paths are not keys: a branded icon stays what it is on either taskbar.
  EXPECT_EQ(p.IconPath(u"MonitorIcon.ico", true), d + u"\\MonitorIcon.ico");
  EXPECT_EQ(p.IconPath(u"tray_running.ico", true), d + u"\\tray_running.ico");
  EXPECT_EQ(p.IconPath(u"C:\\brand\\Tray.ICO", true), u"C:\\brand\\Tray.ICO");
  EXPECT_EQ(p.IconPath(u"", true), u"");
}

TEST(Pictures, EveryTrayStateHasALightIconThatLoads) {
  const Pictures p(ImagesDir(), 96);
  for (const char16_t* key :
       {u"tray_running", u"tray_stopped", u"tray_paused", u"tray_transfer", u"tray_unknown"}) {
    const base::Text light = p.IconPath(key, true);
    EXPECT_TRUE(base::EndsWith(light, u"_light.ico")) << std::string(light.begin(), light.end());
    for (int size : {16, 20, 24, 32}) {
      const UniqueIcon icon(Pictures::LoadIconFile(light, size, size));
      EXPECT_TRUE(icon) << size;
    }
  }
}

}  // namespace
