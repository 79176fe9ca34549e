#include "searchpath/host/opened_file.h"

#include "host/rules/asked_file.h"
#include "host/trust/step_report.h"
#include "platform/native_path.h"
#include "searchpath/host/native_location.h"
#include "searchpath/model/byte_text.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <string>
#include <system_error>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using fl::filesystem::detail::NativeBytes;
using fl::filesystem::detail::PathError;
using fl::filesystem::detail::WithoutInterruption;

/// Opens the file that `walked` ended at, for reading. When the result is not open, errno says why:
/// EAGAIN if the name, by which the file is opened, is that of another file by now.
Descriptor OpenEnd(const WalkedPath& walked) {
  constexpr int kFlags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  const PathStep& last = walked.steps.back();
  Descriptor file(
      WithoutInterruption([&] { return openat(walked.holder.Get(), last.name.c_str(), kFlags); }));
  struct stat status = {};
  if (!file.IsOpen() || fstat(file.Get(), &status) != 0) return Descriptor(-1);
  if (status.st_dev == last.object->device && status.st_ino == last.object->inode) return file;
  errno = EAGAIN;
  return Descriptor(-1);
}

}  // namespace

struct OpenedFile::State {
  FoundItem item;
  std::string folder;   // in which the name was searched
  WalkedPath toFolder;  // from the root to that folder
  WalkedPath toFile;    // from that folder to the file
  Descriptor descriptor = Descriptor(-1);
};

OpenedFile::OpenedFile(const FoundItem& item, LookupRules::Files files) {
  const std::string path = NativeBytes(GetNativePath(item));
  if (path.empty()) {  // the item is not on disk
    throw PathError(ENOTSUP, "cannot open", BytesFromText(GetLocationText(item)).value_or(""));
  }
  const std::size_t folderEnd = path.rfind('/');
  std::string folder = path.substr(0, std::max<std::size_t>(folderEnd, 1));  // "/" is the root
  WalkedPath toFolder = WalkPath(folder);
  if (toFolder.end == nullptr) {
    throw PathError(toFolder.error ? toFolder.error.value() : ENOTDIR, "cannot open", path);
  }
  WalkedPath toFile = WalkPath(toFolder.end, toFolder.object, path.substr(folderEnd + 1));
  if (toFile.error) throw PathError(toFile.error.value(), "cannot open", path);
  // The file is looked at before it is opened: opening a device may already have an effect.
  if (LookAtFile(toFile.object.Get(), files) != Standing::Counts) {
    throw PathError(EACCES, "cannot open", path, ", which has changed");
  }
  Descriptor descriptor = OpenEnd(toFile);
  if (!descriptor.IsOpen()) throw PathError(errno, "cannot open", path);
  state = std::make_unique<State>(State{item, std::move(folder), std::move(toFolder),
                                        std::move(toFile), std::move(descriptor)});
  // Of the walks, only the facts about their steps are needed from now on.
  for (WalkedPath* walked : {&state->toFolder, &state->toFile}) {
    walked->object = Descriptor(-1);
    walked->holder = Descriptor(-1);
  }
}

OpenedFile::OpenedFile(OpenedFile&& other) noexcept = default;
OpenedFile& OpenedFile::operator=(OpenedFile&& other) noexcept = default;
OpenedFile::~OpenedFile() = default;

const FoundItem& OpenedFile::GetItem() const noexcept { return state->item; }

int OpenedFile::GetDescriptor() const noexcept { return state->descriptor.Get(); }

int OpenedFile::Release() noexcept { return state->descriptor.Release(); }

std::vector<TrustFinding> OpenedFile::ExamineTrust(const TrustLookup& lookup) const {
  Accounts accounts(lookup.user.value_or(geteuid()));
  FindingList findings;
  StepReport report(accounts, findings);
  // Without scopes, since the findings are about this file, not about names.
  report.ReportSteps(state->toFolder.steps, state->folder, {});
  report.ReportFolder(*state->toFolder.end, state->folder, {}, {});
  report.ReportSteps(state->toFile.steps, state->folder, {});
  report.ReportFile(state->toFile.steps.back(), state->folder, /*counts=*/true, {});
  return std::move(findings).Take({});
}

}  // namespace Corvane::PathManagement::host
