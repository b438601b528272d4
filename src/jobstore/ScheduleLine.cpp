// The line form of the schedule file: a record's fields joined by the separator, read
// back the way the engine and the main application write them.
#include "base/Utf16.h"
#include "jobstore/DBaction.h"

namespace jobstore {

// --- Line form ------------------------------------------------------------------

std::optional<SeparatorHit> FindSeparator(TextView line) {
  size_t p = line.find(kOldSeparator);
  if (p != TextView::npos) return SeparatorHit{p, true, kOldSeparator};
  p = line.find(kSeparator);
  if (p != TextView::npos) return SeparatorHit{p, false, kSeparator};
  return std::nullopt;
}

std::optional<Text> KeyOfLine(TextView line) {
  auto hit = FindSeparator(line);
  if (!hit) return std::nullopt;
  return Text(line.substr(0, hit->position));
}

ParsedLine ParseScheduleLine(TextView line, const DateRule& dateRule) {
  ParsedLine out;
  auto hit = FindSeparator(line);
  if (!hit) return out;
  out.hasSeparator = true;
  out.oldForm = hit->oldForm;

  const TextView sep = hit->separator;
  TextView rest = line;
  auto hasSeparator = [&] { return rest.find(sep) != TextView::npos; };
  // A missing separator makes the field the whole rest and leaves nothing behind, so
  // a short record ends in empty fields.
  auto cut = [&] {
    size_t p = rest.find(sep);
    Text field;
    if (p == TextView::npos) {
      field = Text(rest);
      rest = TextView();
    } else {
      field = Text(rest.substr(0, p));
      rest = rest.substr(p + sep.size());
    }
    return field;
  };
  auto date = [&](Text value, int position) {
    return dateRule ? dateRule(value, position) : value;
  };

  ScheduleRecord& r = out.record;
  r.RecordNo = cut();
  r.BackupSetName = cut();
  r.NextRun = date(cut(), 3);
  r.CreatedOn = date(cut(), 4);
  r.Destination = cut();
  r.FrequencyIndex = cut();
  r.JobKind = cut();
  r.Compression = cut();
  r.MailAddresses = cut();
  r.Reserved10 = cut();
  r.Reserved11 = cut();
  r.Reserved12 = cut();
  r.Encryption = cut();
  r.Reserved14 = cut();
  r.MailMode = cut();

  if (!hasSeparator()) {
    r.SortKey = Text(rest);
    r.UserName.clear();
    r.Password.clear();
    r.EngineFlag = u"0";
    return out;
  }
  r.SortKey = cut();
  r.UserName = DecodeField(cut());
  if (!hasSeparator()) {
    r.Password = DecodeField(Text(rest));
    r.EngineFlag = u"0";
    return out;
  }
  r.Password = DecodeField(cut());
  if (out.oldForm) {
    // Old lines never had a Days field: whatever follows is the flag.
    r.EngineFlag = Text(rest);
  } else if (hasSeparator()) {
    r.EngineFlag = cut();
    r.Days = Text(rest);
  } else {
    r.EngineFlag = Text(rest);
  }
  return out;
}

Text BuildScheduleLine(const ScheduleRecord& r) {
  // A record as the file holds it, field after field.
  // clang-format off
  const Text fields[kFieldCount] = {
      r.RecordNo,      r.BackupSetName, r.NextRun,     r.CreatedOn,  r.Destination,
      r.FrequencyIndex, r.JobKind,      r.Compression, r.MailAddresses, r.Reserved10,
      r.Reserved11,    r.Reserved12,    r.Encryption,  r.Reserved14, r.MailMode,
      r.SortKey,       EncodeField(r.UserName), u"1", r.EngineFlag,  r.Days};
  // clang-format on
  Text line;
  for (size_t i = 0; i < kFieldCount; ++i) {
    if (i) line += kSeparator;
    line += fields[i];
  }
  return line;
}

Text ApplyDateFormat(const Text& value, const Text& dateFormatSetting,
                     const LocaleFormats& locale) {
  if (base::ToUpper(base::Left(dateFormatSetting, 1)) == u"D") return value;
  return ReformatDate(value, kFileDatePattern, locale);
}

void RepairDays(ScheduleRecord& r, const LocaleFormats& locale) {
  if (base::IsBlank(r.BackupSetName) || !base::IsBlank(r.Days)) return;
  long long index = 0;
  if (!base::ParseLong(r.FrequencyIndex, index)) index = 0;
  const Text name = GetFreNameFromIndex(static_cast<long>(index));
  if (name == u"Once") {
    r.Days = u"IMMEDIATE";
  } else if (name == u"Hourly") {
    r.Days = u"Hourly";
  } else if (name == u"Daily") {
    r.Days = u"1234567";
  } else if (name == u"Weekly") {
    if (auto next = ParseSystemDate(r.NextRun, locale)) r.Days = base::FromNumber(next->Weekday());
  } else if (name == u"Monthly") {
    r.Days = u"Monthly";
  } else if (name == u"Weekdays (Mon - Fri)") {
    r.Days = u"23456";
  } else if (name == u"WeekEnd (Sun & Sat)") {
    // GetFreNameFromIndex never gives this name; the arm stays for the day it does.
    r.Days = u"17";
  }
}

}  // namespace jobstore
