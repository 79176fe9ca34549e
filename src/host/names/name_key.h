#ifndef SEARCHPATH_SRC_HOST_NAMES_NAME_KEY_H
#define SEARCHPATH_SRC_HOST_NAMES_NAME_KEY_H

#include <boost/container/small_vector.hpp>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Corvane::PathManagement::host {

/// The bytes of a file name and a NUL, ready to be looked up: they stand in whole words, the last of
/// which is filled up with zeros.
///
/// A name is narrowed from text, hashed and folded a word at a time. When it was written byte by
/// byte and read back in words, the processor waited for its own stores: a fifth of a warm look-up.
class NameKey {
 public:
  /// Takes a name and an extension, joined. Returns whether they can be a file name at all; when
  /// they cannot, the key must not be used.
  [[nodiscard]] bool Set(std::u16string_view name, std::u16string_view extension) {
    size = name.size() + extension.size();
    bytes.resize(size + 2 * kWord, boost::container::default_init);
    Store(size / kWord * kWord, 0);
    const bool isAscii = Append(0, name) && (extension.empty() || Append(name.size(), extension));
    return isAscii || SetJoined(name, extension);
  }
  /// Takes the bytes of a file name.
  void Set(std::string_view name) {
    size = name.size();
    bytes.resize(size + kWord, boost::container::default_init);
    Store(size / kWord * kWord, 0);
    std::memcpy(bytes.data(), name.data(), size);
  }
  /// Takes the folded form of `name`: the same for all names that differ in case alone.
  void SetFolded(const NameKey& name);
  /// Whether this is the folded form of `name`, which ends with a NUL. Precondition: this was set
  /// by `SetFolded`. Cost: most names differ in the first character.
  [[nodiscard]] bool IsFoldOf(const char* name) const;

  /// Whether this is the name of a `NameBlock` that begins at `name`.
  [[nodiscard]] bool Is(const char* name) const noexcept {
    std::size_t at = 0;
    for (; at + kWord <= size; at += kWord) {
      if (LoadFrom(name + at) != Load(at)) return false;
    }
    // What stands behind the NUL in the same word is of another name.
    const Word differences = LoadFrom(name + at) ^ Load(at);
    return differences << 8 * (kWord - 1 - (size - at)) == 0;
  }

  /// What was set; holds no NUL.
  [[nodiscard]] std::string_view View() const noexcept { return {bytes.data(), size}; }

  [[nodiscard]] std::uint64_t Hash() const noexcept {
    // Multiples of the golden ratio's fraction spread over the upper bits, which are then let into
    // the lower ones, so that every word changes all bits of the next product.
    constexpr Word factor = 0x9E3779B97F4A7C15U;
    Word hash = 0;
    for (std::size_t at = 0; at < size; at += kWord) {
      hash = (hash ^ Load(at)) * factor;
      hash ^= hash >> 32U;
    }
    return hash * factor;
  }

 private:
  using Word = std::uint64_t;
  static constexpr std::size_t kWord = sizeof(Word);

  /// The first byte in the lowest bits, on any machine.
  [[nodiscard]] static Word LoadFrom(const char* from) noexcept {
    Word word = 0;
    std::memcpy(&word, from, kWord);
    return LowestFirst(word);
  }
  [[nodiscard]] Word Load(std::size_t at) const noexcept { return LoadFrom(bytes.data() + at); }
  void Store(std::size_t at, Word word) noexcept {
    word = LowestFirst(word);
    std::memcpy(bytes.data() + at, &word, kWord);
  }
  static constexpr Word LowestFirst(Word word) noexcept {
    return std::endian::native == std::endian::big ? __builtin_bswap64(word) : word;
  }

  /// The first unit in the lowest bits, on any machine.
  static Word FourUnits(const char16_t* units) noexcept {
    if constexpr (std::endian::native == std::endian::little) {  // compilers do not join the loads
      Word word = 0;
      std::memcpy(&word, units, kWord);
      return word;
    }
    return Word{units[0]} | Word{units[1]} << 16U | Word{units[2]} << 32U | Word{units[3]} << 48U;
  }
  /// Four characters in the lower half of a word. A NUL or a character beyond ASCII leaves one of
  /// the bits in `seen` that `Append` tests.
  static Word Narrow(const char16_t* units, Word& seen) noexcept {
    const Word wide = FourUnits(units);
    seen |= wide | (wide - 0x0001000100010001U);
    const Word pairs = (wide | wide >> 8U) & 0x0000FFFF0000FFFFU;
    return (pairs | pairs >> 16U) & 0xFFFFFFFFU;
  }
  static Word NarrowEight(const char16_t* units, Word& seen) noexcept {
    const Word low = Narrow(units, seen);
    return low | Narrow(units + 4, seen) << 32U;
  }
  /// The last `count` characters of `text`, 1 to 7.
  static Word NarrowLast(std::u16string_view text, std::size_t count, Word& seen) noexcept {
    // Reading a whole word that ends there needs no loop, whose length the processor cannot
    // foresee.
    if (text.size() >= kWord) {
      return NarrowEight(text.data() + text.size() - kWord, seen) >> 8U * (kWord - count);
    }
    Word word = 0;
    for (std::size_t at = count; at-- > 0;) {
      seen |= text[at] | (text[at] - Word{1});
      word = word << 8U | (text[at] & 0xFFU);
    }
    return word;
  }

  /// Puts `text` behind the first `before` bytes. Returns whether it is ASCII without a NUL; if
  /// not, the key must not be used.
  [[nodiscard]] bool Append(std::size_t before, std::u16string_view text) noexcept {
    const std::size_t shift = 8 * (before % kWord);
    std::size_t to = before - before % kWord;
    Word begun = shift == 0 ? 0 : Load(to);
    const auto append = [&](Word word) {
      Store(to, begun | word << shift);
      begun = shift == 0 ? 0 : word >> (8 * kWord - shift);
      to += kWord;
    };
    Word seen = 0;
    std::size_t at = 0;
    for (; at + kWord <= text.size(); at += kWord) append(NarrowEight(text.data() + at, seen));
    if (at < text.size()) append(NarrowLast(text, text.size() - at, seen));
    if (shift != 0) Store(to, begun);
    return (seen & 0xFF80FF80FF80FF80U) == 0;
  }
  [[nodiscard]] bool SetJoined(std::u16string_view name, std::u16string_view extension);

  boost::container::small_vector<char, 256> bytes;  // whole words
  std::size_t size = 0;                             // of the name
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAMES_NAME_KEY_H
