#ifndef SEARCHPATH_TOOLS_PAGES_NOTE_SECTIONS_H
#define SEARCHPATH_TOOLS_PAGES_NOTE_SECTIONS_H

#include <string>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::tool {

/// A part of the rules that --help shows.
struct NoteSection {
  std::string title;  ///< empty for a paragraph without one
  std::vector<std::string> lines;

  /// Whether lines stand below one another in columns.
  [[nodiscard]] bool IsTable() const;
};

/// The parts of `notes`. A part begins with a line that ends with ":", or with "Exit:".
[[nodiscard]] std::vector<NoteSection> SplitNotes(std::string_view notes);

/// The lines of `text`, without their first two blanks.
[[nodiscard]] std::vector<std::string> SplitIndented(std::string_view text);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_PAGES_NOTE_SECTIONS_H
