#ifndef SEARCHPATH_PLATFORM_EXCEPTION_H
#define SEARCHPATH_PLATFORM_EXCEPTION_H

#include "searchpath/export.h"

namespace foundation::core::except {

/// Marks an error that a program handles rather than shows: it carries no message for users.
class SEARCHPATH_EXPORT IInternalException {
 public:
  virtual ~IInternalException();

 protected:
  IInternalException() = default;
  IInternalException(const IInternalException&) = default;
  IInternalException& operator=(const IInternalException&) = default;
};

/// An error of type `Base` that also carries the mark `Interface`; it can be caught as either.
template <class Interface, class Base>
class SEARCHPATH_EXPORT Exception : public Interface, public Base {};

}  // namespace foundation::core::except

#endif  // SEARCHPATH_PLATFORM_EXCEPTION_H
