#include "kit/Branding.h"

#include "base/Utf16.h"

namespace kit {

namespace {

// The file is plain text: UTF-16 or UTF-8 when it says so by its mark, otherwise
// single bytes in the machine's code page.
Text Decode(const std::string& bytes) {
  if (base::HasUtf16Bom(bytes)) return base::DecodeUtf16Le(bytes).units;
  if (bytes.size() >= 3 && bytes.compare(0, 3, "\xEF\xBB\xBF") == 0) {
    return base::FromUtf8(std::string_view(bytes).substr(3));
  }
  return base::DecodeCp1252(bytes);
}

Text Clean(base::TextView value) {
  if (!value.empty() && value.back() == u'\r') value.remove_suffix(1);
  return base::Trim(value);
}

Text Images(const Text& programFolder, const Text& file) {
  return programFolder + u"\\images\\" + file;
}

}  // namespace

bool ParseConfigText(base::TextView content, Text& title, Text& secondValue) {
  std::vector<Text> lines = base::Split(content, u"\n");
  if (lines.size() < 2) return false;
  const Text& first = lines[0];
  std::size_t eq = first.find(u'=');
  title = Clean(eq == Text::npos ? base::TextView(first) : base::TextView(first).substr(eq + 1));
  const Text& second = lines[1];
  std::size_t last = second.rfind(u'=');
  secondValue =
      Clean(last == Text::npos ? base::TextView(second) : base::TextView(second).substr(last + 1));
  return true;
}

Branding ReadBranding(platform::IFileSystem& fs, const Text& programFolder,
                      const Text& currentTitle) {
  Branding b;
  b.title = currentTitle;
  const Text config = Images(programFolder, u"Config.txt");
  if (fs.FileExists(config)) {
    b.configPresent = true;
    b.appIconPath = Images(programFolder, u"qvwin-desktop4.ico");
    if (auto bytes = fs.ReadAll(config)) {
      Text title, second;
      if (ParseConfigText(Decode(*bytes), title, second)) {
        b.titleSet = true;
        b.title = title;
        b.secondValue = second;
      }
    }
  }
  if (b.title != kDefaultAppTitle) {
    const Text icon = Images(programFolder, u"Screenicon.ico");
    const Text other = programFolder + u"\\Images\\ScreenIcon.ico";
    if (fs.FileExists(icon)) {
      b.formIconPath = icon;
    } else if (fs.FileExists(other)) {
      b.formIconPath = other;
    }
  }
  return b;
}

void ApplyBranding(frame::AppState& app, const Branding& branding) {
  app.AppTitle = branding.title;
}

Text LaunchMenuCaption(const Text& title) { return u"Launch " + title; }
Text AboutMenuCaption(const Text& title) { return u"About " + title + u" ..."; }

}  // namespace kit
