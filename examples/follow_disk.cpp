// follow_disk NAME FOLDERS: prints the file that NAME means on the path FOLDERS, and, once files come
// or go, the one that it means then.
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <searchpath/host.h>
#include <searchpath/utilities.h>

using namespace Corvane::PathManagement;
namespace events = foundation::msg_svc::eventmgr;

int main(int count, char** words) {
  if (count != 3) return 2;
  const detail::SearchTarget name(TextFromBytes(words[1]));
  const host::Environment environment(SplitZentraPath(TextFromBytes(words[2])));
  const auto manager = environment.CreateManager();
  const auto print = [&] {
    const auto path = manager->GetPath();  // stays as it is, whatever happens to the disk
    const auto policy = FilenameMatchingPolicy::FileSystemDefault;
    const auto found = FindFirstFileVisibleOnPath(*path, name, policy);
    std::puts(found ? BytesFromText(host::GetNativePath(*found)).value().c_str() : "nothing");
    std::fflush(stdout);
    return path;
  };
  std::mutex mutex;
  std::condition_variable changed;
  const auto listening = manager->AddListener([&](const PathEntryVectorDifferentiator&) {
    const std::lock_guard lock(mutex);
    changed.notify_one();
  });
  const auto stream = events::createLocalEventMgr(events::SessionEmId);
  const host::FolderObserver observer(*manager, *stream);  // events change the path …
  const host::DiskFeed feed(*manager, stream);             // … and the disk makes events
  const auto before = print();
  std::unique_lock lock(mutex);
  changed.wait(lock, [&] { return manager->GetPath() != before; });
  print();
  return 0;
}
