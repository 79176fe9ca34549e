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
// In the loose form, "+" and "@" may be left out of the partial pathname. A match must not begin
// inside a "+" folder: whoever names something in a package has to name the package as well. To
// decide that, "@", private and resources folders directly before the match are skipped. In the
// strict form, only "@" may be left out, "+", "@" and private folders are compared unit by unit,
// and the folder directly before the match must be ordinary, or absent.
//
// `equal` and the comparators of entries are called as equal(part of the partial pathname, folder
// name), except where said otherwise.
//
// Precondition: no entry is null.
// Threads: stateless; as safe as the entries are.
// Errors: an empty `equal` raises `std::bad_function_call`; exceptions of IRIs and entries pass
// through.
// Cost: stops at the first mismatch; names that fit a short string do not touch the heap.

/// The parts of `text` between separators (`Constants::PathnameSeparatorStr`), without empty ones.
/// Up to eight are kept in the vector itself, without an allocation.
[[nodiscard]] SEARCHPATH_EXPORT boost::container::small_vector<ustring, 8> SplitPartialPathname(
    std::u16string_view text);

/// Whether `partial` matches the end of the folder path `folder`, in the loose form. An empty
/// `partial` is taken for the last folder of the path, whatever its kind: it matches unless that
/// would begin inside a "+" folder.
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

/// Whether `partial` matches `entry` and the entries above it on `path`, in the loose form. What is
/// left of `partial` at the topmost entry must also match the end of that entry's location without
/// leaving anything out: a topmost "+pkg" is not matched by "pkg". This comparison is called as
/// comparator(folder name, part of the partial pathname). An empty `partial` matches every entry
/// that neither is a "+" folder nor has one above it on `path`.
///
/// Precondition: `entry` is on `path`, and so are its parent on `path`, the parent of that, and so
/// on: `path` is asked for the parent of each. The composite paths assert that in debug builds; in
/// release builds the behaviour is undefined.
[[nodiscard]] SEARCHPATH_EXPORT bool DoesPartialPathnameMatchPathEntryIRI(
    const IPath& path, const BidirectionalUstringRange& partial,
    std::shared_ptr<const IPathEntry> entry, const FilenameMatchingPolicy& policy);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_PARTIAL_PATHNAME_H
