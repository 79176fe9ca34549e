#ifndef SEARCHPATH_MODEL_ABSOLUTE_IRI_H
#define SEARCHPATH_MODEL_ABSOLUTE_IRI_H

#include "searchpath/export.h"
#include "searchpath/model/storage_exceptions.h"
#include "searchpath/model/ustring.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace foundation::storage::vfs {

namespace detail {
struct IRIRepresentation;
}  // namespace detail

/// The absolute identifier of a folder or file, in one spelling.
///
/// The spelling is made at construction. In a "file" IRI the bytes of the path are decoded and
/// written again, as "%XX" in upper case those that are ASCII blanks or controls, no UTF-8, or one of
///
///     " # % < > ? [ ] \ ^ ` { | }
///
/// and as they are all others ("%2Bpkg" is "+pkg"); doubled and trailing separators and "."
/// components are folded; ".." stays, since removing it changes the meaning behind a link. The
/// authority is dropped when it is "localhost". IRIs of other schemes keep their text, with
/// characters escaped that no IRI may hold. Schemes are case-sensitive: "FILE" is another scheme than
/// "file".
///
/// Two IRIs are equal when their texts are, code unit by code unit.
///
/// A value of one pointer: copies share the text, where its parts begin, and its hash. A moved-from
/// object may only be assigned or destroyed.
///
/// Threads: immutable; copies may be used and destroyed on any thread.
/// Errors: each operation that raises says so and raises `InvalidIRIException`.
/// Cost: construction scans the text once; a copy is one reference count; comparison for equality
/// looks at the hashes first.
class SEARCHPATH_EXPORT AbsoluteIRI {
 public:
  /// Parses `text`, which needs a scheme of two or more characters. Literal blanks, braces, bars
  /// and the like are accepted and escaped.
  ///
  /// Errors: no scheme, an embedded NUL, a lone surrogate outside U+DC80..U+DCFF (see
  /// `TextFromBytes`); in a "file" IRI also a stray "%", "%00", "%2F", a path that does not begin
  /// with "/", an authority other than none or "localhost"; in other schemes text that does not
  /// follow the IRI syntax, or is over 64 KiB.
  explicit AbsoluteIRI(const ustring& text);

  AbsoluteIRI(const AbsoluteIRI& other) noexcept;
  /// Leaves `other` to be assigned or destroyed only.
  AbsoluteIRI(AbsoluteIRI&& other) noexcept : shared(std::exchange(other.shared, nullptr)) {}
  AbsoluteIRI& operator=(const AbsoluteIRI& other) noexcept;
  /// What is assigned from gets the old value.
  AbsoluteIRI& operator=(AbsoluteIRI&& other) noexcept {
    std::swap(shared, other.shared);
    return *this;
  }
  ~AbsoluteIRI();

  /// The last component of the path, decoded; "" for a root.
  [[nodiscard]] ustring getName() const;

  /// The IRI above this one.
  /// Errors: this is a root.
  [[nodiscard]] AbsoluteIRI getParent() const;
  /// Whether this is no root.
  [[nodiscard]] bool hasParent() const noexcept;

  /// The path, decoded, with a leading "/". An escape is never decoded into a separator or NUL.
  [[nodiscard]] ustring getPath() const;

  /// The scheme as it was written.
  [[nodiscard]] ustring getScheme() const;

  /// This IRI without ".." components: each takes the component before it away, as text, without
  /// asking the disk.
  /// Errors: ".." above the root.
  [[nodiscard]] AbsoluteIRI getResolvedIRI() const;

  /// The escaped text of the whole IRI.
  [[nodiscard]] ustring toString() const;

  /// As `toString`, without a copy. The view lives as long as some copy of this IRI.
  [[nodiscard]] std::u16string_view toStringView() const noexcept;

  /// The decoded path below `above`, components joined by "/".
  /// Errors: `above` is not above this.
  [[nodiscard]] ustring makePathRelativeTo(const AbsoluteIRI& above) const;

  /// 64 bits, equal for equal IRIs. Held, not computed. Not stable between versions of the library.
  [[nodiscard]] std::uint64_t hashValue() const noexcept;

  /// Whether both are spelled alike. Two spellings of one folder differ, see `CanonicalAbsoluteIRI`.
  [[nodiscard]] friend bool operator==(const AbsoluteIRI& left, const AbsoluteIRI& right) noexcept {
    return left.shared == right.shared || left.hasSameText(right);
  }

  /// The order of the texts, code unit by code unit.
  [[nodiscard]] friend bool operator<(const AbsoluteIRI& left, const AbsoluteIRI& right) noexcept {
    return left.toStringView() < right.toStringView();
  }

 private:
  explicit AbsoluteIRI(const detail::IRIRepresentation* owned) noexcept : shared(owned) {}
  [[nodiscard]] bool hasSameText(const AbsoluteIRI& other) const noexcept;
  [[nodiscard]] std::u16string_view pathText() const noexcept;

  const detail::IRIRepresentation* shared;  // null only after a move
};

/// The `hashValue` of an IRI, for hashed containers.
[[nodiscard]] SEARCHPATH_EXPORT std::size_t hash_value(const AbsoluteIRI& iri) noexcept;

/// The canonical form of an IRI, which is the identity of a folder: an IRI and one further text.
///
/// Two canonical IRIs are equal when both parts are. Where only the folder matters, compare them as
/// `AbsoluteIRI`: convert first, since these operators would be picked silently.
class SEARCHPATH_EXPORT CanonicalAbsoluteIRI : public AbsoluteIRI {
 public:
  /// `suffix` is the further text, which this library leaves empty.
  CanonicalAbsoluteIRI(const AbsoluteIRI& iri, const ustring& suffix);
  CanonicalAbsoluteIRI(const CanonicalAbsoluteIRI&) = default;
  CanonicalAbsoluteIRI(CanonicalAbsoluteIRI&&) noexcept = default;
  /// By value, for copies and moves alike, so that what is assigned to itself keeps its value.
  CanonicalAbsoluteIRI& operator=(CanonicalAbsoluteIRI other) noexcept {
    text.swap(other.text);
    AbsoluteIRI::operator=(std::move(other));
    return *this;
  }
  ~CanonicalAbsoluteIRI() = default;

  /// Whether both parts are equal.
  [[nodiscard]] friend bool operator==(const CanonicalAbsoluteIRI& left,
                                       const CanonicalAbsoluteIRI& right) noexcept {
    return static_cast<const AbsoluteIRI&>(left) == static_cast<const AbsoluteIRI&>(right) &&
           left.text == right.text;
  }

  /// By IRI, then by the further text.
  [[nodiscard]] friend bool operator<(const CanonicalAbsoluteIRI& left,
                                      const CanonicalAbsoluteIRI& right) noexcept {
    const AbsoluteIRI& leftIRI = left;
    const AbsoluteIRI& rightIRI = right;
    return leftIRI < rightIRI || (leftIRI == rightIRI && left.text < right.text);
  }

 private:
  ustring text;  // empty wherever this library makes a canonical IRI
};

}  // namespace foundation::storage::vfs

namespace Corvane::PathManagement {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::CanonicalAbsoluteIRI;

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_ABSOLUTE_IRI_H
