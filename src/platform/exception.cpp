#include "searchpath/platform/exception.h"

namespace foundation::core::except {

IInternalException::~IInternalException() = default;

}  // namespace foundation::core::except
