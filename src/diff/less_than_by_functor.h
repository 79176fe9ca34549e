#ifndef SEARCHPATH_SRC_DIFF_LESS_THAN_BY_FUNCTOR_H
#define SEARCHPATH_SRC_DIFF_LESS_THAN_BY_FUNCTOR_H

#include <utility>

namespace Corvane::PathManagement::detail {

/// Compares things by their keys. `functor` computes the key of a thing: anew for each comparison,
/// and first for the left thing.
template <class Functor>
class LessThanByFunctorImpl {
 public:
  explicit constexpr LessThanByFunctorImpl(Functor keyFunctor) : functor(std::move(keyFunctor)) {}

  template <class Thing>
  bool operator()(const Thing& left, const Thing& right) const {
    const auto leftKey = functor(left);
    return leftKey < functor(right);
  }

 private:
  Functor functor;
};

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_DIFF_LESS_THAN_BY_FUNCTOR_H
