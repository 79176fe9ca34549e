#ifndef SEARCHPATH_HOST_NAME_PATTERN_H
#define SEARCHPATH_HOST_NAME_PATTERN_H

#include "searchpath/export.h"
#include "searchpath/model/any_text.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/ustring.h"

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

/// A pattern for file names, as shells write it. The whole name has to match:
///
/// - "*" matches any characters, or none; a dot at the beginning of a name, too.
/// - "?" matches one character.
/// - "[abc]" matches one of these characters, and "[a-z]" one of those between two, by code point.
///   "[!abc]" or "[^abc]" matches one that is not among them. A "]" that comes first is one of the
///   characters, and so is a "-" that comes first or last. Within the brackets, "[:alpha:]" and the
///   other classes of POSIX stand for characters of ASCII. A "[" that no "]" closes stands for
///   itself.
/// - A backslash makes the next character match itself; a pattern that ends with a lone backslash
///   matches nothing.
/// - Any other character matches itself.
///
/// A character is a code point, or a byte of a name that is not UTF-8. Where case is ignored, the
/// pattern and the names are folded first, as by `FoldFilename`.
///
/// Threads: all operations, from any thread.
class SEARCHPATH_EXPORT NamePattern {
 public:
  /// Takes any text: one without special characters matches the name that it spells.
  explicit NamePattern(const AnyText& pattern, FilenameMatchingPolicy matchingPolicy =
                                                   FilenameMatchingPolicy::FileSystemDefault);

  /// Whether the file name `name`, in bytes, matches.
  ///
  /// Cost: at most the length of the name times that of the pattern; nothing is allocated for a
  /// name in ASCII unless case is ignored.
  [[nodiscard]] bool Matches(std::string_view name) const;

  /// Whether `text` has a "*", "?" or "[". A backslash alone makes no pattern: `text` may be the
  /// name of a file that has one.
  [[nodiscard]] static bool IsPattern(std::u16string_view text) noexcept;

 private:
  enum class Kind : std::uint8_t { Character, AnyCharacter, AnyCharacters, OneOf, NoneOf, Nothing };
  /// What matches one character of a name or, of the kind `AnyCharacters`, a run of characters.
  struct Part {
    Kind kind = Kind::Nothing;
    std::vector<std::pair<char32_t, char32_t>> ranges = {};  // both ends included
    /// Precondition: the kind is not `AnyCharacters`.
    [[nodiscard]] bool Accepts(char32_t character) const;
  };

  /// Takes the first part off the beginning of `rest`, the rest of a pattern.
  [[nodiscard]] static Part TakePart(std::u16string_view& rest);
  /// `Text` is a view of bytes for a name in ASCII, or else a view of UTF-16.
  template <class Text>
  [[nodiscard]] bool MatchText(const Text& name) const;

  std::vector<Part> parts;
  bool ignoresCase;
};

/// A name that matches a pattern, and every file of that name.
struct MatchingName {
  /// As it can be looked up: with the folders that are written in front of the pattern, if any.
  ustring name;
  std::vector<FoundItem> files;  ///< the file that the name means, then those that it hides
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_NAME_PATTERN_H
