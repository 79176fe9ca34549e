#ifndef SEARCHPATH_MODEL_ANY_RANGE_ADAPTER_H
#define SEARCHPATH_MODEL_ANY_RANGE_ADAPTER_H

#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/ustring.h"

#include <boost/range/any_range.hpp>

#include <cstddef>
#include <type_traits>
#include <utility>

namespace Corvane::PathManagement {

namespace detail {

/// What an iterator of the range gives when it is dereferenced.
template <class Range>
using ReferenceOf = decltype(*boost::begin(std::declval<Range&>()));

template <class Range>
concept IsRange = requires { typename ReferenceOf<Range>; };

/// Whether a reference to `Element` can refer to the very elements of `Range`. For elements of an
/// unrelated type it would refer to a converted temporary, which is gone when it is read.
template <class Range, class Element>
concept HasElements =
    IsRange<Range> && std::is_reference_v<ReferenceOf<Range>> &&
    std::is_convertible_v<std::remove_reference_t<ReferenceOf<Range>>*, const Element*>;

/// Never defined: the compiler prints this name when it refuses a container.
struct ElementsOfAnotherTypeWouldBeTemporaries;

/// A range over elements of one type whose container is the caller's choice. An iterator of up to
/// 64 bytes is stored in place, so walking the usual containers allocates nothing.
template <class Element, class Traversal>
class AnyRangeAdapter : public boost::any_range<Element, Traversal, Element&, std::ptrdiff_t,
                                                boost::any_iterator_buffer<64>> {
  using Base = boost::any_range<Element, Traversal, Element&, std::ptrdiff_t,
                                boost::any_iterator_buffer<64>>;

 public:
  AnyRangeAdapter() = default;

  // Not explicit: callers pass their container where a range is wanted.
  /// Precondition: `range` outlives this object and all its copies.
  template <HasElements<Element> Range>
    requires(!std::is_same_v<Range, AnyRangeAdapter>)
  AnyRangeAdapter(Range& range) : Base(range) {}
  /// The same for a const or temporary container.
  template <class Range>
    requires HasElements<const Range, Element>
  AnyRangeAdapter(const Range& range) : Base(range) {}

  template <IsRange Range, class Reason = ElementsOfAnotherTypeWouldBeTemporaries>
    requires(!HasElements<const Range, Element> && !HasElements<Range, Element>)
  AnyRangeAdapter(const Range& range) = delete;
};

}  // namespace detail

// The elements of these ranges are const: a range over mutable elements would also accept a const
// container, and cast its constness away.

/// Any container of `ustring`, walked forward. A container of anything else, such as string
/// literals, does not compile: the texts made from its elements would be gone before they are read.
///
/// Ownership: none; a range keeps iterators only, so the container must outlive it. A temporary
/// container lives to the end of the call that it is written in.
using UstringRange = detail::AnyRangeAdapter<const ustring, boost::forward_traversal_tag>;

/// Any container of `AbsoluteIRI` or of a class derived from it, walked forward. Ownership as for
/// `UstringRange`.
using AbsoluteIRIRange = detail::AnyRangeAdapter<const AbsoluteIRI, boost::forward_traversal_tag>;

/// Any container of `ustring` that can be walked from its end. Ownership as for `UstringRange`.
using BidirectionalUstringRange =
    detail::AnyRangeAdapter<const ustring, boost::bidirectional_traversal_tag>;

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_ANY_RANGE_ADAPTER_H
