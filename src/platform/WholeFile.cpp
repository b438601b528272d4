#include "platform/WholeFile.h"

#include "platform/WritePause.h"

namespace platform {

namespace {

Text ReasonOf(IFileSystem& fs) {
  Text why = fs.LastErrorText();
  return why.empty() ? Text(u"The file could not be written.") : why;
}

}  // namespace

WriteResult WriteResult::Failure(Text why) { return WriteResult{false, false, std::move(why)}; }

Text TemporaryFileFor(base::TextView path) { return Text(path) + u".qvtmp"; }

WriteResult WriteWholeFile(IFileSystem& fs, const Text& path, std::string_view bytes,
                           bool evenReadOnly) {
  const Text temporary = TemporaryFileFor(path);
  if (!fs.WriteFlushed(temporary, bytes)) {
    WriteResult failed = WriteResult::Failure(ReasonOf(fs));
    fs.DeleteFile(temporary);  // what part of it was written goes; the original is untouched
    return failed;
  }
  PauseIfAsked(WriteStep::Flushed, path);
  switch (fs.Replace(temporary, path, evenReadOnly)) {
    case IFileSystem::ReplaceResult::Done:
      PauseIfAsked(WriteStep::Replaced, path);
      return WriteResult::Success();
    case IFileSystem::ReplaceResult::Failed: {
      WriteResult failed = WriteResult::Failure(ReasonOf(fs));
      fs.DeleteFile(temporary);
      return failed;
    }
    case IFileSystem::ReplaceResult::Held: break;
  }
  // Held open by another program without delete sharing: write over it in place, as
  // that program itself does.
  WriteResult result;
  if (fs.WriteAll(path, bytes)) {
    result = WriteResult::Success();
    result.inPlace = true;
  } else {
    result = WriteResult::Failure(ReasonOf(fs));
    result.inPlace = true;
  }
  fs.DeleteFile(temporary);
  return result;
}

WriteResult AppendWhole(IFileSystem& fs, const Text& path, std::string_view bytes) {
  const bool existed = fs.FileExists(path);
  const auto before = fs.FileSize(path);
  if (fs.Append(path, bytes)) return WriteResult::Success();
  WriteResult failed = WriteResult::Failure(ReasonOf(fs));
  if (before) {
    fs.Truncate(path, *before);
  } else if (!existed) {
    fs.DeleteFile(path);
  }
  return failed;
}

int RemoveLeftoverTemporaries(IFileSystem& fs, const Text& folder) {
  int removed = 0;
  for (const FileEntry& entry : fs.List(folder, kTemporaryPattern)) {
    if (entry.isFolder) continue;
    if (fs.DeleteFile(folder + u"\\" + entry.name)) ++removed;
  }
  return removed;
}

}  // namespace platform
