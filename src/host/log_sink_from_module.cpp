#include "host/log_sink.h"
#include "platform/module.h"

namespace Corvane::PathManagement::host {

// This one is part of the library. It calls the one in log_sink.cpp, which is part of the module.
extern "C" LogSinkMaker SearchpathLogSink() {
  static const auto loaded = reinterpret_cast<decltype(&SearchpathLogSink)>(
      PathManagement::detail::FindInModule("log_sink.so", "SearchpathLogSink"))();
  return loaded;
}

}  // namespace Corvane::PathManagement::host
