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

// A receipt refers to what it holds by number. A question is the number of a name that was looked
// up. A place is the number of a folder that was asked for files, whether or not it exists.

/// Instead of a place: there is no answer.
inline constexpr std::uint32_t kNoPlace = std::numeric_limits<std::uint32_t>::max();
/// Instead of a question: the whole path is concerned.
inline constexpr std::uint32_t kWholePath = std::numeric_limits<std::uint32_t>::max();

/// A question of a receipt, and its answer. Views the receipt.
struct AskedQuestion {
  std::string_view name;
  std::string_view file;  // the answer's name in its folder; means nothing without an answer
  std::uint32_t place;    // the folder of the answer; kNoPlace when there is no answer
  std::uint32_t kind;     // how the name was asked for; an index in Receipt.kinds
  std::uint32_t list;     // the number of the list of places that was asked
  std::uint32_t asked;    // how many places at the beginning of that list were asked
};

/// The verified content of a receipt: every number in it refers to something that it holds.
///
/// Threads: immutable.
class ReceiptBody {
 public:
  /// Errors: `InvalidListingException` when `content` is malformed.
  explicit ReceiptBody(ListingBody content);

  /// The tables as they are saved; no field is null.
  [[nodiscard]] const receipts::Receipt& Get() const noexcept { return *receipt; }
  [[nodiscard]] std::string_view Bytes() const noexcept { return {body.bytes.get(), body.size}; }

  [[nodiscard]] std::string_view TextOf(const receipts::Text& text) const noexcept;
  [[nodiscard]] const receipts::Place& PlaceAt(std::uint32_t place) const {
    return *receipt->places()->Get(place);
  }
  [[nodiscard]] std::string_view PathAt(std::uint32_t place) const {
    return TextOf(PlaceAt(place).path());
  }
  [[nodiscard]] std::uint32_t CountQuestions() const { return receipt->name_ends()->size(); }
  [[nodiscard]] AskedQuestion QuestionAt(std::uint32_t question) const;
  /// The native path of `name` in a place.
  [[nodiscard]] std::string PathOf(std::uint32_t place, std::string_view name) const;

  /// The places of a list, in the order in which they are asked.
  [[nodiscard]] std::span<const std::uint32_t> ListAt(std::uint32_t list) const;
  /// The extensions that questions of a kind try.
  [[nodiscard]] std::span<const receipts::Text> ExtensionsOf(std::uint32_t kind) const;

 private:
  [[nodiscard]] std::string_view NameAt(std::uint32_t question) const;
  [[nodiscard]] std::uint32_t ListOf(std::uint32_t question) const;

  ListingBody body;
  const receipts::Receipt* receipt;  // views body
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_BODY_H
