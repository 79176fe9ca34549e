#ifndef SEARCHPATH_PLATFORM_NOTIFICATION_H
#define SEARCHPATH_PLATFORM_NOTIFICATION_H

#include "searchpath/model/absolute_iri.h"

#include <variant>
#include <vector>

namespace foundation::core::except {

using MessageArgument = std::variant<ustring, std::int64_t>;

struct MessageRecord {
  ustring catalogue, key;
  std::vector<MessageArgument> arguments;
};

class Notification {
 public:
  bool empty() const { return messages.empty(); }
  std::size_t size() const { return messages.size(); }
  const std::vector<MessageRecord>& GetMessages() const { return messages; }
  void Append(MessageRecord message) { messages.push_back(std::move(message)); }

 private:
  std::vector<MessageRecord> messages;
};

}  // namespace foundation::core::except

#endif  // SEARCHPATH_PLATFORM_NOTIFICATION_H
