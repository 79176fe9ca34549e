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

  /// Whether the lines must stay as they are, since they have columns or JSON.
  [[nodiscard]] bool IsTable() const;
};

/// The sections of `notes`. Each begins with a line that is not indented: a title, which ends with
/// ":"; or "Exit: ...", under the title "Exit status"; or a paragraph, which has no title.
[[nodiscard]] std::vector<NoteSection> SplitNotes(std::string_view notes);

/// The lines of `text`, without the two blanks with which they begin.
[[nodiscard]] std::vector<std::string> SplitIndented(std::string_view text);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_PAGES_NOTE_SECTIONS_H
