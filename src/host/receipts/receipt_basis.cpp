#include "host/receipts/receipt_body.h"
#include "searchpath/host/receipt.h"
#include "searchpath/model/byte_text.h"

#include <algorithm>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

/// Collects what answers rest on. A place is the number of a folder that was asked for a file.
class BasisCollector {
 public:
  explicit BasisCollector(const ReceiptBody& receipt)
      : body(receipt), isAdded(receipt.Get().places()->size()) {}

  void AddPlace(std::uint32_t number) {
    if (isAdded[number]) return;
    isAdded[number] = true;
    const receipts::Place& place = body.PlaceAt(number);
    (place.error() == 0 ? basis.folders : basis.absent)
        .push_back(TextFromBytes(body.TextOf(place.path())));
  }

  void AddFile(std::uint32_t place, std::string_view name) {
    basis.files.push_back(TextFromBytes(body.PathOf(place, name)));
  }

  /// Adds the first `asked` places of a list.
  void AddList(std::uint32_t list, std::size_t asked) {
    for (const std::uint32_t place : body.ListAt(list).first(asked)) AddPlace(place);
  }

  /// Adds what else matters to the questions for whose numbers isWanted(number) is true; to the
  /// whole path, if it is true for `kWholePath`. Returns all that was added.
  template <class IsWanted>
  [[nodiscard]] AnswerBasis Finish(const IsWanted& isWanted) {
    for (const auto* further : *body.Get().further()) {
      if (isWanted(further->question())) AddPlace(further->place());
    }
    for (const auto* file : *body.Get().files()) {
      if (isWanted(file->question())) AddFile(file->place(), body.TextOf(file->name()));
    }
    std::sort(basis.files.begin(), basis.files.end());
    basis.files.erase(std::unique(basis.files.begin(), basis.files.end()), basis.files.end());
    return std::move(basis);
  }

  /// Adds the file of the answer where its rights decide whether it counts. The `files` of the
  /// receipt do not hold it, and it may be the answer to several questions.
  void AddAnswer(const AskedQuestion& question) {
    const auto counted = static_cast<LookupRules::Files>(body.Get().path()->rules()->files());
    if (question.place == kNoPlace || counted == LookupRules::Files::Regular) return;
    AddFile(question.place, question.file);
  }

 private:
  const ReceiptBody& body;
  std::vector<bool> isAdded;  // by place
  AnswerBasis basis;
};

}  // namespace

AnswerBasis Receipt::GetBasis(std::size_t at) const {
  const AskedQuestion question = body->QuestionAt(static_cast<std::uint32_t>(at));
  BasisCollector collector(*body);
  collector.AddList(question.list, question.asked);
  collector.AddAnswer(question);
  return collector.Finish(
      [at](std::uint32_t number) { return number == at || number == kWholePath; });
}

AnswerBasis Receipt::GetBasis() const {
  BasisCollector collector(*body);
  const auto lists = static_cast<std::uint32_t>(body->Get().list_ends()->size());
  for (std::uint32_t list = 0; list < lists; ++list) {
    collector.AddList(list, body->ListAt(list).size());
  }
  for (std::uint32_t at = 0; at < body->CountQuestions(); ++at) {
    collector.AddAnswer(body->QuestionAt(at));
  }
  return collector.Finish([](std::uint32_t /*number*/) { return true; });
}

}  // namespace Corvane::PathManagement::host
