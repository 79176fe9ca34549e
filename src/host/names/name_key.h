#ifndef SEARCHPATH_SRC_HOST_NAMES_NAME_KEY_H
#define SEARCHPATH_SRC_HOST_NAMES_NAME_KEY_H

#include <boost/container/small_vector.hpp>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Corvane::PathManagement::host {

/// A file name in bytes, followed by a NUL, ready to be looked up. The bytes fill whole words, the
/// last of which is padded with zeros.
///
/// A name is narrowed from text, hashed and folded a word at a time. Writing it byte by byte and
/// reading it back in words made the processor wait for its own stores: a fifth of the time of a
/// look-up in an index.
class NameKey {
 public:
  /// Takes a name. Returns whether it can be a file name at all; when it cannot, the key must not
  /// be used.
  [[nodiscard]] bool Set(std::u16string_view name) {
    Resize(name.size());
    return Fill(name) || SetJoined(name, {});
  }
  /// The same for a name and an extension, joined.
  [[nodiscard]] bool Set(std::u16string_view name, std::u16string_view extension) {
    Resize(name.size() + extension.size());
    return (Fill(name) && Append(name.size(), extension)) || SetJoined(name, extension);
  }
  /// Takes the bytes of a file name. Precondition: they hold no NUL.
  void Set(std::string_view name) {
    Resize(name.size());
    std::memcpy(bytes.data(), name.data(), size);
  }
  /// Takes the folded form of `name`: the same for all names that differ in case alone.
  void SetFolded(const NameKey& name);
  /// Whether this is the folded form of `name`, which ends with a NUL. Precondition: this was set
  /// by `SetFolded`. Cost: most names differ in the first character.
  [[nodiscard]] bool IsFoldOf(const char* name) const;

  /// Whether this is the same name as `name`, which lies in a `NameBlock`.
  [[nodiscard]] bool Is(const char* name) const noexcept {
    std::size_t at = 0;
    for (; at + kWord <= size; at += kWord) {
      if (LoadFrom(name + at) != Load(at)) return false;
    }
    // The shift drops the bytes after the NUL, which belong to another name.
    const Word differences = LoadFrom(name + at) ^ Load(at);
    return differences << 8 * (kWord - 1 - (size - at)) == 0;
  }

  /// What was set; holds no NUL.
  [[nodiscard]] std::string_view View() const noexcept { return {bytes.data(), size}; }

  [[nodiscard]] std::uint64_t Hash() const noexcept {
    // The product with the golden ratio's fraction mixes a word into the upper bits, and the shift
    // brings these into the lower ones. So every word changes all bits of the next product.
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

  /// Makes room for a name, and clears the word in which it ends. The second word of room is for
  /// `Append`, which stores whole words.
  void Resize(std::size_t length) {
    size = length;
    bytes.resize(length + 2 * kWord, boost::container::default_init);
    Store(length / kWord * kWord, 0);
  }

  static constexpr std::size_t kWord = sizeof(Word);
  // As many UTF-16 units as a word has bytes. The compiler keeps these types in vector registers.
  using Units = std::uint16_t __attribute__((vector_size(2 * kWord)));
  using Words = Word __attribute__((vector_size(2 * kWord)));
  using Bytes = std::uint8_t __attribute__((vector_size(kWord)));

  /// The word at `from`, with its first byte in the lowest bits, on any machine.
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

  /// Notes what a text consists of, eight units at a time. A NUL or a character beyond ASCII sets
  /// one of the bits that `IsAscii` tests.
  class Seen {
   public:
    void Add(Units eight) noexcept { bits |= eight | (eight - 1); }
    [[nodiscard]] bool IsAscii() const noexcept {
      const auto halves = std::bit_cast<Words>(bits & 0xFF80);
      return (halves[0] | halves[1]) == 0;
    }

   private:
    Units bits = {};
  };

  static Word NarrowEight(const char16_t* units, Seen& seen) noexcept {
    Units eight = {};
    std::memcpy(&eight, units, sizeof(eight));
    return NarrowEight(eight, seen);
  }
  static Word NarrowEight(Units eight, Seen& seen) noexcept {
    seen.Add(eight);
    return LowestFirst(std::bit_cast<Word>(__builtin_convertvector(eight, Bytes)));
  }
  /// The last `count` units of `text`, 1 to 7, as bytes; the rest of the word is zero.
  static Word NarrowLast(std::u16string_view text, std::size_t count, Seen& seen) noexcept {
    // Reading the last eight units at once needs no loop, whose length the processor could not
    // foresee.
    if (text.size() >= kWord) {
      return NarrowEight(text.data() + text.size() - kWord, seen) >> 8U * (kWord - count);
    }
    // Filled with ASCII, since `seen` would notice a NUL.
    Units filled = {'x', 'x', 'x', 'x', 'x', 'x', 'x', 'x'};
    for (std::size_t at = 0; at < count; ++at) filled[at] = text[at];
    return NarrowEight(filled, seen) & ((Word{1} << 8 * count) - 1);
  }

  /// Puts `text` at the beginning. Returns whether it is ASCII without a NUL; if not, the key must
  /// not be used.
  [[nodiscard]] bool Fill(std::u16string_view text) noexcept {
    Seen seen;
    std::size_t at = 0;
    for (; at + kWord <= text.size(); at += kWord) Store(at, NarrowEight(text.data() + at, seen));
    if (at < text.size()) Store(at, NarrowLast(text, text.size() - at, seen));
    return seen.IsAscii();
  }
  /// The same, but puts `text` after the first `before` bytes.
  [[nodiscard]] bool Append(std::size_t before, std::u16string_view text) noexcept {
    const std::size_t shift = 8 * (before % kWord);
    std::size_t to = before - before % kWord;
    Word begun = shift == 0 ? 0 : Load(to);  // the bytes that the next word begins with
    const auto append = [&](Word word) {
      Store(to, begun | word << shift);
      begun = shift == 0 ? 0 : word >> (8 * kWord - shift);
      to += kWord;
    };
    Seen seen;
    std::size_t at = 0;
    for (; at + kWord <= text.size(); at += kWord) append(NarrowEight(text.data() + at, seen));
    if (at < text.size()) append(NarrowLast(text, text.size() - at, seen));
    if (shift != 0) Store(to, begun);
    return seen.IsAscii();
  }
  /// As `Set`, but slower, and also for text that is not ASCII.
  [[nodiscard]] bool SetJoined(std::u16string_view name, std::u16string_view extension);

  boost::container::small_vector<char, 256> bytes;  // has room for whole words
  std::size_t size = 0;                             // of the name, without the NUL
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAMES_NAME_KEY_H
