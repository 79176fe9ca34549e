#include "searchpath/platform/notification.h"

#include "model/quoted_text.h"
#include "searchpath/model/byte_text.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace foundation::core::except {

namespace {

using Corvane::PathManagement::detail::QuotedText;

struct Wording {
  std::u16string_view catalogue;
  std::u16string_view key;
  std::u16string_view beforeFolder;
  std::u16string_view afterFolder;
};

// Every message that this library writes, each about one folder.
constexpr Wording kWordings[] = {
    {u"ZENTRA:mpath", u"invalidLocation", u"no folder here can be called ",
     u"; write /folder or file:///folder"},
    {u"ZENTRA:mpath", u"directoryPermissionDenied", u"permission denied for the folder ",
     u"; it and those above it have to be readable"},
    {u"ZENTRA:mpath", u"nameNonexistentOrNotADirectory", u"no folder ",
     u"; check the spelling and where links lead"},
    {u"ZENTRA:mpath", u"directoryNameTooLong", u"the folder name ",
     u" is too long; use a shorter one or a link"},
    {u"ZENTRA:rmpath", u"DirNotFound", u"the folder ",
     u" is not on the path; name it as the path lists it"},
};

std::string Bytes(const ustring& text) { return QuotedText(text); }
std::string Bytes(std::int64_t number) { return std::to_string(number); }
std::string Bytes(const storage::vfs::AbsoluteIRI& iri) { return QuotedText(iri.toStringView()); }

ustring Shown(const MessageArgument& argument) {
  return Corvane::PathManagement::TextFromBytes(
      std::visit([](const auto& value) { return Bytes(value); }, argument));
}

}  // namespace

ustring GetText(const MessageRecord& message) {
  const auto* const wording = std::ranges::find_if(kWordings, [&message](const Wording& each) {
    return each.catalogue == message.catalogue && each.key == message.key;
  });
  ustring text;
  if (wording != std::end(kWordings) && message.arguments.size() == 1) {
    text.append(wording->beforeFolder).append(Shown(message.arguments[0]));
    return text.append(wording->afterFolder);
  }
  text.append(message.catalogue).append(u":").append(message.key);
  for (const MessageArgument& argument : message.arguments) {
    text.append(u" ").append(Shown(argument));
  }
  return text;
}

}  // namespace foundation::core::except
