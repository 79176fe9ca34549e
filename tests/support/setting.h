#ifndef SEARCHPATH_TESTS_SUPPORT_SETTING_H
#define SEARCHPATH_TESTS_SUPPORT_SETTING_H

#include <cstddef>
#include <cstdlib>
#include <string>

namespace Corvane::PathManagement::test {

/// How much of a test to run: the number in the environment variable `name`, for a long run by hand,
/// else what every run does.
inline std::size_t Setting(const char* name, std::size_t everyRun) {
  const char* const text = std::getenv(name);
  return text == nullptr ? everyRun : std::stoul(text);
}

/// How many random cases to try. Under a sanitizer, where each takes many times as long, a tenth:
/// it looks at how the work is done, and plain runs at what comes of it.
constexpr std::size_t RandomCases(std::size_t inPlainRuns) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  return inPlainRuns / 10;
#else
  return inPlainRuns;
#endif
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_SETTING_H
