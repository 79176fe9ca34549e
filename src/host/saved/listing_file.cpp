#include "searchpath/host/listing_file.h"

#include "host/saved/listing_envelope.h"
#include "host/saved/listing_writer.h"
#include "searchpath/host/working_folder.h"
#include "searchpath/platform/atomic_file_writer.h"

#include <array>
#include <string_view>

namespace Corvane::PathManagement::host {

namespace {

/// The folder that holds `file`.
AbsoluteIRI FolderOf(const fl::filesystem::path& file) {
  ustring folder = fl::filesystem::detail::extract_parent_path(file);
  // "~" is an ordinary name here; with "./" in front, it is not expanded.
  if (!folder.starts_with(u'/')) folder.insert(0, u"./");
  return WorkingFolder().Locate(folder);
}

}  // namespace

bool IsListingFile(const fl::filesystem::path& file) {
  fl::filesystem::ifstream stream(file);
  std::array<char, kListingFormat.begin.size()> begin = {};
  stream.read(begin.data(), begin.size());
  return stream && std::string_view(begin.data(), begin.size()) == kListingFormat.begin;
}

PathEntryFactory LoadListing(const fl::filesystem::path& file, ListingUse use) {
  fl::filesystem::ifstream stream(file);
  CheckOpen(stream, file);
  PathEntryFactory factory(use);
  factory.ReadEntries(stream, FolderOf(file));
  return factory;
}

void SaveListing(const fl::filesystem::path& file, const FolderEntries& mainFolders,
                 const FolderEntries& furtherFolders) {
  fl::filesystem::AtomicFileWriter writer(file, u"tmplisting_", u".tmp");
  WriteListings(writer.Stream(), FolderOf(file), mainFolders, furtherFolders);
  writer.Commit();
}

}  // namespace Corvane::PathManagement::host
