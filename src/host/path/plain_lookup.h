#ifndef SEARCHPATH_SRC_HOST_PATH_PLAIN_LOOKUP_H
#define SEARCHPATH_SRC_HOST_PATH_PLAIN_LOOKUP_H

#include "host/names/name_index.h"
#include "host/path/indexed_items.h"
#include "searchpath/host/folder_entry.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/ustring.h"
#include "searchpath/utilities/once_flag.h"

#include <boost/container/small_vector.hpp>
#include <boost/optional.hpp>
#include <boost/unordered/unordered_flat_map.hpp>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

class FolderState;
class NameKey;
struct NameQuestion;

/// Answers plain names, which have no separator, from the main folders of a path, which are on the
/// path itself. Only questions for visible files and for method entries reach further: a method
/// entry is an "@" folder directly below a main folder, and its name is that of the "@" folder
/// without the "@".
///
/// The first eight questions for a file ask one folder after the other, up to the answer. The disk
/// is asked for the name alone. Only a folder that has a method entry of the name, or is in a
/// cache, is listed: a program that asks little pays for no more. The ninth question lists all
/// folders and builds an index; eight, because asking a folder of 100 files eight times costs as
/// much as listing it. `IgnoreCase`, for which folders have to be listed, has an index of its own,
/// which is built at its second question.
///
/// Threads: all operations, from any thread; a question that needs an index waits while it is
/// built.
/// Cost: with an index, one hash probe for each extension, however many folders there are, and one
/// for the method entry.
class PlainLookup {
 public:
  using Target = PathManagement::detail::SearchTarget;
  using IsShown = std::function<bool(const FolderEntry&)>;

  /// `mainEntries` and `mainFolders` are the same objects in the same order.
  PlainLookup(FolderEntries mainFolders, std::shared_ptr<const PathEntries> mainEntries);

  /// The first match in path order.
  [[nodiscard]] boost::optional<FoundItem> FindFirst(const Target& target,
                                                     FilenameMatchingPolicy policy);
  /// As `FindFirstFileVisibleOnPath`. Without an index, each folder up to the answer is asked for
  /// the file and for the method entry in one question.
  [[nodiscard]] boost::optional<FoundItem> FindVisible(const Target& target,
                                                       FilenameMatchingPolicy policy);
  /// As `FindVisible` for a target that is `name` without extensions, under `FileSystemDefault`:
  /// sets `found` to the answer, which may be empty, and returns true. Returns false as long as
  /// there is no index, for a name that a method entry may have, and for a name with separators.
  [[nodiscard]] bool FindIndexed(std::u16string_view name, boost::optional<FoundItem>& found);
  /// Makes the index for `policy`, unless it exists.
  void MakeIndex(FilenameMatchingPolicy policy) { Build(Lazy(policy), policy); }
  /// As `FindVisible` on the path of the folders for which `isShown` returns true. Answers only
  /// while folders are asked one by one, since an index knows nothing of `isShown`. Otherwise, and
  /// always under `IgnoreCase`, nothing is looked up and the outer optional is empty: the caller
  /// then asks the filtered path.
  [[nodiscard]] std::optional<boost::optional<FoundItem>> FindShown(const Target& target,
                                                                    FilenameMatchingPolicy policy,
                                                                    const IsShown& isShown);
  /// Every match in path order, the best first within a folder.
  [[nodiscard]] std::vector<FoundItem> FindAll(const Target& target, FilenameMatchingPolicy policy);

  /// The "@" folders of that name directly below the main folders, in path order. Without an index
  /// every main folder is asked for such a folder, and those that hold one are listed; under
  /// `IgnoreCase` all main folders are listed.
  [[nodiscard]] PathEntries FindMethodFolders(const ustring& name, FilenameMatchingPolicy policy);

 private:
  struct LazyIndex {
    std::atomic<unsigned> questionCount = 0;  // of the questions before the index was built
    PathManagement::detail::OnceFlag once;    // guards index
    std::unique_ptr<const NameIndex> index;
    IndexedItems items;  // of index
  };
  struct NameHash {
    using is_avalanching = void;  // every bit of the hash is mixed: tables need not mix it again
    std::size_t operator()(const ustring& name) const noexcept;
  };
  /// The folder of a method entry.
  struct MethodFolder {
    std::size_t above;  // the index of the main folder that holds it
    std::shared_ptr<const FolderEntry> entry;
  };
  using MethodFolders = boost::unordered_flat_map<ustring, std::vector<MethodFolder>, NameHash>;
  using Match = NameIndex::Match;
  using Matches = boost::container::small_vector<Match, 4>;
  /// Where a file was found.
  struct Place {
    std::size_t folder = 0;          // its index in folders
    const PathItem* item = nullptr;  // null when no file was found
  };

  [[nodiscard]] LazyIndex& Lazy(FilenameMatchingPolicy policy) noexcept;
  [[nodiscard]] Place FindPlace(const Target& target, FilenameMatchingPolicy policy);
  [[nodiscard]] Place AskFolders(const Target& target, FilenameMatchingPolicy policy) const;
  [[nodiscard]] Place AskIndex(LazyIndex& lazy, const Target& target) const;
  void AskIndex(LazyIndex& lazy, const NameKey& name, Place& best) const;
  [[nodiscard]] boost::optional<FoundItem> At(const Place& place) const;
  [[nodiscard]] boost::optional<FoundItem> FindBeforeOrAt(const Place& ordinary,
                                                          const Target& target,
                                                          FilenameMatchingPolicy policy);
  [[nodiscard]] boost::optional<FoundItem> AskForFileAndMethod(const Target& target,
                                                               FilenameMatchingPolicy policy,
                                                               const IsShown& isShown) const;
  [[nodiscard]] std::vector<FoundItem> AskFoldersForAll(const Target& target,
                                                        FilenameMatchingPolicy policy) const;
  template <class Use>
  void AskEach(const NameQuestion& question, const IsShown& isShown, const Use& use) const;
  [[nodiscard]] bool CountEarlyQuestion(FilenameMatchingPolicy policy);
  LazyIndex& Build(LazyIndex& lazy, FilenameMatchingPolicy policy) const;
  [[nodiscard]] LazyIndex* IndexFor(FilenameMatchingPolicy policy);
  [[nodiscard]] std::unique_ptr<const NameIndex> BuildIndex(FilenameMatchingPolicy policy) const;
  [[nodiscard]] const MethodFolders& IndexedMethodFolders();
  [[nodiscard]] bool HasNoMethodFolder(std::u16string_view name,
                                       FilenameMatchingPolicy policy) const noexcept;
  [[nodiscard]] PathEntries FindAllMethodFolders(const ustring& name,
                                                 FilenameMatchingPolicy policy);
  template <class Stop>
  void ForEachMethodFolder(const ustring& name, FilenameMatchingPolicy policy, const Stop& stop);
  [[nodiscard]] Matches AllMatches(const NameIndex& index, const NameKey& name) const;
  [[nodiscard]] Matches TakeFolder(const NameIndex& index, NameIndex::Cursor& cursor,
                                   std::string_view name) const;

  const FolderEntries folders;
  // The same objects, as pointers of the type that a `FoundItem` holds.
  const std::shared_ptr<const PathEntries> entries;
  /// The states of `folders`, in the same order. Kept, since getting a state from its entry costs
  /// an access to the memory of the entry.
  std::vector<FolderState*> states;
  LazyIndex exact;                               // for policies that respect case
  LazyIndex folded;                              // for `IgnoreCase`
  PathManagement::detail::OnceFlag methodsOnce;  // guards methods and methodLengths
  MethodFolders methods;                         // by name, without "@"
  std::uint64_t methodLengths = 0;  // bit n: a name of `methods` has the length n, modulo 64
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_PATH_PLAIN_LOOKUP_H
