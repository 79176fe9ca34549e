#include <searchpath/host/environment.h>

// The guards of headers that are slow to compile. Dependency lists of compilers do not do: Clang's
// name headers that were only asked about with __has_include.
#if defined(_GLIBCXX_IOSTREAM) || defined(_GLIBCXX_FSTREAM) || defined(_GLIBCXX_ALGORITHM) || \
    defined(_GLIBCXX_SET) || defined(_GLIBCXX_VARIANT) ||                                     \
    defined(BOOST_RANGE_ANY_RANGE_HPP_INCLUDED)
#error "host/environment.h includes a header that it spared its users"
#endif

// What a program that asks an environment writes, with no other header.
bool Ask(const Corvane::PathManagement::ustring& name) {
  using namespace Corvane::PathManagement::host;
  const Environment environment(EnvironmentOptions{.folders = {u"lib"}});
  const auto found = environment.Find({.name = name});
  const auto all = environment.FindAll({.name = name, .extensions = {u".zt"}});
  const Explanation explanation = environment.Explain({.name = name});
  const ShadowReport shadows = environment.FindShadows();
  const auto findings = environment.Examine({.slow = std::chrono::milliseconds(20)});
  return found && GetNativePath(*found) == GetNativePath(all.front()) &&
         explanation.asked.front().outcome == FolderOutcome::HoldsIt && shadows.shadows.empty() &&
         findings.empty() && !environment.GetMainFolders().front()->GetItems()->empty();
}
