#pragma once
// The image folder's pictures as the artwork tool writes them: <key>.png at 96 dots
// per inch, <key>@125.png, <key>@150.png and <key>@200.png for larger screens (PNG,
// straight alpha). Windows' own imaging component decodes them into 32-bit DIB
// sections with premultiplied alpha, ready for GdiAlphaBlend. A picture is drawn
// from the file whose size suits the place it is drawn in, so a control keeps sharp
// edges whether or not its form was scaled.
#include "platform/win32/Win32Text.h"

#include "platform/win32/Win32Handles.h"

#include <map>
#include <memory>
#include <type_traits>

#include "base/Text.h"

namespace platform::win32 {

struct Bitmap {
  UniqueBitmap handle;  // a top-down 32-bit DIB section, premultiplied alpha
  int width = 0;
  int height = 0;
  int scale = 100;  // the file's scale in percent
};

class Pictures {
 public:
  // `folder` is the image folder (no trailing '\'); `dpi` the screen's. Decoding
  // uses COM on the calling thread: a thread without COM gets an apartment of its
  // own for the object's life; one that has COM keeps it as it is.
  Pictures(base::Text folder, int dpi);
  ~Pictures();
  Pictures(const Pictures&) = delete;
  Pictures& operator=(const Pictures&) = delete;

  const base::Text& Folder() const { return folder_; }
  // The file of `key` that best fits a place `targetHeight` pixels high (0: the one
  // for the screen's dots per inch); null when the key has no file at all.
  const Bitmap* Find(const base::Text& key, int targetHeight);
  bool Exists(const base::Text& key);

  // Draws with the picture's own alpha, scaled to the rectangle given.
  static void Draw(HDC dc, const Bitmap& bmp, int x, int y, int w, int h);
  // A button face stretched to any width: the ends are kept and the middle column
  // repeated, as the faces change only from top to bottom.
  static void DrawFace(HDC dc, const Bitmap& bmp, const RECT& r);
  // The picture at w by h as a 32-bit DIB with straight alpha, for what wants it so
  // (the platform's image lists); null when it cannot be made.
  static UniqueBitmap Straight(const Bitmap& bmp, int w, int h);
  // The placeholder as such a bitmap.
  static UniqueBitmap Placeholder(int w, int h);
  // What stands in for a picture whose file is missing.
  static void DrawPlaceholder(HDC dc, const RECT& r);

  // An icon file at a size (cx by cy); null when it cannot be loaded.
  static HICON LoadIconFile(const base::Text& path, int cx, int cy);
  // Resolves an icon given as a key or a path against the image folder.
  base::Text IconPath(const base::Text& keyOrPath) const;
  // The same for a tray icon on a taskbar of the given theme: on a light taskbar a
  // key whose "<key>_light.ico" file exists gives that file; anything else
  // (a dark taskbar, a key without a light variant, a path) is resolved as above.
  base::Text IconPath(const base::Text& keyOrPath, bool lightTaskbar) const;

 private:
  class Decoder;  // the COM apartment and the imaging factory, made on first use

  const Bitmap* Load(const base::Text& key, int scale);

  base::Text folder_;
  int dpi_;
  std::unique_ptr<Decoder> decoder_;
  // key -> scale -> bitmap (a null handle remembers a missing or unreadable file)
  std::map<base::Text, std::map<int, Bitmap>> cache_;
};

}  // namespace platform::win32
