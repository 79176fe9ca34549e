#ifndef SEARCHPATH_TESTS_SUPPORT_LISTINGS_H
#define SEARCHPATH_TESTS_SUPPORT_LISTINGS_H

#include "searchpath/platform/diagnostic_logger.h"
#include "support/temporary_tree.h"

#include <mutex>
#include <set>

namespace Corvane::PathManagement::test {

/// Counts how often this process lists folders of a tree, by the diagnostic message of each listing.
/// What other processes read does not count. One at a time: there is one sink for messages.
class Listings {
 public:
  explicit Listings(const TemporaryTree& tree) {
    foundation::log::basic_diagnostic_logger::SetSink(
        [this, begin = "read \"" + tree.Path() + '/'](const auto&, auto, std::string_view message) {
          if (!message.starts_with(begin)) return;
          message.remove_prefix(begin.size());
          const std::lock_guard lock(mutex);
          listed.emplace(message.substr(0, message.find('"')));
        });
  }
  Listings(const Listings&) = delete;
  Listings& operator=(const Listings&) = delete;
  ~Listings() { foundation::log::basic_diagnostic_logger::SetSink(nullptr); }

  /// The folders listed since the last call, in order of their names, each as often as it was.
  std::string Take() {
    const std::lock_guard lock(mutex);
    std::string all;
    for (const auto& folder : listed) all += (all.empty() ? "" : " ") + folder;
    listed.clear();
    return all;
  }

 private:
  std::mutex mutex;  // guards listed
  std::multiset<std::string> listed;
};

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_LISTINGS_H
