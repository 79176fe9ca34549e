#ifndef SEARCHPATH_UTILITIES_PARTIAL_PATHNAME_H
#define SEARCHPATH_UTILITIES_PARTIAL_PATHNAME_H

#include "searchpath/export.h"
#include "searchpath/model/any_range_adapter.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/ustring.h"

#include <boost/container/small_vector.hpp>

#include <functional>
#include <memory>
#include <string_view>

namespace Corvane::PathManagement {

class IPath;
class IPathEntry;

// A partial pathname gives only the last folders of a location: "pkg/cls" for ".../lib/+pkg/@cls".
// These functions tell whether its folders match the end of a folder.
//
// The loose form lets "+" and "@" be left out of the partial pathname and refuses a match that
// begins inside a "+" folder: whoever names something in a package names the package as well. "@",
// private and resources folders in front of a match are passed over. The strict form lets only "@"
// be left out, compares special folders unit by unit, and wants an ordinary folder, or nothing, in
// front of the match.
//
// `equal` and the comparators of entries are called as equal(part of the partial pathname, folder
// name), except where said otherwise.
//
// Precondition: no entry is null.
// Threads: stateless; as safe as the entries are.
// Errors: an empty predicate raises `std::bad_function_call`; those of IRIs and entries pass
// through.
// Cost: stops at the first mismatch; names that fit a short string do not touch the heap.

/// The folders of `text`, which `Constants::PathnameSeparatorStr` separates; empty ones are
/// dropped. Up to eight stand in place, without an allocation.
[[nodiscard]] SEARCHPATH_EXPORT boost::container::small_vector<ustring, 8> SplitPartialPathname(
    std::u16string_view text);

/// Whether `partial` matches the end of the folder path `folder`, in the loose form.
[[nodiscard]] SEARCHPATH_EXPORT bool DoesPartialPathnameMatchPathString(
    const BidirectionalUstringRange& partial, std::u16string_view folder,
    const std::function<bool(const ustring&, const ustring&)>& equal);

/// Whether `partial` matches the end of the folder path `folder`, in the strict form.
[[nodiscard]] SEARCHPATH_EXPORT bool DoesPartialPathnameStrictlyMatchPathString(
    const BidirectionalUstringRange& partial, std::u16string_view folder,
    const std::function<bool(const ustring&, const ustring&)>& equal);

/// Whether `partial` matches the end of the canonical location of `entry`, in the loose form, names
/// compared as the entry compares them under `policy`.
[[nodiscard]] SEARCHPATH_EXPORT bool DoesPartialPathnameMatchPathEntryIRI(
    const BidirectionalUstringRange& partial, std::shared_ptr<const IPathEntry> entry,
    const FilenameMatchingPolicy& policy);

/// Whether `partial` matches the end of the canonical location of `entry`, in the strict form.
[[nodiscard]] SEARCHPATH_EXPORT bool DoesPartialPathnameStrictlyMatchPathEntryIRI(
    const BidirectionalUstringRange& partial, const IPathEntry& entry,
    const FilenameMatchingPolicy& policy);

/// Whether `partial` matches `entry` and the entries above it on `path`, in the loose form. At the
/// topmost entry, all that is left of `partial` must match the end of its location as well,
/// compared plainly and as comparator(folder name, part of the partial pathname): a topmost "+pkg"
/// is not matched by "pkg". An empty `partial` matches every entry that is no "+" folder and stands
/// below none.
///
/// Precondition: `entry` and all that `path` gives as its parent, the parent of that, and so on are
/// on `path`, which is asked for the parent of each. The composite paths assert that in debug
/// builds; in release builds the behaviour is undefined.
[[nodiscard]] SEARCHPATH_EXPORT bool DoesPartialPathnameMatchPathEntryIRI(
    const IPath& path, const BidirectionalUstringRange& partial,
    std::shared_ptr<const IPathEntry> entry, const FilenameMatchingPolicy& policy);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_PARTIAL_PATHNAME_H
