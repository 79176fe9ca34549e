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

/// The parts of a receipt that is being made: names that were looked up, the files that they mean,
/// and what these answers rest on.
///
/// A place is the number of a folder that was asked for a file, whether or not the folder exists.
class ReceiptDraft {
 public:
  /// The places that questions ask, in order.
  struct List {
    std::vector<std::uint32_t> places;
    std::size_t asked = 0;  // how many places, from the first, at least one question has asked
  };
  struct Question {
    std::uint32_t nameEnd = 0;       // where its name ends in the joined names of all questions
    receipts::Text file = {};        // name of the file found; empty if the last part of the name
    std::uint32_t place = kNoPlace;  // the folder of the answer; kNoPlace when there is none
    std::uint32_t kind = 0;          // an index in `kinds`
    std::uint32_t list = 0;          // an index in `lists`
    std::uint32_t asked = 0;         // how many places at the beginning of the list were asked
  };

  /// Adds a text, and returns where it stands in the receipt. In place of a text that no path can
  /// have, adds "".
  ///
  /// Errors: `std::length_error` when there are too many texts.
  [[nodiscard]] receipts::Text AddText(std::string_view text);
  [[nodiscard]] receipts::Text AddText(const ustring& text);
  /// Valid until the next text is added.
  [[nodiscard]] std::string_view TextOf(const receipts::Text& text) const {
    return std::string_view(texts).substr(text.begin(), text.size());
  }
  /// Adds the name of the next question, and returns where it ends in the joined names.
  ///
  /// Errors: as `AddText`.
  [[nodiscard]] std::uint32_t AddName(const ustring& name);
  /// The name of the file that a question was answered with.
  [[nodiscard]] std::string_view FileOf(std::uint32_t question) const;
  /// The number of the place at a native path, which is added when it is new.
  [[nodiscard]] std::uint32_t AddPlace(std::string_view path);
  /// The number of the place at a native path; empty when it has not been added.
  [[nodiscard]] std::optional<std::uint32_t> FindPlace(std::string_view path) const;
  [[nodiscard]] const std::string& PathOf(std::uint32_t place) const { return paths[place]; }

  /// Asks the disk about the places that answers rest on, and puts the receipt together; called
  /// once. `begun` is a time before the first question. A place is saved as certain when its times
  /// prove that it has not changed since `begun`, however coarsely file systems and the kernel keep
  /// times.
  ///
  /// Errors: `std::length_error` when the receipt would be too long.
  [[nodiscard]] std::shared_ptr<const ReceiptBody> Finish(
      const EnvironmentOptions& options, std::chrono::system_clock::time_point begun);

  // Those who record questions fill these in; `Finish` saves them.
  std::vector<List> lists;                 // the first has the folders of the search path
  std::vector<receipts::Kind> kinds;       // how names were asked for: policy, extensions, folder
  std::vector<receipts::Text> extensions;  // of all kinds, in the order of the kinds
  std::vector<Question> questions;
  std::vector<receipts::Further> further;  // places that answers rest on besides those of lists
  std::vector<receipts::File> files;       // what stands at names and may change unseen
  std::vector<std::uint32_t> uncertain;    // the questions that are to be asked again each time
  bool pathIsUncertain = false;            // the folders of the path are to be found anew each time

 private:
  /// Drops the places that no answer rests on, and numbers the others anew.
  void DropIdlePlaces();
  /// The text of `target`, to which `path` leads once links are resolved.
  [[nodiscard]] receipts::Text AddTarget(const receipts::Text& path, const std::string& target);
  [[nodiscard]] std::set<std::string> FindWays(const std::vector<std::string>& canonical) const;
  void LookAtPlaces(DiskPatience::Limit limit, std::chrono::system_clock::time_point begun);
  /// The questions as they are saved: the fields of `Receipt` with these names.
  struct Written {
    std::vector<std::uint32_t> nameEnds = {};
    std::vector<std::uint32_t> asked = {};
    std::vector<receipts::Run> runs = {};              // questions in a row of the same list
    std::vector<receipts::Exception> exceptions = {};  // see WriteQuestions
  };
  [[nodiscard]] Written WriteQuestions() const;
  [[nodiscard]] flatbuffers::Offset<receipts::Path> WritePath(
      flatbuffers::FlatBufferBuilder& builder, const EnvironmentOptions& options);

  std::string texts;              // all but the names of questions, joined
  std::string names;              // of the questions, joined
  std::deque<std::string> paths;  // native, by place; a deque, since placesByPath views them
  boost::unordered_flat_map<std::string_view, std::uint32_t, NameBytesHash> placesByPath;
  std::vector<receipts::Place> places;  // what was found at the paths; made by LookAtPlaces
  std::vector<receipts::Way> ways;      // paths whose links decide where the places lead; likewise
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_DRAFT_H
