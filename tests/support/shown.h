#ifndef SEARCHPATH_TESTS_SUPPORT_SHOWN_H
#define SEARCHPATH_TESTS_SUPPORT_SHOWN_H

#include "searchpath/host.h"
#include "support/temporary_tree.h"

namespace Corvane::PathManagement::test {

/// New entries of folders of `tree`.
inline host::FolderEntries FoldersIn(const TemporaryTree& tree,
                                     const std::vector<std::string>& names) {
  host::FolderEntries folders;
  for (const auto& name : names) folders.push_back(host::FolderEntry::Create(tree.IRI(name)));
  return folders;
}

inline ustring Shown(const ustring& text) { return text; }
inline ustring Shown(const PathItem& item) { return item.GetName() + item.GetExtension(); }
inline ustring Shown(const IPathEntry& entry) { return entry.GetAbsoluteIRI().getPath(); }
inline ustring Shown(const FoundItem& found) { return host::GetNativePath(found); }
template <class Thing>
ustring Shown(const std::shared_ptr<Thing>& thing) {
  return thing == nullptr ? ustring(u"none") : Shown(*thing);
}

/// The texts, entries, files or items of a list with spaces between, those in `tree` from there on.
template <class List>
std::string Shown(const List& list, const TemporaryTree& tree) {
  std::string all;
  for (const auto& thing : list) {
    const std::string shown = BytesFromText(Shown(thing)).value();
    const bool isInTree = shown.starts_with(tree.Path() + "/");
    all += (all.empty() ? "" : " ") + (isInTree ? shown.substr(tree.Path().size() + 1) : shown);
  }
  return all;
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_SHOWN_H
