#include "searchpath/utilities/partial_pathname.h"

#include "searchpath/model/constants.h"
#include "searchpath/model/path.h"
#include "searchpath/model/path_entry.h"
#include "searchpath/utilities/iri_conversion.h"
#include "searchpath/utilities/path_strings.h"
#include "text/tokens.h"

#include <iterator>

namespace Corvane::PathManagement {

namespace {

using Equal = std::function<bool(const ustring&, const ustring&)>;
using Components = boost::container::small_vector<ustring, 8>;
using ComponentMatch = bool (*)(const ustring& partial, const ustring& folder, const Equal& equal);

bool IsOrdinary(const ustring& folder) {
  return GetPathEntryTypeFromBaseName(folder) == PathEntryType::Ordinary;
}

bool MatchLoosely(const ustring& partial, const ustring& folder, const Equal& equal) {
  if (equal(partial, folder)) return true;
  const bool hasPrefix = folder.starts_with(u'@') || folder.starts_with(u'+');
  return hasPrefix && equal(partial, folder.substr(1));
}

bool MatchStrictly(const ustring& partial, const ustring& folder, const Equal& equal) {
  if (folder.starts_with(u'+')) return partial == folder;
  if (folder.starts_with(u'@')) {
    return partial.starts_with(u'@') ? partial == folder
                                     : partial == std::u16string_view(folder).substr(1);
  }
  if (folder == Constants::PrivateFolderStr) return partial == folder;
  return equal(partial, folder);
}

/// The result of `MatchEnds`.
struct EndMatch {
  std::size_t unmatchedFolders;  // how many components of the folder come before the match
  bool isComplete;               // whether all of the partial pathname is matched
};

/// Compares [begin, at) of a partial pathname with `folder`, from their last components backwards.
template <class Iterator>
EndMatch MatchEnds(const Iterator& begin, Iterator at, const Components& folder, const Equal& equal,
                   ComponentMatch matches) {
  std::size_t left = folder.size();
  while (left > 0 && at != begin) {
    --at;
    --left;
    if (!matches(*at, folder[left], equal)) return {left, false};
  }
  return {left, at == begin};
}

/// Whether [begin, at) of a partial pathname is the end of `path`, the location of a topmost entry.
/// Here no "+" or "@" may be left out, and `equal` takes the name of the folder first.
template <class Iterator>
bool IsEndOf(std::u16string_view path, const Iterator& begin, Iterator at, const Equal& equal) {
  const ustring& separators = Constants::PathnameSeparatorStr;
  while (at != begin) {
    path = path.substr(0, path.find_last_not_of(separators) + 1);
    if (path.empty()) return false;
    const std::size_t nameBegin = path.find_last_of(separators) + 1;
    if (!equal(ustring(path.substr(nameBegin)), *--at)) return false;
    path = path.substr(0, nameBegin);
  }
  return true;
}

/// Whether a match may begin after the first `count` components: not when the last of them is a "+"
/// folder. To decide that, "@", private and resources folders are skipped.
bool MayBeginAfter(const Components& folder, std::size_t count) {
  for (; count > 0; --count) {
    const PathEntryType type = GetPathEntryTypeFromBaseName(folder[count - 1]);
    if (type == PathEntryType::Ordinary) return true;
    if (type == PathEntryType::PlusFolder) return false;
  }
  return true;
}

/// Whether `entry`, which may be null, or an entry above it is a "+" folder.
bool HasPlusFolderFrom(const IPath& path, std::shared_ptr<const IPathEntry> entry) {
  for (; entry != nullptr; entry = path.GetParentEntryForEntry(*entry)) {
    if (entry->GetPathEntryType() == PathEntryType::PlusFolder) return true;
  }
  return false;
}

}  // namespace

boost::container::small_vector<ustring, 8> SplitPartialPathname(std::u16string_view text) {
  Components components;
  detail::ForEachToken(text, Constants::PathnameSeparatorStr,
                       [&components](std::u16string_view name) { components.emplace_back(name); });
  return components;
}

bool DoesPartialPathnameMatchPathString(const BidirectionalUstringRange& partial,
                                        std::u16string_view folder, const Equal& equal) {
  const Components components = SplitPartialPathname(folder);
  auto [unmatched, isComplete] =
      MatchEnds(partial.begin(), partial.end(), components, equal, MatchLoosely);
  if (!isComplete) return false;
  // An empty partial pathname counts as a match of the last component, whose kind is not checked.
  const bool nothingMatched = unmatched == components.size();
  if (nothingMatched && unmatched > 0) --unmatched;
  return MayBeginAfter(components, unmatched);
}

bool DoesPartialPathnameStrictlyMatchPathString(const BidirectionalUstringRange& partial,
                                                std::u16string_view folder, const Equal& equal) {
  const Components components = SplitPartialPathname(folder);
  const auto [unmatched, isComplete] =
      MatchEnds(partial.begin(), partial.end(), components, equal, MatchStrictly);
  return isComplete && (unmatched == 0 || IsOrdinary(components[unmatched - 1]));
}

bool DoesPartialPathnameMatchPathEntryIRI(const BidirectionalUstringRange& partial,
                                          std::shared_ptr<const IPathEntry> entry,
                                          const FilenameMatchingPolicy& policy) {
  const auto equal = entry->GetFilenameComparator(policy);
  const ustring folder = GetStringFromIRI(entry->GetCanonicalAbsoluteIRI());
  return DoesPartialPathnameMatchPathString(partial, folder, *equal);
}

bool DoesPartialPathnameStrictlyMatchPathEntryIRI(const BidirectionalUstringRange& partial,
                                                  const IPathEntry& entry,
                                                  const FilenameMatchingPolicy& policy) {
  const auto equal = entry.GetFilenameComparator(policy);
  const ustring folder = GetStringFromIRI(entry.GetCanonicalAbsoluteIRI());
  return DoesPartialPathnameStrictlyMatchPathString(partial, folder, *equal);
}

bool DoesPartialPathnameMatchPathEntryIRI(const IPath& path,
                                          const BidirectionalUstringRange& partial,
                                          std::shared_ptr<const IPathEntry> entry,
                                          const FilenameMatchingPolicy& policy) {
  const auto begin = partial.begin();
  auto at = partial.end();
  while (at != begin) {
    const auto equal = entry->GetFilenameComparator(policy);
    const CanonicalAbsoluteIRI location = entry->GetCanonicalAbsoluteIRI();
    if (!MatchLoosely(*std::prev(at), location.getName(), *equal)) return false;
    auto parent = path.GetParentEntryForEntry(*entry);
    if (parent == nullptr) {
      // There are no entries above, so the rest of `partial` is compared with the location of the
      // topmost entry: its name is compared again, now with any "+" or "@".
      return IsEndOf(location.getPath(), begin, at, *equal);
    }
    --at;
    entry = std::move(parent);
  }
  return !HasPlusFolderFrom(path, std::move(entry));
}

}  // namespace Corvane::PathManagement
