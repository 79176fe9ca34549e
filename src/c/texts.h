#ifndef SEARCHPATH_SRC_C_TEXTS_H
#define SEARCHPATH_SRC_C_TEXTS_H

#include "searchpath/c/searchpath.h"
#include "searchpath/host/environment.h"

#include <cstddef>
#include <string>

// Converts between the types of callers in C and those of the host.

namespace Corvane::PathManagement::c {

/// Errors: `std::invalid_argument` when one of the `count` texts is null.
[[nodiscard]] AnyTexts TextsOf(const char* const* texts, std::size_t count);

/// Errors: `std::invalid_argument` when `lookup`, its name or an extension is null.
[[nodiscard]] host::Lookup LookupOf(const searchpath_lookup* lookup);

/// The bytes of the name or path `text`; "" when no bytes have this text, see `BytesFromText`.
[[nodiscard]] std::string BytesOf(const ustring& text);

/// A view of `text`, which must outlive the view.
[[nodiscard]] searchpath_text View(const std::string& text);

}  // namespace Corvane::PathManagement::c

#endif  // SEARCHPATH_SRC_C_TEXTS_H
