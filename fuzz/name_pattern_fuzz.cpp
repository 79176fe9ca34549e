#include "fuzz_input.h"
#include "searchpath/host/name_pattern.h"
#include "searchpath/model/byte_text.h"

#include <algorithm>
#include <string_view>

using namespace Corvane::PathManagement;
using fuzz::Require;

namespace {

bool DoesMatch(std::string_view pattern, std::string_view name) {
  return host::NamePattern(TextFromBytes(pattern), FilenameMatchingPolicy::CaseSensitive)
      .Matches(name);
}

/// A pattern that means `name` alone. What is not ASCII means itself.
std::string PatternOf(std::string_view name) {
  std::string pattern;
  for (const char byte : name) {
    if (static_cast<unsigned char>(byte) < 0x80) pattern.push_back('\\');
    pattern.push_back(byte);
  }
  return pattern;
}

}  // namespace

// The first line is a pattern, the rest a name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::size_t lineEnd = std::min(input.find('\n'), size);
  const std::string pattern(input.substr(0, lineEnd));
  const std::string name(input.substr(std::min(lineEnd + 1, size)));

  const bool matches = DoesMatch(pattern, name);
  Require(!matches || DoesMatch("*" + pattern, name), "a star matches nothing, too");
  Require(!matches || DoesMatch("*" + pattern, "x" + name), "a star matches any beginning");
  Require(DoesMatch(PatternOf(name), name), "a name matches its pattern");
  Require(!DoesMatch(PatternOf(name), name + "x"), "the whole name has to match");
  Require(DoesMatch("*", name), "a star matches all names");
  const bool isPlain = pattern.find_first_of("*?[\\") == pattern.npos;
  Require(!isPlain || matches == (pattern == name), "other characters match themselves");
  return 0;
}
