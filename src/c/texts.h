#ifndef SEARCHPATH_SRC_C_TEXTS_H
#define SEARCHPATH_SRC_C_TEXTS_H

#include "searchpath/c/searchpath.h"
#include "searchpath/host/environment.h"

#include <cstddef>
#include <string>

// Converts between the types of callers in C and those of the host.

namespace Corvane::PathManagement::c {

/// The `count` texts, whose bytes become text as by `TextFromBytes`. `texts` may be null when
/// `count` is 0.
///
/// Errors: `std::invalid_argument` when one of the texts is null.
[[nodiscard]] AnyTexts TextsOf(const char* const* texts, std::size_t count);

/// The question that `lookup` asks.
///
/// Errors: `std::invalid_argument` when `lookup`, its name or an extension is null.
[[nodiscard]] host::Lookup LookupOf(const searchpath_lookup* lookup);

/// The bytes of `text`, a name or a path; "" when it stands for no bytes, see `BytesFromText`.
[[nodiscard]] std::string BytesOf(const ustring& text);

/// A view of `text`, which must outlive the view.
[[nodiscard]] searchpath_text View(const std::string& text);

}  // namespace Corvane::PathManagement::c

#endif  // SEARCHPATH_SRC_C_TEXTS_H
