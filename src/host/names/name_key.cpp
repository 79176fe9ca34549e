#include "host/names/name_key.h"

#include "host/names/folded_name.h"
#include "searchpath/model/byte_text.h"

#include <string>

namespace Corvane::PathManagement::host {

void NameKey::SetFolded(const NameKey& name) {
  constexpr Word each = 0x0101010101010101U;
  constexpr Word high = 0x80 * each;
  size = name.size;
  bytes.resize(size + kWord, boost::container::default_init);
  Word seen = 0;
  for (std::size_t at = 0; at <= size; at += kWord) {  // also the word that holds the NUL
    const Word word = name.Load(at);
    seen |= word;
    // The highest bit of each byte says: in fromA, that the character is 'A' or later; in afterZ,
    // that it is later than 'Z'.
    const Word fromA = (word & ~high) + (0x80 - 'A') * each;
    const Word afterZ = (word & ~high) + (0x7F - 'Z') * each;
    Store(at, word | (fromA & ~afterZ & high) >> 2U);  // sets 0x20 in each capital
  }
  if ((seen & high) == 0) return;  // all ASCII
  std::string folded;
  Set(FoldName(name.View(), folded));
}

bool NameKey::IsFoldOf(const char* name) const {
  const std::string_view key = View();
  for (std::size_t at = 0; at < key.size(); ++at) {
    const char byte = name[at];
    if (static_cast<unsigned char>(byte) >= 0x80) {  // may fold to another length
      NameKey whole;
      NameKey folded;
      whole.Set(std::string_view(name));
      folded.SetFolded(whole);
      return folded.View() == key;
    }
    // Differs also at the NUL of a shorter name, since a key holds no NUL.
    const bool isCapital = byte >= 'A' && byte <= 'Z';
    if ((isCapital ? static_cast<char>(byte | 0x20) : byte) != key[at]) return false;
  }
  return name[key.size()] == '\0';
}

bool NameKey::SetJoined(std::u16string_view name, std::u16string_view extension) {
  // Joined before they become bytes: a surrogate pair may be split between the two.
  const auto joined = BytesFromText(std::u16string(name).append(extension));
  if (!joined || joined->find('\0') != std::string::npos) return false;
  Set(*joined);
  return true;
}

}  // namespace Corvane::PathManagement::host
