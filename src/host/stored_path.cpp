#include "searchpath/host/stored_path.h"

#include "host/common/held_hash.h"
#include "platform/descriptor.h"
#include "platform/native_path.h"
#include "searchpath/host/folder_list.h"
#include "searchpath/host/working_folder.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/atomic_file_writer.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/iri_conversion.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace Corvane::PathManagement::host {

namespace {

using fl::filesystem::detail::NativeBytes;
using fl::filesystem::detail::PathError;
using fl::filesystem::detail::WithoutInterruption;

/// A folder that the file lists.
struct Line {
  ustring text;  // as it is written in the file
  AbsoluteIRI location;
};

/// `number` says which folder of `file` this is, from 1: for the exception.
Line LocateLine(const ustring& text, std::size_t number, const std::string& file) {
  const bool isAbsolute = text.starts_with(u'/') || text.starts_with(u'~') ||
                          foundation::storage::vfs::hasIRIPrefix(text);
  try {
    // A relative path is refused: it would name another folder in every working folder.
    if (isAbsolute) return {text, WorkingFolder().Locate(text)};
  } catch (const current_working_folder::FailedToAbsolutizeException&) {
    // Reported below.
  }
  throw InvalidStoredPathException("folder " + std::to_string(number) + " of the stored path \"" +
                                   file + "\" is neither an absolute path nor a \"file\" IRI: \"" +
                                   BytesFromText(text).value_or("") + '"');
}

/// The folders in the file; no value when it does not exist.
std::optional<std::vector<Line>> ReadLines(const std::string& file) {
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  if (status.type() == std::filesystem::file_type::not_found) return std::nullopt;
  fl::filesystem::ifstream list(TextFromBytes(file));
  if (list.openError()) {
    throw PathError(list.openError().value(), "cannot read", file, ", the stored path");
  }
  std::vector<Line> lines;
  for (const ustring& text : ReadFolderList(list)) {
    lines.push_back(LocateLine(text, lines.size() + 1, file));
  }
  // The stream keeps no error number of a failed read.
  if (list.bad()) throw PathError(EIO, "cannot read", file, ", the stored path");
  return lines;
}

StoredPath::Folders LocationsOf(const std::vector<Line>& lines) {
  StoredPath::Folders folders;
  folders.reserve(lines.size());
  for (const Line& line : lines) folders.push_back(line.location);
  return folders;
}

/// The line to write for `folder`.
std::string TextOf(const AbsoluteIRI& folder) {
  if (folder.getScheme() != u"file") {
    throw std::invalid_argument("a stored path holds folders on disk, not " +
                                BytesFromText(folder.toString()).value_or(""));
  }
  const ustring path = GetStringFromIRI(folder);
  const bool fitsOnALine = path.find(u'\n') == path.npos;
  // A location has no text without bytes, so there is a value.
  return BytesFromText(fitsOnALine ? path : folder.toString()).value();
}

/// Waits until nobody else changes `file`, and keeps others from it as long as the descriptor is
/// open.
fl::filesystem::detail::Descriptor Lock(const std::string& file) {
  const std::string name = file + ".lock";
  fl::filesystem::detail::Descriptor lock(open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666));
  if (!lock.IsOpen()) throw PathError(errno, "cannot open", name);
  if (WithoutInterruption([&] { return flock(lock.Get(), LOCK_EX); }) != 0) {
    throw PathError(errno, "cannot lock", name);
  }
  return lock;
}

/// The absolute path of `file` without links. Makes the folders above it.
std::string ResolveAndMakeFolders(const fl::filesystem::path& file) {
  // Made absolute first, since a name alone has no parent folder to make.
  std::filesystem::path real =
      std::filesystem::weakly_canonical(std::filesystem::absolute(NativeBytes(file.native())));
  // `weakly_canonical` does not follow a link to what does not exist yet.
  constexpr int kMostLinks = 40;  // the limit of the kernel
  for (int links = 0; std::filesystem::is_symlink(real); ++links) {
    if (links == kMostLinks) throw PathError(ELOOP, "cannot resolve", real.native());
    real =
        std::filesystem::weakly_canonical(real.parent_path() / std::filesystem::read_symlink(real));
  }
  std::filesystem::create_directories(real.parent_path());
  return real;
}

/// The value of an environment variable; no value unless it is an absolute path.
std::optional<std::string> AbsoluteFrom(const char* variable) {
  const char* const value = std::getenv(variable);
  if (value == nullptr || *value != '/') return std::nullopt;
  return value;
}

}  // namespace

InvalidStoredPathException::InvalidStoredPathException(const std::string& explanation)
    : std::runtime_error(explanation) {}

InvalidStoredPathException::~InvalidStoredPathException() = default;

fl::filesystem::path StoredPath::GetDefaultFile() {
  constexpr const char* kBelow = "/searchpath/path";
  if (const auto folder = AbsoluteFrom("XDG_CONFIG_HOME")) return TextFromBytes(*folder + kBelow);
  if (const auto home = AbsoluteFrom("HOME")) return TextFromBytes(*home + "/.config" + kBelow);
  // Without $HOME, "~" is the home folder in the list of users.
  return WorkingFolder().Locate(u"~/.config/searchpath/path").getPath();
}

std::optional<StoredPath::Folders> StoredPath::Read() const {
  if (const auto lines = ReadLines(NativeBytes(file.native()))) return LocationsOf(*lines);
  return std::nullopt;
}

void StoredPath::Change(const std::function<Folders(const Folders&)>& change) const {
  const std::string real = ResolveAndMakeFolders(file);
  const auto lock = Lock(real);
  const std::vector<Line> lines = ReadLines(real).value_or(std::vector<Line>());
  const Folders before = LocationsOf(lines);
  const Folders after = change(before);
  if (after == before) return;
  boost::unordered_flat_map<AbsoluteIRI, std::string, HeldHash> texts;  // as they are in the file
  for (const Line& line : lines) {
    // The text was made of bytes, so this cannot fail.
    texts.try_emplace(line.location, BytesFromText(line.text).value_or(""));
  }
  fl::filesystem::AtomicFileWriter writer(TextFromBytes(real), u".path-", u".tmp");
  for (const AbsoluteIRI& folder : after) {
    const auto kept = texts.find(folder);
    writer.Stream() << (kept == texts.end() ? TextOf(folder) : kept->second) << '\n';
  }
  writer.Commit();
}

}  // namespace Corvane::PathManagement::host
