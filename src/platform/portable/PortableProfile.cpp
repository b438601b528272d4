#include "platform/portable/PortableProfile.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "base/Utf16.h"
#include "platform/WholeFile.h"
#include "platform/portable/Cp1252BestFit.h"

namespace platform {
namespace {

using base::TextView;

constexpr unsigned long kErrorFileNotFound = 2;
constexpr unsigned long kErrorPathNotFound = 3;
constexpr unsigned long kErrorAccessDenied = 5;

// The platform's number for what the disk said; access denied for anything else.
unsigned long ErrorNumberOf(const Text& reason) {
  auto has = [&](std::u16string_view words) { return reason.find(words) != Text::npos; };
  if (has(u"not enough space") || has(u"No space left")) return 112;
  if (has(u"cannot find the path") || has(u"No such file or directory")) return 3;
  if (has(u"device error") || has(u"Input/output error")) return 1117;
  if (has(u"being used by another process")) return 32;
  return kErrorAccessDenied;
}

enum class Encoding { Ansi, Utf8, Utf16Le, Utf16Be };

struct Entry {
  Text name;
  std::optional<Text> value;  // nullopt for a line without '='
};

struct Section {
  Text name;  // "" for the lines before the first header
  std::vector<Entry> entries;
};

// The whole file as the platform holds it in memory: a write changes one entry
// and puts the whole file out again, so blank lines, the text behind a section
// header and the blanks around names do not survive a write. Real Windows edits
// the file in place instead; Wine rewrites it, and Wine is what we can compare with.
struct Document {
  Encoding encoding = Encoding::Ansi;
  std::vector<Section> sections;
};

// Tabs, line breaks, vertical tab, form feed, the old end-of-file mark ^Z and the
// blank. Not U+00A0 and nothing beyond.
bool IsProfileSpace(char16_t c) { return (c >= 0x09 && c <= 0x0D) || c == 0x1A || c == 0x20; }

TextView TrimLeft(TextView t) {
  while (!t.empty() && IsProfileSpace(t.front())) t.remove_prefix(1);
  return t;
}
TextView TrimRight(TextView t) {
  while (!t.empty() && IsProfileSpace(t.back())) t.remove_suffix(1);
  return t;
}
TextView Trim(TextView t) { return TrimRight(TrimLeft(t)); }

// The platform's functions stop at the first NUL of every string they are given.
TextView UpToNul(TextView t) {
  std::size_t nul = t.find(u'\0');
  return nul == TextView::npos ? t : t.substr(0, nul);
}

// Names are compared without regard to case for A-Z only: Wine folds nothing else
// ("É" and "é" are different sections there), and the contract tests hold us to Wine.
char16_t FoldAscii(char16_t c) { return (c >= u'A' && c <= u'Z') ? c + 32 : c; }
bool SameName(TextView a, TextView b) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(),
                    [](char16_t x, char16_t y) { return FoldAscii(x) == FoldAscii(y); });
}

// UTF-8 as the platform's converter reads it: an invalid lead byte, or a sequence
// broken off, overlong, a surrogate or past U+10FFFF, becomes one U+FFFD for the
// bytes taken so far; the byte that broke it starts afresh.
Text DecodeUtf8(std::string_view bytes) {
  Text out;
  out.reserve(bytes.size());
  std::size_t i = 0;
  auto next = [&](unsigned& res) {
    if (i >= bytes.size()) return false;
    unsigned c = static_cast<unsigned char>(bytes[i]) ^ 0x80u;
    if (c >= 0x40) return false;
    res = (res << 6) | c;
    ++i;
    return true;
  };
  while (i < bytes.size()) {
    unsigned lead = static_cast<unsigned char>(bytes[i++]);
    if (lead < 0x80) {
      out.push_back(static_cast<char16_t>(lead));
      continue;
    }
    int follow = (lead >= 0xC2 && lead <= 0xDF)   ? 1
                 : (lead >= 0xE0 && lead <= 0xEF) ? 2
                 : (lead >= 0xF0 && lead <= 0xF4) ? 3
                                                  : 0;
    unsigned res = lead & (follow == 1 ? 0x1Fu : follow == 2 ? 0x0Fu : 0x07u);
    bool ok = false;
    if (follow == 3) {
      ok = next(res) && res >= 0x10 && res < 0x110 && next(res) && next(res);
    } else if (follow == 2) {
      ok = next(res) && res >= 0x20 && !(res >= 0x360 && res < 0x380) && next(res);
    } else if (follow == 1) {
      ok = next(res) && res >= 0x80;
    }
    if (!ok) {
      out.push_back(0xFFFD);
    } else if (res > 0xFFFF) {
      res -= 0x10000;
      out.push_back(static_cast<char16_t>(0xD800 + (res >> 10)));
      out.push_back(static_cast<char16_t>(0xDC00 + (res & 0x3FF)));
    } else {
      out.push_back(static_cast<char16_t>(res));
    }
  }
  return out;
}

// Two bytes per unit; an odd last byte still makes a unit of its own.
Text DecodeUtf16(std::string_view bytes, bool bigEndian) {
  Text out;
  out.reserve(bytes.size() / 2 + 1);
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    unsigned a = static_cast<unsigned char>(bytes[i]);
    if (i + 1 == bytes.size()) {
      out.push_back(static_cast<char16_t>(a));
      break;
    }
    unsigned b = static_cast<unsigned char>(bytes[i + 1]);
    out.push_back(static_cast<char16_t>(bigEndian ? (a << 8) | b : (b << 8) | a));
  }
  return out;
}

std::string EncodeUtf16(TextView units, bool bigEndian) {
  std::string out;
  out.reserve(units.size() * 2 + 2);
  auto put = [&](char16_t u) {
    char lo = static_cast<char>(u & 0xFF), hi = static_cast<char>(u >> 8);
    out.push_back(bigEndian ? hi : lo);
    out.push_back(bigEndian ? lo : hi);
  };
  put(0xFEFF);
  for (char16_t u : units) put(u);
  return out;
}

Document Parse(std::string_view bytes) {
  Document doc;
  Text units;
  if (bytes.size() >= 3 && bytes.substr(0, 3) == "\xEF\xBB\xBF") {
    doc.encoding = Encoding::Utf8;
    units = DecodeUtf8(bytes.substr(3));
  } else if (bytes.size() >= 2 && bytes.substr(0, 2) == "\xFF\xFE") {
    doc.encoding = Encoding::Utf16Le;
    units = DecodeUtf16(bytes.substr(2), false);
  } else if (bytes.size() >= 2 && bytes.substr(0, 2) == "\xFE\xFF") {
    doc.encoding = Encoding::Utf16Be;
    units = DecodeUtf16(bytes.substr(2), true);
  } else {
    units = base::DecodeCp1252(bytes);
  }

  doc.sections.push_back(Section{});
  // Of several lines in a row with an empty name only the first is kept.
  bool previousNameEmpty = false, havePrevious = false;
  TextView all(units);
  std::size_t pos = 0;
  while (pos < all.size()) {
    std::size_t start = pos;
    while (pos < all.size() && all[pos] != u'\r' && all[pos] != u'\n') ++pos;
    TextView line = Trim(all.substr(start, pos - start));
    while (pos < all.size() && (all[pos] == u'\r' || all[pos] == u'\n')) ++pos;
    if (line.empty()) continue;

    if (line.front() == u'[') {
      std::size_t close = line.rfind(u']');
      if (close != TextView::npos) {
        doc.sections.push_back(Section{Text(UpToNul(Trim(line.substr(1, close - 1)))), {}});
        havePrevious = false;
        continue;
      }
      // A header without its ']' is an entry named "[..." of the current section.
    }

    Entry entry;
    TextView name = line;
    std::size_t eq = line.find(u'=');
    if (eq != TextView::npos) {
      name = TrimRight(line.substr(0, eq));
      entry.value = Text(UpToNul(TrimLeft(line.substr(eq + 1))));
    }
    if (!name.empty() || !havePrevious || !previousNameEmpty) {
      entry.name = Text(UpToNul(name));
      previousNameEmpty = entry.name.empty();
      havePrevious = true;
      doc.sections.back().entries.push_back(std::move(entry));
    }
  }
  return doc;
}

std::string Serialize(const Document& doc) {
  Text text;
  for (const Section& section : doc.sections) {
    // A section named "" has no header, whether it is the first or was "[]" in the file.
    if (!section.name.empty()) text += u"[" + section.name + u"]\r\n";
    for (const Entry& entry : section.entries) {
      text += entry.name;
      if (entry.value) text += u"=" + *entry.value;
      text += u"\r\n";
    }
  }
  switch (doc.encoding) {
    case Encoding::Utf8:
      return "\xEF\xBB\xBF" + base::ToUtf8(text);  // unpaired surrogates become U+FFFD
    case Encoding::Utf16Le: return EncodeUtf16(text, false);
    case Encoding::Utf16Be: return EncodeUtf16(text, true);
    case Encoding::Ansi: break;
  }
  return EncodeCp1252BestFit(text);
}

// A file that does not exist is an empty profile; one that cannot be read, or whose
// folder is missing, is a failure with the platform's error number.
std::optional<Document> Load(IFileSystem& fs, const Text& file, unsigned long& error) {
  if (auto bytes = fs.ReadAll(file)) {
    error = 0;
    return Parse(*bytes);
  }
  if (fs.FileExists(file)) {
    error = kErrorAccessDenied;
    return std::nullopt;
  }
  Text folder = ParentFolder(file);
  if (!folder.empty() && !fs.FolderExists(folder)) {
    error = kErrorPathNotFound;
    return std::nullopt;
  }
  error = kErrorFileNotFound;
  return Document{};
}

// Lookups trim the names they are asked for; only the first section of a name counts.
Section* FindSection(Document& doc, TextView name) {
  name = Trim(name);
  for (Section& s : doc.sections)
    if (SameName(s.name, name)) return &s;
  return nullptr;
}

Entry* FindEntry(Section& section, TextView name) {
  name = Trim(name);
  for (Entry& e : section.entries)
    if (SameName(e.name, name)) return &e;
  return nullptr;
}

// Deleting compares the names as given, untrimmed: " S" does not delete "[S]".
bool DeleteSection(Document& doc, TextView name) {
  auto it = std::find_if(doc.sections.begin(), doc.sections.end(),
                         [&](const Section& s) { return SameName(s.name, name); });
  if (it == doc.sections.end()) return false;
  doc.sections.erase(it);
  return true;
}

// Unlike a lookup, this goes on into later sections of the same name.
bool DeleteEntry(Document& doc, TextView sectionName, TextView name) {
  for (Section& s : doc.sections) {
    if (!SameName(s.name, sectionName)) continue;
    auto it = std::find_if(s.entries.begin(), s.entries.end(),
                           [&](const Entry& e) { return SameName(e.name, name); });
    if (it != s.entries.end()) {
      s.entries.erase(it);
      return true;
    }
  }
  return false;
}

// New sections and entries take the name with its leading blanks dropped but its
// trailing ones kept, and so does the value; the next read trims them anyway.
bool SetValue(Document& doc, TextView sectionName, TextView name, TextView value) {
  Entry* entry = nullptr;
  if (Section* section = FindSection(doc, sectionName)) {
    entry = FindEntry(*section, name);
    if (!entry) entry = &section->entries.emplace_back(Entry{Text(TrimLeft(name)), {}});
  } else {
    Section& added = doc.sections.emplace_back(Section{Text(TrimLeft(sectionName)), {}});
    entry = &added.entries.emplace_back(Entry{Text(TrimLeft(name)), {}});
  }
  value = TrimLeft(value);
  if (entry->value && *entry->value == value) return false;  // the file is left untouched
  entry->value = Text(value);
  return true;
}

// The default loses its trailing blanks, all but the first character of it.
Text TrimDefault(TextView value) {
  while (value.size() > 1 && value.back() == u' ') value.remove_suffix(1);
  return Text(value);
}

// A value in matching quotes loses them. The closing quote is dropped by counting,
// so a value that only just fits the buffer loses one character more: that is how
// the platform's copy behaves and what its callers have always seen.
Text CopyValue(TextView value, std::size_t bufferChars) {
  bool quoted = value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
                value.back() == value.front();
  if (quoted) value.remove_prefix(1);
  Text out(value.substr(0, std::min(bufferChars - 1, value.size())));
  if (quoted && bufferChars >= value.size() && !out.empty()) out.pop_back();
  return out;
}

}  // namespace

Text PortableProfile::GetString(const Text& section, const Text& key, const Text& defaultValue,
                                std::size_t bufferChars, const Text& file) {
  lastError_ = 0;
  if (bufferChars == 0) return Text();
  Text fallback = TrimDefault(UpToNul(defaultValue));
  try {
    auto doc = Load(fs_, file, lastError_);
    if (!doc) return fallback.substr(0, bufferChars - 1);  // as given, quotes and all
    const Entry* entry = nullptr;
    if (Section* s = FindSection(*doc, UpToNul(section))) entry = FindEntry(*s, UpToNul(key));
    return CopyValue(entry && entry->value ? TextView(*entry->value) : TextView(fallback),
                     bufferChars);
  } catch (...) {
    lastError_ = 8;  // not enough memory, the only thing that can throw here
    return Text();
  }
}

bool PortableProfile::WriteString(const Text& section, const std::optional<Text>& key,
                                  const std::optional<Text>& value, const Text& file) {
  lastError_ = 0;
  try {
    auto doc = Load(fs_, file, lastError_);
    if (!doc) return false;
    lastError_ = 0;
    TextView sectionName = UpToNul(section);
    bool changed = !key     ? DeleteSection(*doc, sectionName)
                   : !value ? DeleteEntry(*doc, sectionName, UpToNul(*key))
                            : SetValue(*doc, sectionName, UpToNul(*key), UpToNul(*value));
    // Deleting what is not there still succeeds, and a missing file is not created.
    if (!changed) return true;
    if (WriteResult written = WriteWholeFile(fs_, file, Serialize(*doc)); !written) {
      lastError_ = ErrorNumberOf(written.reason);
      return false;
    }
    return true;
  } catch (...) {
    lastError_ = 8;
    return false;
  }
}

}  // namespace platform
