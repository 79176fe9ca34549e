#ifndef SEARCHPATH_HOST_SIMILAR_FILES_H
#define SEARCHPATH_HOST_SIMILAR_FILES_H

#include "searchpath/export.h"
#include "searchpath/model/found_item.h"

#include <cstdint>

namespace Corvane::PathManagement::host {

/// How the name of a file resembles one that was not found.
enum class Similarity : std::uint8_t {
  OtherCase,       ///< the same but for case
  OtherExtension,  ///< the same but for the extension, which one of the two may lack
  OneLetterOff,    ///< one character more, less or other, or two neighbours swapped
};

/// The similarity in words.
[[nodiscard]] SEARCHPATH_EXPORT const char* GetText(Similarity similarity) noexcept;

/// A file that may have been meant by a name that was not found. It is only a suggestion: looking
/// up the name still finds nothing.
struct SimilarFile {
  FoundItem file;                                    ///< what may have been meant
  Similarity similarity = Similarity::OneLetterOff;  ///< how its name differs
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_SIMILAR_FILES_H
