#include "host/log_sink.h"
#include "platform/module.h"

namespace Corvane::PathManagement::host {

// The library has this one, which calls the function of the same name in the module.
extern "C" MakeLogSink SearchpathLogSink() {
  static const auto loaded = reinterpret_cast<decltype(&SearchpathLogSink)>(
      PathManagement::detail::FindInModule("log_sink.so", "SearchpathLogSink"))();
  return loaded;
}

}  // namespace Corvane::PathManagement::host
