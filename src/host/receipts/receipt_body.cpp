#include "host/receipts/receipt_body.h"

#include "host/common/path_bytes.h"
#include "host/rules/asked_file.h"
#include "searchpath/host/invalid_listing_exception.h"
#include "searchpath/model/filename_matching_policy.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

namespace {

constexpr flatbuffers::uoffset_t kDeepestTables = 8;  // of nested tables; the format has two

[[noreturn]] void RefuseReceipt(const std::string& why) {
  throw InvalidListingException("it is malformed: " + why);
}

std::string_view ViewOf(const receipts::Receipt& receipt, const receipts::Text& text) {
  return {reinterpret_cast<const char*>(receipt.texts()->data()) + text.begin(), text.size()};
}

/// Checks that every number and every range in a receipt refers to something in it.
class ReceiptContentCheck {
 public:
  explicit ReceiptContentCheck(const receipts::Receipt& checked)
      : receipt(checked), bytesLeft(std::size_t{2} * checked.texts()->size()) {}

  void Run() {
    CheckAlignment(*receipt.places());
    CheckAlignment(*receipt.ways());
    CheckAlignment(*receipt.kinds());
    CheckAlignment(*receipt.runs());
    CheckAlignment(*receipt.exceptions());
    CheckAlignment(*receipt.further());
    CheckAlignment(*receipt.files());
    CheckPath(*receipt.path());
    for (const auto* place : *receipt.places()) {
      CheckTexts({&place->path(), &place->canonical()});
      CheckLocation(place->path());
    }
    for (const auto* way : *receipt.ways()) CheckTexts({&way->path(), &way->canonical()});
    for (const auto* extension : *receipt.extensions()) CheckTexts({extension});
    CheckKinds();
    CheckLists();
    CheckQuestions();
    CheckExceptions();
    CheckFurtherAndFiles();
  }

 private:
  /// The verifier checks that the length of a list is aligned, but not that its items are. An empty
  /// list need not be aligned for items.
  template <class Item>
  static void CheckAlignment(const flatbuffers::Vector<const Item*>& items) {
    if (items.size() > 0 && reinterpret_cast<std::uintptr_t>(items.Data()) % alignof(Item) != 0) {
      RefuseReceipt("a list is not aligned");
    }
  }

  /// A text may be used twice, for a path and for where it leads. With more than that, a small
  /// receipt could hold a huge number of long texts.
  void CheckTexts(std::initializer_list<const receipts::Text*> texts) {
    for (const receipts::Text* text : texts) {
      const std::uint64_t end = std::uint64_t{text->begin()} + text->size();
      if (end > receipt.texts()->size()) RefuseReceipt("a text is not in the file");
      if (text->size() > bytesLeft) RefuseReceipt("it refers to the same text several times");
      bytesLeft -= text->size();
    }
  }

  /// Checks that a path can be that of a location.
  void CheckLocation(const receipts::Text& path) const {
    const std::string_view bytes = ViewOf(receipt, path);
    if (!bytes.starts_with('/') || bytes.find('\0') != bytes.npos)
      RefuseReceipt("a path is not absolute");
  }

  void CheckPath(const receipts::Path& path) {
    for (const auto* folders :
         {path.folders(), path.without(), path.quote_folders(), path.packages()}) {
      for (const auto* folder : *folders) CheckTexts({folder});
    }
    const receipts::Rules* const rules = path.rules();
    if (path.working_folder() == nullptr || rules == nullptr)
      RefuseReceipt("the path has no rules");
    CheckTexts({path.working_folder()});
    if (path.working_folder()->size() > 0) CheckLocation(*path.working_folder());
    const bool isKnown =
        rules->separator() <= static_cast<int>(LookupRules::Separator::ThatFile) &&
        rules->files() <= static_cast<int>(LookupRules::Files::Readable) &&
        rules->empty_part() <= static_cast<int>(LookupRules::EmptyPart::WorkingFolder);
    if (!isKnown) RefuseReceipt("a rule is unknown");
    if (path.packages()->size() > 1) RefuseReceipt("the path has several roots of packages");
  }

  void CheckKinds() {
    std::uint32_t end = 0;
    for (const auto* kind : *receipt.kinds()) {
      CheckTexts({&kind->from(), &kind->after()});
      if (kind->policy() > static_cast<std::uint32_t>(FilenameMatchingPolicy::FileSystemDefault)) {
        RefuseReceipt("a policy is unknown");
      }
      CheckEnd(end, kind->extensions_end(), receipt.extensions()->size());
    }
  }

  void CheckLists() {
    std::uint32_t end = 0;
    for (const std::uint32_t next : *receipt.list_ends()) {
      const std::uint32_t begin = end;
      CheckEnd(end, next, receipt.listed()->size());
      listSizes.push_back(end - begin);
    }
    if (receipt.list_ends()->size() == 0) RefuseReceipt("there is no list of the path");
    for (const std::uint32_t place : *receipt.listed()) CheckPlace(place);
  }

  /// Checks the end of the next list, where `end` is that of the list before, and goes on to it.
  static void CheckEnd(std::uint32_t& end, std::uint32_t next, std::uint32_t size) {
    if (next < end || next > size) RefuseReceipt("a list ends where it should not");
    end = next;
  }

  void CheckPlace(std::uint32_t place) const {
    if (place >= receipt.places()->size()) RefuseReceipt("a place is not in the file");
  }

  /// There may be a great many questions, so faults are reported after each loop, not within it.
  void CheckQuestions() const {
    const auto& ends = *receipt.name_ends();
    // Counted, so that compilers compare several ends at once.
    std::uint32_t misfits = 0;
    for (std::uint32_t at = 1; at < ends.size(); ++at) {
      misfits += ends.Get(at - 1) > ends.Get(at) ? 1U : 0U;
    }
    if (misfits > 0 || (ends.size() > 0 && ends.Get(ends.size() - 1) > receipt.names()->size())) {
      RefuseReceipt("a name does not fit");
    }
    if (ends.size() > 0 && receipt.kinds()->size() == 0) {
      RefuseReceipt("it is not said how names were asked");
    }
    CheckRuns();
  }

  /// Checks which list each question asks, and how much of it. Reports faults of questions after
  /// each run.
  void CheckRuns() const {
    const auto& asked = *receipt.asked();
    std::uint32_t begin = 0;
    for (const auto* run : *receipt.runs()) {
      if (run->end() <= begin || run->end() > asked.size() || run->list() >= listSizes.size()) {
        RefuseReceipt("it does not say which list a question asks");
      }
      std::uint32_t most = 0;
      for (; begin < run->end(); ++begin) most = std::max(most, asked.Get(begin));
      if (most > listSizes[run->list()]) RefuseReceipt("a list is too short");
    }
    if (begin != asked.size() || begin != receipt.name_ends()->size()) {
      RefuseReceipt("it does not say the same about all questions");
    }
  }

  void CheckExceptions() {
    std::uint32_t next = 0;
    std::uint32_t run = 0;
    for (const auto* exception : *receipt.exceptions()) {
      CheckQuestion(exception->question());
      if (exception->question() < next) RefuseReceipt("exceptions are not in order");
      next = exception->question() + 1;
      // The runs reach to the last question: see CheckRuns.
      while (receipt.runs()->Get(run)->end() < next) ++run;
      const auto list = receipt.runs()->Get(run)->list();
      if (exception->asked() > listSizes[list]) RefuseReceipt("a list is too short");
      if (exception->place() != kNoPlace) CheckPlace(exception->place());
      if (exception->kind() >= receipt.kinds()->size()) {
        RefuseReceipt("it is not said how a name was asked");
      }
      CheckTexts({&exception->file()});
    }
  }

  void CheckQuestion(std::uint32_t question) const {
    if (question >= receipt.asked()->size()) RefuseReceipt("a question is not in the file");
  }

  /// Checks what answers rest on besides lists.
  void CheckFurtherAndFiles() {
    const auto check = [&](const auto& about) {
      if (about.question() != kWholePath) CheckQuestion(about.question());
      CheckPlace(about.place());
    };
    for (const auto* further : *receipt.further()) check(*further);
    for (const auto* file : *receipt.files()) {
      check(*file);
      CheckTexts({&file->name()});
      if (file->standing() > static_cast<int>(Standing::NotReachable)) {
        RefuseReceipt("it is unknown what stands at a name");
      }
    }
    for (const std::uint32_t question : *receipt.uncertain()) CheckQuestion(question);
  }

  const receipts::Receipt& receipt;
  std::size_t bytesLeft;                 // of texts that may still be referred to
  std::vector<std::uint32_t> listSizes;  // of each list, how many places it has
};

}  // namespace

ReceiptBody::ReceiptBody(ListingBody content) : body(std::move(content)) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(body.bytes.get());
  flatbuffers::Verifier verifier(bytes, body.size, kDeepestTables);
  if (!receipts::VerifyReceiptBuffer(verifier)) RefuseReceipt("its tables do not fit together");
  receipt = receipts::GetReceipt(bytes);
  ReceiptContentCheck(*receipt).Run();
}

std::string_view ReceiptBody::TextOf(const receipts::Text& text) const noexcept {
  return ViewOf(*receipt, text);
}

std::string_view ReceiptBody::NameAt(std::uint32_t question) const {
  const auto& ends = *receipt->name_ends();
  const std::uint32_t begin = question == 0 ? 0 : ends.Get(question - 1);
  const std::uint32_t end = ends.Get(question);
  return {reinterpret_cast<const char*>(receipt->names()->data()) + begin, end - begin};
}

std::uint32_t ReceiptBody::ListOf(std::uint32_t question) const {
  const auto& runs = *receipt->runs();
  const auto run = std::upper_bound(
      runs.begin(), runs.end(), question,
      [](std::uint32_t at, const receipts::Run* each) { return at < each->end(); });
  return run->list();
}

AskedQuestion ReceiptBody::QuestionAt(std::uint32_t question) const {
  const std::uint32_t number = ListOf(question);
  const auto list = ListAt(number);
  const std::uint32_t asked = receipt->asked()->Get(question);
  const std::string_view name = NameAt(question);
  const std::string_view lastPart = LastPart(name);
  const auto& exceptions = *receipt->exceptions();
  const auto exception = std::lower_bound(
      exceptions.begin(), exceptions.end(), question,
      [](const receipts::Exception* each, std::uint32_t at) { return each->question() < at; });
  if (exception != exceptions.end() && exception->question() == question) {
    const std::string_view file = TextOf(exception->file());
    return {name,
            file.empty() ? lastPart : file,
            exception->place(),
            exception->kind(),
            number,
            exception->asked()};
  }
  if (asked == 0) {  // the whole list, without an answer
    return {name, {}, kNoPlace, 0, number, static_cast<std::uint32_t>(list.size())};
  }
  return {name, lastPart, list[asked - 1], 0, number, asked};
}

std::string ReceiptBody::PathOf(std::uint32_t place, std::string_view name) const {
  return PathBelow(PathAt(place), name);
}

std::span<const std::uint32_t> ReceiptBody::ListAt(std::uint32_t list) const {
  const auto& ends = *receipt->list_ends();
  const std::uint32_t begin = list == 0 ? 0 : ends.Get(list - 1);
  return std::span(receipt->listed()->data(), receipt->listed()->size())
      .subspan(begin, ends.Get(list) - begin);
}

std::span<const receipts::Text> ReceiptBody::ExtensionsOf(std::uint32_t kind) const {
  const auto& kinds = *receipt->kinds();
  const std::uint32_t begin = kind == 0 ? 0 : kinds.Get(kind - 1)->extensions_end();
  const auto& all = *receipt->extensions();
  return std::span(reinterpret_cast<const receipts::Text*>(all.Data()), all.size())
      .subspan(begin, kinds.Get(kind)->extensions_end() - begin);
}

}  // namespace Corvane::PathManagement::host
