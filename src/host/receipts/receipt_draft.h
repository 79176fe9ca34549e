#ifndef SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_DRAFT_H
#define SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_DRAFT_H

#include "host/common/disk_patience.h"
#include "host/names/short_hash.h"
#include "host/receipts/receipt_body.h"
#include "searchpath/host/environment.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

/// The parts of a receipt that is being made.
class ReceiptDraft {
 public:
  struct List {
    std::vector<std::uint32_t> places;
    std::size_t asked = 0;  // how many, from the beginning, some question has asked
  };
  struct Question {
    std::uint32_t nameEnd = 0;    // in the names of all questions
    receipts::Text file = {};     // of the answer; empty when it is the last part of the name
    std::uint32_t place = kNone;  // of the answer; kNone when there is none
    std::uint32_t kind = 0;
    std::uint32_t list = 0;
    std::uint32_t asked = 0;  // how many places at the beginning of the list
  };

  [[nodiscard]] receipts::Text AddText(std::string_view text);
  [[nodiscard]] receipts::Text AddText(const ustring& text);
  [[nodiscard]] std::string_view TextOf(const receipts::Text& text) const {
    return std::string_view(texts).substr(text.begin(), text.size());
  }
  /// Adds the name of the next question, and returns where it ends.
  [[nodiscard]] std::uint32_t AddName(const ustring& name);
  /// The name of the file that a question was answered with.
  [[nodiscard]] std::string_view FileOf(std::uint32_t question) const;
  /// The number of the place at a native path, which is added when it is new.
  [[nodiscard]] std::uint32_t AddPlace(std::string_view path);
  /// The number of the place at a native path; empty when it has not been added.
  [[nodiscard]] std::optional<std::uint32_t> FindPlace(std::string_view path) const;
  [[nodiscard]] const std::string& PathOf(std::uint32_t place) const { return paths[place]; }

  /// Asks the disk about the places that matter, and puts all together; called once. `begun` is
  /// before the first question. A place is certain when its times prove that it has not changed
  /// since, however coarsely file systems and the kernel keep times.
  ///
  /// Errors: `std::length_error` when the receipt would be too long.
  [[nodiscard]] std::shared_ptr<const ReceiptBody> Finish(
      const EnvironmentOptions& options, std::chrono::system_clock::time_point begun);

  std::vector<List> lists;  // the first is the path
  std::vector<receipts::Kind> kinds;
  std::vector<receipts::Text> extensions;
  std::vector<Question> questions;
  std::vector<receipts::Further> further;
  std::vector<receipts::File> files;
  std::vector<std::uint32_t> uncertain;
  bool pathIsUncertain = false;

 private:
  void DropIdlePlaces();
  [[nodiscard]] receipts::Text AddTarget(const receipts::Text& path, const std::string& target);
  [[nodiscard]] std::set<std::string> FindWays(const std::vector<std::string>& canonical) const;
  void LookAtPlaces(DiskPatience::Limit limit, std::chrono::system_clock::time_point begun);
  /// The questions as they are saved.
  struct Written {
    std::vector<std::uint32_t> nameEnds = {};
    std::vector<std::uint32_t> asked = {};
    std::vector<receipts::Run> runs = {};
    std::vector<receipts::Exception> exceptions = {};
  };
  [[nodiscard]] Written WriteQuestions() const;
  [[nodiscard]] flatbuffers::Offset<receipts::Path> WritePath(
      flatbuffers::FlatBufferBuilder& builder, const EnvironmentOptions& options);

  std::string texts;
  std::string names;              // of the questions, one after the other
  std::deque<std::string> paths;  // of the places; a deque, since placesByPath views them
  boost::unordered_flat_map<std::string_view, std::uint32_t, NameBytesHash> placesByPath;
  std::vector<receipts::Place> places;
  std::vector<receipts::Way> ways;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_DRAFT_H
