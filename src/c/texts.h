#ifndef SEARCHPATH_SRC_C_TEXTS_H
#define SEARCHPATH_SRC_C_TEXTS_H

#include "searchpath/c/searchpath.h"
#include "searchpath/host/environment.h"

#include <cstddef>
#include <string>

// What goes in and out, as the host has it and as callers in C have it.

namespace Corvane::PathManagement::c {

/// Errors: `std::invalid_argument` for a null among them.
[[nodiscard]] AnyTexts TextsOf(const char* const* texts, std::size_t count);

/// Errors: `std::invalid_argument` for one without a name.
[[nodiscard]] host::Lookup LookupOf(const searchpath_lookup* lookup);

/// The bytes of a text that stands for a name.
[[nodiscard]] std::string BytesOf(const ustring& text);

/// Shows the text as long as it lives.
[[nodiscard]] searchpath_text View(const std::string& text);

}  // namespace Corvane::PathManagement::c

#endif  // SEARCHPATH_SRC_C_TEXTS_H
