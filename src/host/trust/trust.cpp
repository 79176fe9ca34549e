#include "searchpath/host/trust.h"

#include "host/trust/accounts.h"
#include "searchpath/model/byte_text.h"

#include <array>
#include <charconv>
#include <cstddef>

namespace Corvane::PathManagement::host {

const char* GetText(TrustKind kind) noexcept {
  // In the order of the enumerators.
  static constexpr std::array kTexts = {
      "may write in the folder",
      "owns it",
      "may replace what stands in it",
      "may write to the file",
      "may make it",
      "chooses what it is",
      "chooses what the empty part means",
  };
  return kTexts[static_cast<std::size_t>(kind)];
}

const char* GetAdvice(TrustKind kind) noexcept {
  // In the order of the enumerators.
  static constexpr std::array kTexts = {
      "take away their permission to write in it",
      "make a trusted user its owner",
      "take away their permission to write in it, or move the folder elsewhere",
      "take away their permission to write to it",
      "make it, or take the folder off the path",
      "write the folder in full",
      "take the empty part out",
  };
  return kTexts[static_cast<std::size_t>(kind)];
}

ustring GetText(const Intruder& intruder) {
  switch (intruder.kind) {
    case Intruder::Kind::Everyone:
      return u"everyone";
    case Intruder::Kind::WorkingFolder:
      return u"whoever chooses the working folder";
    case Intruder::Kind::User:
      return u"user " + intruder.name;
    case Intruder::Kind::Group:
      break;
  }
  ustring text = u"group " + intruder.name;
  if (intruder.members.empty()) return text;
  const char16_t* separator = u" (";
  for (const ustring& member : intruder.members) {
    text += separator + member;
    separator = u", ";
  }
  return text + u')';
}

std::optional<std::uint32_t> FindUser(const ustring& text) {
  const auto name = BytesFromText(text);
  if (!name) return std::nullopt;
  if (const auto id = FindUserId(*name)) return id;
  std::uint32_t number = 0;
  const char* const end = name->data() + name->size();
  const auto [last, error] = std::from_chars(name->data(), end, number);
  return error == std::errc() && last == end ? std::optional(number) : std::nullopt;
}

}  // namespace Corvane::PathManagement::host
