#include "searchpath/host/path_entry_factory.h"

#include "host/folder/entry_state.h"
#include "host/saved/listing_writer.h"
#include "host/saved/saved_source.h"
#include "searchpath/utilities/iri_conversion.h"

#include <utility>

namespace Corvane::PathManagement::host {

PathEntryFactory::PathEntryFactory(FolderEntries mainFolders) : folders(std::move(mainFolders)) {}

PathEntryFactory::PathEntryFactory(ListingUse listingUse) : use(listingUse) {}

PathEntryFactory::PathEntryFactory(const PathEntryFactory&) = default;
PathEntryFactory& PathEntryFactory::operator=(const PathEntryFactory&) = default;
PathEntryFactory::~PathEntryFactory() = default;

FolderEntries PathEntryFactory::GetFolders() const { return folders; }

void PathEntryFactory::ReadEntries(std::istream& stream, const AbsoluteIRI& root) {
  auto listings = std::make_shared<const SavedListings>(stream, root, use);
  const auto source = std::make_shared<const SavedSource>(std::vector{listings});
  FolderEntries made;
  const auto mainFolders = listings->MainFolders();
  made.reserve(mainFolders.size());
  for (const std::uint32_t index : mainFolders) {
    made.push_back(CreateMainFolder(listings->Locations()[index], source));
  }
  folders = std::move(made);
  saved = std::move(listings);
}

void PathEntryFactory::WriteEntries(std::ostream& stream, const AbsoluteIRI& root) const {
  WriteListings(stream, root, folders);
}

std::vector<ustring> PathEntryFactory::GetFolderStrings() const {
  std::vector<ustring> strings;
  strings.reserve(folders.size());
  for (const auto& folder : folders) strings.push_back(GetStringFromIRI(folder->GetAbsoluteIRI()));
  return strings;
}

FolderEntries PathEntryFactory::CreateSavedFolders() const {
  FolderEntries all;
  if (saved == nullptr) return all;
  const auto source = std::make_shared<const SavedSource>(std::vector{saved});
  for (const AbsoluteIRI& location : saved->Locations()) {  // each as if it were on a path itself
    all.push_back(CreateMainFolder(location, source));
  }
  return all;
}

std::shared_ptr<const SavedListings> SavedListingsOf(const PathEntryFactory& factory) {
  return factory.saved;
}

}  // namespace Corvane::PathManagement::host
