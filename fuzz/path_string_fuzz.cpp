#include "fuzz_input.h"
#include "searchpath/utilities/iri_conversion.h"
#include "searchpath/utilities/partial_pathname.h"
#include "searchpath/utilities/path_strings.h"
#include "support/partial_pathname_model.h"

#include <algorithm>

using namespace Corvane::PathManagement;
using fuzz::Require;
using test::Form;

namespace {

bool HaveSameLength(const ustring& left, const ustring& right) {
  return left.size() == right.size();
}

void CheckFolder(const ustring& folder) {
  const ustring tail = GetPartialPathIncludingSpecialFolders(folder);
  const auto iri = fuzz::Try([&] { return GetIRIFromString(folder); });
  Require(iri ? iri->getPath().find(tail) != ustring::npos : tail.empty(), "the tail is its end");
}

void CheckMatching(const std::vector<ustring>& partial, const ustring& folder) {
  for (const test::NameEqual& equal : {test::NameEqual(std::equal_to<>()), {HaveSameLength}}) {
    Require(DoesPartialPathnameMatchPathString(partial, folder, equal) ==
                test::NaiveMatch(partial, folder, equal, Form::Loose),
            "the loose form");
    Require(DoesPartialPathnameStrictlyMatchPathString(partial, folder, equal) ==
                test::NaiveMatch(partial, folder, equal, Form::Strict),
            "the strict form");
  }
}

}  // namespace

// The first line is a partial pathname, the rest a folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ustring text = fuzz::TextFrom(data, size);
  const auto names = test::NaiveSplit(text, u"/");
  Require(SplitZentraPath(text) == test::NaiveSplit(text, u";:"), "a search path is cut as said");
  Require(std::ranges::equal(SplitPartialPathname(text), names), "a pathname is cut as said");
  const std::size_t rootEnd = std::min(text.find_first_not_of(u'/'), text.size());
  Require(RemoveRootPathFromAbsolutePath(text) == text.substr(rootEnd), "only the root goes");
  const std::size_t lineEnd = std::min(text.find(u'\n'), text.size());
  const ustring folder = text.substr(std::min(lineEnd + 1, text.size()));
  CheckFolder(folder);
  CheckMatching(test::NaiveSplit(text.substr(0, lineEnd), u"/"), folder);
  return 0;
}
