// Writes caches and is killed, crowded, refused and cut off meanwhile; check_crashes and
// check_power_cuts, beside this file, run it.
//
//   crash_driver kill FOLDER COUNT     kills COUNT writers, each at a random moment
//   crash_driver crowd FOLDER COUNT    COUNT writes by each of many writers, with many readers
//   crash_driver write FOLDER VERSION  one write, between two marks that a trace shows
//   crash_driver load FOLDER VERSION   one load, likewise
//   crash_driver look FOLDER VERSION   looks whether the cache is that version, and all that is there
//   crash_driver pour FOLDER VERSION   writes one after the other from there on, tells what is saved
//   crash_driver version FOLDER 0      tells which version the cache is
//
// With "receipt" behind it, the same with receipts in place of caches.
//
// Ends with 0, or 1 when something was torn, lost or left behind, 2 for wrong arguments, 3 for the
// exception that a write or a load is to raise when it fails.
#include "searchpath/host/invalid_listing_exception.h"
#include "searchpath/host/receipt.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/toolbox_path_cache.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <new>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace Corvane::PathManagement;

using Version = unsigned long;

/// What a cache of that version holds, told from its first word alone. Some are longer than any
/// buffer on the way.
std::string Content(Version version) {
  std::string content = std::to_string(version) + ' ';
  std::minstd_rand random(static_cast<std::minstd_rand::result_type>(version + 1));
  content.resize(content.size() + random() % 200'000);
  for (char& byte : content) byte = byte == '\0' ? static_cast<char>(random() >> 8) : byte;
  return content + "end";
}

/// Empty when `bytes` are not one whole version.
std::optional<Version> VersionOf(const std::string& bytes) {
  const Version version = std::strtoul(bytes.c_str(), nullptr, 10);
  return bytes == Content(version) ? std::optional(version) : std::nullopt;
}

/// Writes the way entries may be written, and believes every byte that it reads.
struct Factory : IPathEntryFactory {
  explicit Factory(Version held) : version(held) {}

  void ReadEntries(std::istream& stream, const AbsoluteIRI& /*root*/) override {
    std::string bytes(1'000'000, '\0');
    stream.read(bytes.data(), std::ssize(bytes));
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    if (!stream.eof()) bytes += "more";
    read = VersionOf(bytes);
  }

  void WriteEntries(std::ostream& stream, const AbsoluteIRI& /*root*/) const override {
    const std::string content = Content(version);
    const auto third = std::ssize(content) / 3;
    stream.write(content.data(), third);
    std::copy_n(content.data() + third, third, std::ostreambuf_iterator<char>(stream));
    stream.rdbuf()->sputn(content.data() + 2 * third, std::ssize(content) - 2 * third);
  }

  Version version;
  std::optional<Version> read;  // empty when it was torn
};

/// A receipt of that version: so many names, which are numbers from it on.
host::Receipt ReceiptOf(Version version) {
  std::vector<host::Lookup> lookups(1 + version % 5000);
  for (auto& lookup : lookups) lookup.name = TextFromBytes(std::to_string(version++));
  return host::Environment({u"/no/such/folder"}).FindWithReceipt(lookups);
}

std::optional<Version> VersionOf(const host::Receipt& receipt) {
  const Version version =
      std::strtoul(BytesFromText(receipt.GetName(0)).value().c_str(), nullptr, 10);
  const Version last = version + receipt.GetCount() - 1;
  const bool isWhole = receipt.GetCount() == 1 + version % 5000 &&
                       receipt.GetName(last - version) == TextFromBytes(std::to_string(last));
  return isWhole ? std::optional(version) : std::nullopt;
}

/// A cache, or a receipt, and the folder that holds it alone.
class Scene {
 public:
  Scene(const std::string& location, bool holdsReceipt)
      : folder(location), isReceipt(holdsReceipt) {}

  void Write(Version version) const {
    if (isReceipt) {
      ReceiptOf(version).Save(cache);
    } else {
      WriteToolboxPathCache(cache, u"/lib", Factory(version));
    }
  }

  [[nodiscard]] std::optional<Version> Load() const try {
    if (isReceipt) return VersionOf(host::Receipt::Load(cache));
    Factory factory(0);
    return LoadToolboxPathCache(cache, u"/lib", factory), factory.read;
  } catch (const host::InvalidListingException&) {
    return std::nullopt;
  }

  [[nodiscard]] Version LooksInAWrite() const { return isReceipt ? 1024 : 64; }

  /// Removes what a killed writer left; returns how many files that were.
  [[nodiscard]] int TakeStrays() const {
    int strays = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().filename() == "cache") continue;
      std::filesystem::remove(entry.path());
      ++strays;
    }
    return strays;
  }

 private:
  std::string folder;
  bool isReceipt;
  fl::filesystem::path cache = TextFromBytes(folder + "/cache");
};

int Fault(const std::string& text) {
  std::cerr << text << '\n';
  return 1;
}

/// What a writer that is going to be killed tells in time.
struct Progress {
  std::atomic<Version> begun = 0;
  std::atomic<Version> saved = 0;
};

int KillWriters(const Scene& scene, Version count) {
  void* const shared =
      mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) return Fault("no shared memory");
  auto& progress = *new (shared) Progress;
  const unsigned seed = std::random_device()();
  std::minstd_rand random(seed);
  scene.Write(0);
  Version looks = 0, strays = 0;
  for (Version round = 0; round < count; ++round) {
    const pid_t writer = fork();
    while (writer == 0) {
      scene.Write(++progress.begun);
      progress.saved = progress.begun.load();
    }
    // Looking takes about as long as a step of a write, so this is the random moment.
    for (Version more = random() % scene.LooksInAWrite(); more > 0; --more, ++looks) {
      const Version saved = progress.saved;
      const auto version = scene.Load();
      if (!version || *version < saved) return kill(writer, SIGKILL), Fault("torn or lost, alive");
    }
    kill(writer, SIGKILL);
    int status = 0;
    if (waitpid(writer, &status, 0) != writer || WTERMSIG(status) != SIGKILL) {
      return Fault("a writer ended by itself");
    }
    const auto version = scene.Load();
    if (!version) return Fault("torn by kill " + std::to_string(round));
    if (*version < progress.saved || *version > progress.begun) {
      return Fault("lost by kill " + std::to_string(round));
    }
    const int left = scene.TakeStrays();
    if (left > 1) return Fault("one kill left " + std::to_string(left) + " files");
    strays += static_cast<Version>(left);
    progress.begun = progress.saved = *version;
  }
  std::printf(
      "%lu kills, %lu of them in the middle of a write; %lu writes, %lu looks; seed %u: "
      "none torn, none lost\n",
      count, strays, progress.saved.load(), looks, seed);
  return 0;
}

int Crowd(const Scene& scene, Version count) {
  constexpr Version crowd = 8;
  std::atomic<Version> torn = 0, looks = 0, writing = crowd;
  scene.Write(0);
  {
    std::vector<std::jthread> threads;
    for (Version writer = 0; writer < crowd; ++writer) {
      threads.emplace_back([&, writer] {
        for (Version write = 0; write < count; ++write) scene.Write(write * crowd + writer);
        --writing;
      });
      threads.emplace_back([&] {
        while (writing > 0) torn += scene.Load() ? 0 : 1, ++looks;
      });
    }
  }
  const auto last = scene.Load();
  if (torn > 0 || !last || *last < (count - 1) * crowd || scene.TakeStrays() > 0) {
    return Fault("torn, lost or left behind in the crowd");
  }
  std::printf("%lu writers of %lu caches each, %lu looks: none torn\n", crowd, count, looks.load());
  return 0;
}

/// A call that fails, and stands out in a trace for that.
void Mark(const char* name) {
  if (chdir(name) == 0) std::abort();
}

template <class Work>
int BetweenMarks(const Work& work) try {
  Mark("/mark/begin");
  work();
  Mark("/mark/end");
  return 0;
} catch (const UnableToSaveToolboxCacheException&) {
  return 3;
} catch (const ToolboxCacheWrongFormatException&) {
  return 3;
}

int Run(const std::string& mode, const Scene& scene, Version number) {
  if (mode == "kill") return KillWriters(scene, number);
  if (mode == "crowd") return Crowd(scene, number);
  if (mode == "write") return BetweenMarks([&] { scene.Write(number); });
  while (mode == "pour") {
    scene.Write(number);
    std::printf("%lu\n", number++), std::fflush(stdout);
  }
  std::optional<Version> version;
  if (mode == "version") {
    version = scene.Load();
    return version ? std::printf("%lu\n", *version), 0 : Fault("a torn cache was believed");
  }
  if (mode == "load") {
    const int end = BetweenMarks([&] { version = scene.Load(); });
    return end != 0 || version == number ? end : Fault("a torn cache was believed");
  }
  if (mode != "look") return 2;
  if (scene.Load() != number) return Fault("the cache is not version " + std::to_string(number));
  return scene.TakeStrays() > 0 ? Fault("a file was left behind") : 0;
}

}  // namespace

int main(int count, char** arguments) {
  const bool isReceipt = count == 5 && std::string(arguments[4]) == "receipt";
  if (count != 4 && !isReceipt) return 2;
  return Run(arguments[1], Scene(arguments[2], isReceipt), std::strtoul(arguments[3], nullptr, 10));
}
