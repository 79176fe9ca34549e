#ifndef SEARCHPATH_PLATFORM_EXCEPTION_H
#define SEARCHPATH_PLATFORM_EXCEPTION_H

namespace foundation::core::except {

struct IInternalException {
  virtual ~IInternalException() = default;
};

template <class Interface, class Base>
struct Exception : Interface, Base {};

}  // namespace foundation::core::except

#endif  // SEARCHPATH_PLATFORM_EXCEPTION_H
