#include "app/AppIcon.h"

namespace app {

HICON CreateAppIcon(int size) {
  HDC screen = GetDC(nullptr);
  HDC dc = CreateCompatibleDC(screen);
  BITMAPV5HEADER bi{};
  bi.bV5Size = sizeof(bi);
  bi.bV5Width = size;
  bi.bV5Height = -size;
  bi.bV5Planes = 1;
  bi.bV5BitCount = 32;
  bi.bV5Compression = BI_RGB;
  void* bits = nullptr;
  HBITMAP color = CreateDIBSection(screen, reinterpret_cast<BITMAPINFO*>(&bi), DIB_RGB_COLORS,
                                   &bits, nullptr, 0);
  HBITMAP mask = CreateBitmap(size, size, 1, 1, nullptr);
  HGDIOBJ old = SelectObject(dc, color);

  RECT all{0, 0, size, size};
  HBRUSH clear = CreateSolidBrush(RGB(0, 0, 0));
  FillRect(dc, &all, clear);
  DeleteObject(clear);

  HBRUSH teal = CreateSolidBrush(RGB(0, 128, 128));
  HPEN none = static_cast<HPEN>(GetStockObject(NULL_PEN));
  SelectObject(dc, teal);
  SelectObject(dc, none);
  RoundRect(dc, 0, 0, size + 1, size + 1, size / 3, size / 3);
  DeleteObject(teal);

  const int u = size / 8;
  POINT arrow[] = {{size / 2, u},          {size - u, size / 2}, {size / 2 + u, size / 2},
                   {size / 2 + u, size - u}, {size / 2 - u, size - u}, {size / 2 - u, size / 2},
                   {u, size / 2}};
  HBRUSH white = CreateSolidBrush(RGB(255, 255, 255));
  SelectObject(dc, white);
  Polygon(dc, arrow, 7);
  DeleteObject(white);
  SelectObject(dc, old);

  // Opaque where anything was drawn; the corners stay transparent.
  auto* px = static_cast<DWORD*>(bits);
  for (int i = 0; i < size * size; ++i) px[i] = (px[i] & 0x00FFFFFF) ? (px[i] | 0xFF000000) : 0;

  ICONINFO ii{};
  ii.fIcon = TRUE;
  ii.hbmColor = color;
  ii.hbmMask = mask;
  HICON icon = CreateIconIndirect(&ii);
  DeleteObject(color);
  DeleteObject(mask);
  DeleteDC(dc);
  ReleaseDC(nullptr, screen);
  return icon;
}

}  // namespace app
