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

// Clang has no macro for it.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define SEARCHPATH_IS_SANITIZED 1
#elif defined(__has_feature)
#define SEARCHPATH_IS_SANITIZED __has_feature(address_sanitizer)
#else
#define SEARCHPATH_IS_SANITIZED 0
#endif

/// How many random cases to try. Under a sanitizer, where each takes many times as long, a tenth:
/// it looks at how the work is done, and plain runs at what comes of it.
constexpr std::size_t RandomCases(std::size_t inPlainRuns) {
  return SEARCHPATH_IS_SANITIZED ? inPlainRuns / 10 : inPlainRuns;
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_SETTING_H
