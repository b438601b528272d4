#pragma once
// The image folder's pictures as the artwork tool writes them: <key>.bmp at 96 dots
// per inch, <key>@125.bmp and <key>@150.bmp for larger screens, 32-bit with
// premultiplied alpha. A picture is drawn from the file whose size suits the place
// it is drawn in, so a control keeps sharp edges whether or not its form was scaled.
#include "platform/win32/Win32Text.h"

#include <map>
#include <memory>

#include "base/Text.h"

namespace platform::win32 {

struct Bitmap {
  HBITMAP handle = nullptr;
  int width = 0;
  int height = 0;
  int scale = 100;  // the file's scale in percent
};

class Pictures {
 public:
  // `folder` is the image folder (no trailing '\'); `dpi` the screen's.
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
  // What stands in for a picture whose file is missing.
  static void DrawPlaceholder(HDC dc, const RECT& r);

  // An icon file at a size (cx by cy); null when it cannot be loaded.
  static HICON LoadIconFile(const base::Text& path, int cx, int cy);
  // Resolves an icon given as a key or a path against the image folder.
  base::Text IconPath(const base::Text& keyOrPath) const;

 private:
  const Bitmap* Load(const base::Text& key, int scale);

  base::Text folder_;
  int dpi_;
  // key -> scale -> bitmap (a null handle remembers a missing file)
  std::map<base::Text, std::map<int, Bitmap>> cache_;
};

}  // namespace platform::win32
