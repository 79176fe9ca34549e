#ifndef SEARCHPATH_TESTS_RULES_OTHER_PROGRAMS_H
#define SEARCHPATH_TESTS_RULES_OTHER_PROGRAMS_H

#include "support/temporary_tree.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <grp.h>
#include <sstream>

// The programs whose rules ours are compared with, run as a user whom modes can keep out.
namespace Corvane::PathManagement::test {

/// Runs `body` and its expectations in a child that has no more rights than anybody.
template <class Body>
void RunUnprivileged(const Body& body) {
  std::fflush(nullptr);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    constexpr unsigned kNobody = 65534;
    const bool isReady = geteuid() != 0 || (setgroups(0, nullptr) == 0 && setgid(kNobody) == 0 &&
                                            setuid(kNobody) == 0);
    if (!isReady) _exit(2);
    [&]() noexcept { body(); }();  // nothing of the child may go on to other tests
    std::fflush(nullptr);
    _exit(testing::Test::HasFailure() ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0) << "the lines above say what failed";
}

inline std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

struct Output {
  std::string out;
  std::string error;
};

/// Runs a command of the shell with `input`, in the working folder.
inline Output Run(const TemporaryTree& scratch, const std::string& command,
                  const std::string& input = "") {
  scratch.File(".input", input);
  const std::string files =
      " <" + scratch.Path(".input") + " >" + scratch.Path(".out") + " 2>" + scratch.Path(".error");
  [[maybe_unused]] const int status = std::system(("{ " + command + "\n}" + files).c_str());
  return {scratch.Content(".out"), scratch.Content(".error")};
}

inline bool IsInstalled(const std::string& program) {
  const bool isThere = std::system(("command -v " + program + " >/dev/null").c_str()) == 0;
  if (!isThere) std::printf("not compared with %s, which is not installed\n", program.c_str());
  return isThere;
}

inline std::string Quoted(const std::string& word) { return "'" + word + "'"; }

/// A path as all programs could write it: absolute, without "." and doubled separators, with "..".
inline std::string Plainly(const std::string& path) {
  if (path.empty()) return path;
  std::string plain;
  for (const auto& part : std::filesystem::absolute(path)) {
    if (part != "." && part != "/" && !part.empty()) plain += "/" + part.string();
  }
  return plain;
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_RULES_OTHER_PROGRAMS_H
