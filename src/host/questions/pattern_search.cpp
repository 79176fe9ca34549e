#include "host/questions/pattern_search.h"

#include "host/names/folded_name.h"
#include "host/questions/entry_names.h"
#include "host/questions/file_search.h"
#include "searchpath/model/byte_text.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using PathManagement::detail::SearchTarget;

/// The names that match, each once, in the order in which they are met.
class MatchingNames {
 public:
  MatchingNames(const SearchTarget& target, FilenameMatchingPolicy matchingPolicy)
      : policy(matchingPolicy) {
    const ustring& name = target.GetName();
    const std::size_t begin = name.rfind(u'/') + 1;
    folder = name.substr(0, begin);
    if (NamePattern::IsPattern(folder)) {
      throw std::invalid_argument("only the last part of a name may be a pattern, not all of \"" +
                                  BytesFromText(name).value_or("?") + '"');
    }
    if (target.GetExtensions().empty()) patterns.emplace_back(name.substr(begin), policy);
    for (const ustring& extension : target.GetExtensions()) {
      patterns.emplace_back(name.substr(begin) + extension, policy);
    }
  }

  void AddThoseIn(const std::shared_ptr<const IPathEntry>& entry) {
    const EntryNames held(entry);
    std::vector<std::string_view> here;
    for (std::size_t at = 0; at < held.Get().size(); ++at) {
      const std::string_view name = held.Get()[at];
      const auto matches = [&](const NamePattern& pattern) { return pattern.Matches(name); };
      if (std::ranges::any_of(patterns, matches)) here.push_back(name);
    }
    std::ranges::sort(here);
    std::string buffer;
    for (const std::string_view name : here) {
      const bool ignoresCase = policy == FilenameMatchingPolicy::IgnoreCase;
      const std::string_view key = ignoresCase ? FoldName(name, buffer) : name;
      if (known.emplace(key).second) names.push_back(folder + TextFromBytes(name));
    }
  }

  /// Each name with the files that find(target) returns for it, without names that have none.
  template <class Find>
  [[nodiscard]] std::vector<MatchingName> TakeWithFiles(const Find& find) {
    std::vector<MatchingName> all;
    for (ustring& name : names) {
      std::vector<FoundItem> files = find(SearchTarget(name));
      if (!files.empty()) all.push_back({std::move(name), std::move(files)});
    }
    return all;
  }

 private:
  FilenameMatchingPolicy policy;
  ustring folder;  // before the last part, with the separator
  std::vector<NamePattern> patterns;
  boost::unordered_flat_set<std::string> known;  // last parts of `names`, folded if case is ignored
  std::vector<ustring> names;                    // that match so far
};

}  // namespace

std::vector<MatchingName> FindMatchingNames(const PathView& view,
                                            const std::optional<AbsoluteIRI>& asker,
                                            const SearchTarget& target,
                                            FilenameMatchingPolicy policy) {
  MatchingNames names(target, policy);
  for (const auto& entry : FindAskedEntries(view, asker, target, policy)) names.AddThoseIn(entry);
  return names.TakeWithFiles([&](const SearchTarget& name) {
    return FindAllFiles(view, asker, name, policy, /*observer=*/nullptr);
  });
}

std::vector<MatchingName> FindMatchingNamesByRules(const RuledPath& path,
                                                   const SearchTarget& target,
                                                   const RuledPath::Asker& asker) {
  MatchingNames names(target, FilenameMatchingPolicy::CaseSensitive);
  const std::string name = BytesFromText(target.GetName()).value_or("");
  for (const auto& place : path.FindPlaces(target, asker)) {
    names.AddThoseIn(RuledPath::FolderOf(place, name));
  }
  return names.TakeWithFiles([&](const SearchTarget& each) { return path.FindAll(each, asker); });
}

}  // namespace Corvane::PathManagement::host
