#ifndef SEARCHPATH_PLATFORM_NOTIFICATION_H
#define SEARCHPATH_PLATFORM_NOTIFICATION_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/ustring.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <variant>
#include <vector>

namespace foundation::core::except {

/// What a message is about: a text, most often a folder as the user typed it, a number, a location.
// The location is among the alternatives for another reason, too: with texts and numbers alone, the
// library of GCC 12 takes a variant for valid even after copying it ran out of memory.
using MessageArgument = std::variant<ustring, std::int64_t, storage::vfs::AbsoluteIRI>;

/// One message: which catalogue its wording stands in, under which key, and what goes into it.
struct MessageRecord {
  ustring catalogue;                       ///< as `PathMessages` names them
  ustring key;                             ///< of that catalogue
  std::vector<MessageArgument> arguments;  ///< in the order in which the wording refers to them

  friend bool operator==(const MessageRecord&, const MessageRecord&) = default;
};

/// The problems with single items that an operation met on its way; empty when there were none.
///
/// Threads: not synchronised.
class Notification {
 public:
  /// Whether there were no problems.
  [[nodiscard]] bool empty() const noexcept { return messages.empty(); }
  /// How many there were.
  [[nodiscard]] std::size_t size() const noexcept { return messages.size(); }

  /// In the order in which they were appended.
  [[nodiscard]] const std::vector<MessageRecord>& GetMessages() const noexcept { return messages; }

  /// Adds a message behind the others.
  void Append(MessageRecord message) { messages.push_back(std::move(message)); }

 private:
  std::vector<MessageRecord> messages;
};

/// `message` as an English sentence without a full stop, for those who have no catalogue. Texts are
/// quoted; controls and marks of writing direction are shown as escapes, and long texts are cut. A
/// message that this library does not write is shown as it is: its catalogue, its key and its
/// arguments.
[[nodiscard]] SEARCHPATH_EXPORT ustring GetText(const MessageRecord& message);

}  // namespace foundation::core::except

#endif  // SEARCHPATH_PLATFORM_NOTIFICATION_H
