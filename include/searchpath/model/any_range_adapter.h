#ifndef SEARCHPATH_MODEL_ANY_RANGE_ADAPTER_H
#define SEARCHPATH_MODEL_ANY_RANGE_ADAPTER_H

#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/ustring.h"

#include <boost/range/any_range.hpp>

#include <cstddef>

namespace Corvane::PathManagement {

namespace detail {

/// A range over elements of one type whose container is the caller's choice. Iterators live in 64
/// bytes in place, so walking the usual containers allocates nothing.
template <class Element, class Traversal>
using AnyRangeAdapter =
    boost::any_range<Element, Traversal, Element&, std::ptrdiff_t, boost::any_iterator_buffer<64>>;

}  // namespace detail

// The elements are const: a range over mutable ones would bind a const container as well and cast
// its constness away.

/// Any container of `ustring`, walked forward.
///
/// Ownership: none; a range keeps iterators only, so the container must outlive it. A temporary
/// container lives to the end of the call that it is written in.
using UstringRange = detail::AnyRangeAdapter<const ustring, boost::forward_traversal_tag>;

/// Any container of `AbsoluteIRI`, walked forward. Ownership as for `UstringRange`.
using AbsoluteIRIRange = detail::AnyRangeAdapter<const AbsoluteIRI, boost::forward_traversal_tag>;

/// Any container of `ustring` that can be walked from its end. Ownership as for `UstringRange`.
using BidirectionalUstringRange =
    detail::AnyRangeAdapter<const ustring, boost::bidirectional_traversal_tag>;

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_ANY_RANGE_ADAPTER_H
