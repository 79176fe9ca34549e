#ifndef SEARCHPATH_TOOLS_PAGES_NOTE_SECTIONS_H
#define SEARCHPATH_TOOLS_PAGES_NOTE_SECTIONS_H

#include <string>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::tool {

/// A section of the notes that --help shows.
struct NoteSection {
  std::string title;  ///< empty for a paragraph without one
  std::vector<std::string> lines;

  /// Whether the breaks of lines matter, since there are columns or JSON.
  [[nodiscard]] bool IsTable() const;
};

/// The sections of `notes`. A section begins with a title, which is a line that is not indented and
/// ends with ":"; with "Exit: "; or, without a title, with a paragraph that is not indented.
[[nodiscard]] std::vector<NoteSection> SplitNotes(std::string_view notes);

/// The lines of `text`, without the two blanks with which they begin.
[[nodiscard]] std::vector<std::string> SplitIndented(std::string_view text);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_PAGES_NOTE_SECTIONS_H
