#include "host/questions/similar_files.h"

#include "host/questions/entry_names.h"
#include "searchpath/host/filename_comparison.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/model/search_scope.h"
#include "searchpath/platform/filesystem.h"
#include "searchpath/utilities/partial_pathname.h"
#include "text/separators.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <list>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using PathManagement::detail::SearchTarget;

std::u16string_view WithoutExtension(const ustring& name) {
  const std::size_t length = fl::filesystem::detail::extract_extension(name).size();
  return std::u16string_view(name).substr(0, name.size() - length);
}

/// Whether one letter inserted, deleted or replaced, or two neighbours swapped, turn `left` into
/// `right`.
bool IsOneEditAway(std::u16string_view left, std::u16string_view right) {
  if (left.size() > right.size()) std::swap(left, right);
  if (right.size() - left.size() > 1) return false;
  const auto [leftAt, rightAt] = std::mismatch(left.begin(), left.end(), right.begin());
  const std::u16string_view leftRest(leftAt, left.end());
  const std::u16string_view rightRest(rightAt, right.end());
  if (rightRest.empty()) return false;  // the same name
  if (left.size() < right.size()) return leftRest == rightRest.substr(1);
  if (leftRest.substr(1) == rightRest.substr(1)) return true;
  return leftRest.size() >= 2 && leftRest[0] == rightRest[1] && leftRest[1] == rightRest[0] &&
         leftRest.substr(2) == rightRest.substr(2);
}

/// What is looked for, in a form that is quick to compare with very many names.
class WantedName {
 public:
  explicit WantedName(ustring wanted) : name(std::move(wanted)), stem(WithoutExtension(name)) {}
  WantedName(const WantedName&) = delete;
  WantedName& operator=(const WantedName&) = delete;

  [[nodiscard]] std::optional<Similarity> Compare(std::string_view bytes) const {
    if (!MayResemble(bytes)) return std::nullopt;
    const ustring candidate = TextFromBytes(bytes);
    if (AreSameFilename(candidate, name, FilenameMatchingPolicy::IgnoreCase)) {
      return Similarity::OtherCase;
    }
    const std::u16string_view candidateStem = WithoutExtension(candidate);
    if (candidateStem == stem || candidateStem == name) return Similarity::OtherExtension;
    // Too many names are one letter off a name of one or two characters.
    if (name.size() > 2 && IsOneEditAway(candidate, name)) return Similarity::OneLetterOff;
    return std::nullopt;
  }

  [[nodiscard]] bool Is(std::string_view bytes) const { return TextFromBytes(bytes) == name; }

 private:
  /// A quick look at the first two characters, which rules out most names. In a name that differs
  /// in case, or by one edit, at least one of the two stands in its own place or in the other's.
  [[nodiscard]] bool MayResemble(std::string_view bytes) const {
    // Folds case; that it takes some other characters for equal does no harm.
    const auto folded = [](auto unit) { return static_cast<char16_t>(unit) | 0x20U; };
    if (bytes.size() < 2 || name.size() < 2) return true;
    const auto first = static_cast<unsigned char>(bytes[0]);
    const auto second = static_cast<unsigned char>(bytes[1]);
    if (first >= 0x80 || second >= 0x80 || name[0] >= 0x80 || name[1] >= 0x80) return true;
    return folded(first) == folded(name[0]) || folded(second) == folded(name[1]) ||
           folded(first) == folded(name[1]) || folded(second) == folded(name[0]);
  }

  ustring name;
  std::u16string_view stem;  // of name
};

/// The names that a target looks for, one for each extension.
class WantedNames {
 public:
  explicit WantedNames(const SearchTarget& target) {
    if (target.GetExtensions().empty()) names.emplace_back(target.GetName());
    for (const ustring& extension : target.GetExtensions()) {
      names.emplace_back(target.GetName() + extension);
    }
  }

  /// The closest similarity to any of the names. Empty if there is none, and if `bytes` is one of
  /// the names itself: a file that has the wanted name is not a similar one.
  [[nodiscard]] std::optional<Similarity> Compare(std::string_view bytes) const {
    std::optional<Similarity> closest;
    for (const WantedName& name : names) {
      const auto similarity = name.Compare(bytes);
      if (similarity && (!closest || *similarity < *closest)) closest = similarity;
    }
    const auto isSame = [&](const WantedName& name) { return name.Is(bytes); };
    return closest && std::ranges::none_of(names, isSame) ? closest : std::nullopt;
  }

 private:
  std::list<WantedName> names;  // a list, since they cannot be moved
};

/// The first files of each similarity, each name once.
class SimilarFiles {
 public:
  explicit SimilarFiles(std::size_t limit) : most(limit) {}

  /// Whether a file is wanted: the first of its name, and among the first `most` of its similarity.
  /// Remembers the name of a wanted file.
  [[nodiscard]] bool Wants(std::string_view name, Similarity similarity) {
    return OfSimilarity(similarity).size() < most && names.emplace(name).second;
  }

  void Add(SimilarFile file) { OfSimilarity(file.similarity).push_back(std::move(file)); }

  [[nodiscard]] std::vector<SimilarFile> TakeMostSimilar() {
    std::vector<SimilarFile> all;
    for (auto& files : bySimilarity) {
      for (auto& file : files) {
        if (all.size() < most) all.push_back(std::move(file));
      }
    }
    return all;
  }

 private:
  [[nodiscard]] std::vector<SimilarFile>& OfSimilarity(Similarity similarity) {
    return bySimilarity.at(static_cast<std::size_t>(similarity));
  }

  std::size_t most;  // of each similarity
  std::array<std::vector<SimilarFile>, 3> bySimilarity;
  std::set<std::string> names;
};

}  // namespace

const char* GetText(Similarity similarity) noexcept {
  // In the order of the enumerators.
  static constexpr std::array kTexts = {"another case", "another extension", "one letter off"};
  return kTexts[static_cast<std::size_t>(similarity)];
}

std::vector<SimilarFile> FindSimilarFiles(const PathEntries& mainEntries,
                                          const SearchTarget& target, std::size_t most) {
  if (PathManagement::detail::HasSeparator(target.GetName())) return {};
  const WantedNames wanted(target);
  SimilarFiles similar(most);
  for (const auto& entry : mainEntries) {
    const EntryNames files(entry);
    const NameBlock& names = files.Get();
    std::vector<std::tuple<std::string_view, std::size_t, Similarity>> resembling;
    for (std::size_t file = 0; file < names.size(); ++file) {
      const auto similarity = wanted.Compare(names[file]);
      if (similarity) resembling.emplace_back(names[file], file, *similarity);
    }
    std::ranges::sort(resembling);  // by name, not as on disk
    for (const auto& [name, file, similarity] : resembling) {
      if (!similar.Wants(name, similarity)) continue;
      similar.Add({files.At(file), similarity});
    }
  }
  return similar.TakeMostSimilar();
}

PathEntries FindFoldersLike(const IPath& path, const ustring& name, std::size_t most) {
  const auto parts = SplitPartialPathname(name);
  if (parts.empty()) return {};
  const ustring& wanted = parts.back();
  PathEntries sameButForCase;
  PathEntries oneLetterOff;
  path.ForEachEntry(kAllKindsAndResourcesScope, [&](const auto& entry) {
    const ustring whole = entry->GetCanonicalAbsoluteIRI().getName();
    const bool hasPrefix = whole.starts_with(u'+') || whole.starts_with(u'@');
    for (const ustring& candidate : {whole, hasPrefix ? whole.substr(1) : whole}) {
      if (AreSameFilename(candidate, wanted, FilenameMatchingPolicy::IgnoreCase)) {
        sameButForCase.push_back(entry);
        return false;
      }
      if (wanted.size() > 2 && IsOneEditAway(candidate, wanted)) {
        oneLetterOff.push_back(entry);
        return false;
      }
    }
    return false;
  });
  sameButForCase.insert(sameButForCase.end(), oneLetterOff.begin(), oneLetterOff.end());
  sameButForCase.resize(std::min(most, sameButForCase.size()));
  return sameButForCase;
}

}  // namespace Corvane::PathManagement::host
