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
/// The constructor brings every text into this spelling. The path of a "file" IRI is decoded and
/// escaped anew: ASCII blanks and controls, bytes that are not UTF-8, and the characters
///
///     " # % < > ? [ ] \ ^ ` { | }
///
/// become "%XX" in upper case. All other characters are written as they are ("%2Bpkg" becomes
/// "+pkg"). Repeated separators become one; trailing separators and "." components are removed;
/// ".." stays, since after a link it does not lead back. The authority "localhost" is dropped. An
/// IRI of another scheme keeps its text, but characters that no IRI may hold are escaped. Schemes
/// are case-sensitive: "FILE" is not the scheme "file".
///
/// Two IRIs are equal when their texts are, code unit by code unit.
///
/// An object is one pointer: its copies share the text, the positions of its parts, and its hash. A
/// moved-from object may only be assigned or destroyed.
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
  /// Leaves the old value of this object in `other`.
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
  /// Whether this is not a root.
  [[nodiscard]] bool hasParent() const noexcept;

  /// The path, decoded, with a leading "/". An escape is never decoded into a separator or NUL.
  [[nodiscard]] ustring getPath() const;

  /// The scheme as it was written.
  [[nodiscard]] ustring getScheme() const;

  /// This IRI without ".." components: each is removed together with the component before it, in
  /// the text alone, without asking the disk.
  /// Errors: ".." above the root.
  [[nodiscard]] AbsoluteIRI getResolvedIRI() const;

  /// The escaped text of the whole IRI.
  [[nodiscard]] ustring toString() const;

  /// As `toString`, without a copy. The view lives as long as some copy of this IRI.
  [[nodiscard]] std::u16string_view toStringView() const noexcept;

  /// The decoded path from `above` down to this IRI: "b/c" for "file:///a/b/c" below "file:///a".
  /// Errors: `above` is not above this IRI.
  [[nodiscard]] ustring makePathRelativeTo(const AbsoluteIRI& above) const;

  /// 64 bits, equal for equal IRIs; another version of the library may give other hashes.
  /// Cost: none, it is computed at construction.
  [[nodiscard]] std::uint64_t hashValue() const noexcept;

  /// Whether both texts are equal. Two IRIs of one folder may differ, see `CanonicalAbsoluteIRI`.
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

/// The canonical form of an IRI, which identifies a folder: an IRI and a further text, which this
/// library leaves empty.
///
/// Two canonical IRIs are equal when both parts are. Where only the folder matters, convert both to
/// `AbsoluteIRI` before you compare them: otherwise the further texts are compared as well.
class SEARCHPATH_EXPORT CanonicalAbsoluteIRI : public AbsoluteIRI {
 public:
  /// Joins both parts, as they are.
  CanonicalAbsoluteIRI(const AbsoluteIRI& iri, const ustring& furtherText);
  CanonicalAbsoluteIRI(const CanonicalAbsoluteIRI&) = default;
  CanonicalAbsoluteIRI(CanonicalAbsoluteIRI&&) noexcept = default;
  /// For copies and moves: takes `other` by value, so that self-assignment is safe.
  CanonicalAbsoluteIRI& operator=(CanonicalAbsoluteIRI other) noexcept {
    further.swap(other.further);
    AbsoluteIRI::operator=(std::move(other));
    return *this;
  }
  ~CanonicalAbsoluteIRI() = default;

  /// Whether both parts are equal.
  [[nodiscard]] friend bool operator==(const CanonicalAbsoluteIRI& left,
                                       const CanonicalAbsoluteIRI& right) noexcept {
    return static_cast<const AbsoluteIRI&>(left) == static_cast<const AbsoluteIRI&>(right) &&
           left.further == right.further;
  }

  /// By IRI, then by the further text.
  [[nodiscard]] friend bool operator<(const CanonicalAbsoluteIRI& left,
                                      const CanonicalAbsoluteIRI& right) noexcept {
    const AbsoluteIRI& leftIRI = left;
    const AbsoluteIRI& rightIRI = right;
    return leftIRI < rightIRI || (leftIRI == rightIRI && left.further < right.further);
  }

 private:
  ustring further;  // empty wherever this library makes a canonical IRI
};

}  // namespace foundation::storage::vfs

namespace Corvane::PathManagement {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::CanonicalAbsoluteIRI;

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_ABSOLUTE_IRI_H
