#include "searchpath/host/package_registry.h"

#include "host/folder/directory_scan.h"
#include "host/folder/open_path.h"
#include "host/packages/package_manifest.h"
#include "platform/regular_file.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/iri_conversion.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <string>
#include <system_error>
#include <utility>

namespace Corvane::PathManagement::host {

using Corvane::PackageRegistry::IPackage;
using ZentraComponents::ComponentIdentifier;

namespace {

constexpr const char16_t* kManifestName = u"/searchpath.json";
constexpr std::size_t kMostMemory = std::size_t{64} << 20;  // in bytes
constexpr std::size_t kMostProblems = 1000;

/// Refuses a manifest that cannot be read. `error` is the number of a system error.
[[noreturn]] void RefuseFile(int error) {
  throw ManifestException(PackageFault::Unreadable, /*itsLine=*/{}, /*itsField=*/{},
                          TextFromBytes(std::generic_category().message(error)));
}

/// Opens the regular file at `path`; empty when nothing is there.
std::optional<Descriptor> OpenFile(const std::string& path) {
  std::error_code error;
  Descriptor file = fl::filesystem::detail::OpenRegularFile(
      [&path](int flags) { return OpenPath(path, flags); }, error);
  if (file.IsOpen()) return file;
  // A link that leads nowhere is not nothing: it is a manifest that cannot be read.
  const bool isAbsent = error == std::errc::no_such_file_or_directory;
  if (isAbsent && !OpenPath(path, O_PATH | O_NOFOLLOW).IsOpen()) return std::nullopt;
  // `invalid_argument` is said of devices, sockets and the like.
  if (error == std::errc::is_a_directory || error == std::errc::invalid_argument) {
    throw ManifestException(PackageFault::NotAFile);
  }
  RefuseFile(error.value());
}

/// The first `kTooLargeManifest` bytes of `file`, or all if it is shorter. `ReadManifest` refuses
/// that many bytes.
std::string ReadBytes(const Descriptor& file) {
  constexpr std::size_t blockSize = 4096;  // more than nearly every manifest has
  std::string bytes;
  std::size_t size = 0;
  while (size < kTooLargeManifest) {
    bytes.resize(std::min(std::max(blockSize, 2 * size), kTooLargeManifest));
    const ssize_t got = fl::filesystem::detail::WithoutInterruption(
        [&] { return read(file.Get(), bytes.data() + size, bytes.size() - size); });
    if (got < 0) RefuseFile(errno);
    if (got == 0) break;
    size += static_cast<std::size_t>(got);
  }
  bytes.resize(size);
  return bytes;
}

/// The names of the folders in `listing`, in the order of their bytes.
std::vector<std::string> NamesBelow(FolderListing listing) {
  std::vector<std::string> names;
  for (auto* folders : {&listing.specialFolders, &listing.ordinaryFolders}) {
    for (FolderListing::Subfolder& folder : *folders) names.push_back(std::move(folder.name));
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

struct PackageRegistry::State {
  struct Known {
    std::shared_ptr<const IPackage> package;
    ustring file;  // the manifest
  };

  State(const ustring& root, const WorkingFolder& workingFolder);

  void AddAll(const AbsoluteIRI& root);
  /// Adds the package in `folder`, or why it is left out; nothing when there is no manifest.
  void Add(const AbsoluteIRI& folder);
  /// Errors: `ManifestException` when there is a package of that name and version.
  void Add(PackageManifest manifest, const ustring& file);

  static auto KeyOf(const ComponentIdentifier& identifier) {
    return std::pair(identifier.name, identifier.version);
  }

  std::vector<ComponentIdentifier> identifiers;
  std::map<std::pair<ustring, ustring>, Known> packages;
  std::size_t memory = 0;  // what the packages take, roughly, in bytes
  std::optional<FolderProblem> rootProblem;
  std::vector<PackageProblem> problems;  // the first kMostProblems
  std::size_t problemCount = 0;
};

PackageRegistry::State::State(const ustring& root, const WorkingFolder& workingFolder) {
  try {
    AddAll(workingFolder.Locate(root));
  } catch (const current_working_folder::FailedToAbsolutizeException& failure) {
    rootProblem = {root, failure.GetReason()};
  }
}

void PackageRegistry::State::AddAll(const AbsoluteIRI& root) {
  DiskPatience patience;
  FolderListing listing = ListFolder(root, patience);
  if (listing.problem) rootProblem = {GetStringFromIRI(root), *listing.problem};
  for (const std::string& name : NamesBelow(std::move(listing))) {
    Add(foundation::storage::vfs::toAbsoluteIRI(u"file",
                                                root.getPath() + u'/' + TextFromBytes(name)));
  }
}

void PackageRegistry::State::Add(const AbsoluteIRI& folder) {
  const ustring file = GetStringFromIRI(folder) + kManifestName;
  try {
    const auto opened = OpenFile(BytesFromText(file).value());
    if (!opened) return;
    if (memory >= kMostMemory) throw ManifestException(PackageFault::TooMuch);
    Add(ReadManifest(ReadBytes(*opened), folder), file);
  } catch (const ManifestException& error) {
    if (++problemCount > kMostProblems) return;
    problems.push_back({file, error.line, error.field, error.fault, error.detail});
  }
}

void PackageRegistry::State::Add(PackageManifest manifest, const ustring& file) {
  const auto [known, isNew] =
      packages.try_emplace(KeyOf(manifest.identifier), Known{manifest.package, file});
  if (!isNew) {
    throw ManifestException(PackageFault::Repeated, manifest.nameLine, u"name", known->second.file);
  }
  identifiers.push_back(std::move(manifest.identifier));
  memory += manifest.memory;
}

PackageRegistry::PackageRegistry(const AnyText& root, const WorkingFolder& workingFolder)
    : state(std::make_unique<const State>(root, workingFolder)) {}

PackageRegistry::~PackageRegistry() = default;

std::shared_ptr<const IPackage> PackageRegistry::GetPackage(
    const ComponentIdentifier& identifier) const {
  const auto found = state->packages.find(State::KeyOf(identifier));
  return found == state->packages.end() ? nullptr : found->second.package;
}

const std::vector<ComponentIdentifier>& PackageRegistry::GetIdentifiers() const noexcept {
  return state->identifiers;
}

const std::optional<FolderProblem>& PackageRegistry::GetRootProblem() const noexcept {
  return state->rootProblem;
}

const std::vector<PackageProblem>& PackageRegistry::GetProblems() const noexcept {
  return state->problems;
}

std::size_t PackageRegistry::GetProblemCount() const noexcept { return state->problemCount; }

}  // namespace Corvane::PathManagement::host
