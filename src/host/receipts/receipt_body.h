#ifndef SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_BODY_H
#define SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_BODY_H

#include "host/saved/listing_envelope.h"
#include "saved_receipt_generated.h"

#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>

namespace Corvane::PathManagement::host {

/// In a receipt: no answer, or no question.
inline constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

/// The verified content of a receipt.
///
/// Threads: immutable.
class ReceiptBody {
 public:
  /// Errors: `InvalidListingException`.
  explicit ReceiptBody(ListingBody content);

  [[nodiscard]] const receipts::Receipt& Get() const noexcept { return *receipt; }
  [[nodiscard]] std::string_view Bytes() const noexcept { return {body.bytes.get(), body.size}; }

  [[nodiscard]] std::string_view TextOf(const receipts::Text& text) const noexcept;
  [[nodiscard]] const receipts::Place& PlaceAt(std::uint32_t place) const {
    return *receipt->places()->Get(place);
  }
  [[nodiscard]] const receipts::Question& QuestionAt(std::size_t question) const {
    return *receipt->questions()->Get(static_cast<flatbuffers::uoffset_t>(question));
  }
  /// The native path of `name` in a place.
  [[nodiscard]] std::string PathOf(std::uint32_t place, const receipts::Text& name) const;

  /// The places of a list, in the order in which they are asked.
  [[nodiscard]] std::span<const std::uint32_t> ListAt(std::uint32_t list) const;
  /// The extensions of a kind.
  [[nodiscard]] std::span<const receipts::Text> ExtensionsOf(std::uint32_t kind) const;

 private:
  ListingBody body;
  const receipts::Receipt* receipt;  // views body
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_BODY_H
