#ifndef SEARCHPATH_TESTS_SUPPORT_OPENINGS_H
#define SEARCHPATH_TESTS_SUPPORT_OPENINGS_H

#include "support/temporary_tree.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <map>
#include <set>

namespace Corvane::PathManagement::test {

/// Counts how often folders of a tree are opened, as the kernel tells it.
class Openings {
 public:
  Openings(const TemporaryTree& tree, const std::vector<std::string>& folders) {
    for (const auto& folder : folders) {
      // Closing as well: the same event twice running is told once.
      const auto wanted = IN_OPEN | IN_CLOSE_NOWRITE;
      names[inotify_add_watch(queue, tree.Path(folder).c_str(), wanted)] = folder;
    }
  }
  Openings(const Openings&) = delete;
  Openings& operator=(const Openings&) = delete;
  ~Openings() { close(queue); }

  /// The folders opened since the last call, in order of their names, each as often as it was.
  std::string Take() const {
    std::multiset<std::string> opened;
    alignas(inotify_event) std::array<char, 1U << 14U> events{};
    for (ssize_t got = 0; (got = read(queue, events.data(), events.size())) > 0;) {
      for (std::size_t at = 0; at < static_cast<std::size_t>(got);) {
        const auto& event = reinterpret_cast<const inotify_event&>(events.at(at));
        if (event.len == 0 && (event.mask & IN_OPEN) != 0) opened.insert(names.at(event.wd));
        at += sizeof event + event.len;
      }
    }
    std::string all;
    for (const auto& folder : opened) all += (all.empty() ? "" : " ") + folder;
    return all;
  }

 private:
  int queue = inotify_init1(IN_NONBLOCK);
  std::map<int, std::string> names;
};

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_OPENINGS_H
