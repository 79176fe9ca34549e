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

/// What a message is about: a text (most often a folder as the user typed it), a number or a
/// location.
// Keep the location among the alternatives: with texts and numbers alone, the standard library of
// GCC 12 still calls a variant valid when copying into it has run out of memory.
using MessageArgument = std::variant<ustring, std::int64_t, storage::vfs::AbsoluteIRI>;

/// One message: the catalogue and the key under which its wording is found, and the arguments that
/// are put into the wording.
struct MessageRecord {
  ustring catalogue;                       ///< the name of the catalogue, see `PathMessages`
  ustring key;                             ///< of the wording in that catalogue
  std::vector<MessageArgument> arguments;  ///< in the order in which the wording refers to them

  friend bool operator==(const MessageRecord&, const MessageRecord&) = default;
};

/// The problems with single items that an operation has met; empty when there were none.
///
/// Threads: not synchronised.
class Notification {
 public:
  /// Whether there were no problems.
  [[nodiscard]] bool empty() const noexcept { return messages.empty(); }
  /// How many problems there were.
  [[nodiscard]] std::size_t size() const noexcept { return messages.size(); }

  /// The messages, in the order in which they were appended.
  [[nodiscard]] const std::vector<MessageRecord>& GetMessages() const noexcept { return messages; }

  /// Adds `message` at the end.
  void Append(MessageRecord message) { messages.push_back(std::move(message)); }

 private:
  std::vector<MessageRecord> messages;
};

/// `message` as an English sentence without a full stop, for those who have no catalogue. Texts are
/// quoted; controls and marks of writing direction are shown as escapes, and long texts are cut. A
/// message that is not one of this library is shown raw: its catalogue, its key and its arguments.
[[nodiscard]] SEARCHPATH_EXPORT ustring GetText(const MessageRecord& message);

}  // namespace foundation::core::except

#endif  // SEARCHPATH_PLATFORM_NOTIFICATION_H
