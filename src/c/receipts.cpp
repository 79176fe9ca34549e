#include "c/border.h"
#include "c/handles.h"
#include "c/texts.h"
#include "searchpath/host/name_changes.h"
#include "searchpath/host/native_location.h"
#include "searchpath/host/receipt.h"

#include <optional>
#include <stdexcept>

namespace {

namespace paths = Corvane::PathManagement;
namespace host = paths::host;
using paths::c::BytesOf;
using paths::c::Do;
using paths::c::HandOut;
using paths::c::LookupOf;
using paths::c::View;

// The path of the file that a name means; nullopt when the name means none.
using Path = std::optional<std::string>;

Path PathOf(const std::optional<paths::FoundItem>& file) {
  if (!file) return std::nullopt;
  return BytesOf(host::GetLocationText(*file));
}

/// Null bytes stand for no path.
searchpath_text View(const Path& path) { return path ? View(*path) : searchpath_text{}; }

paths::ustring FileNamed(const char* file) {
  if (file == nullptr) throw std::invalid_argument("no file is given");
  return paths::AnyText(file);
}

}  // namespace

struct searchpath_receipt {
  host::Receipt receipt;
};

struct searchpath_answers {
  struct Answer {
    std::string name;
    Path path;
  };

  std::vector<Answer> answers;
};

struct searchpath_changes {
  struct Change {
    std::string name;
    Path before;
    Path after;
  };

  std::vector<Change> changes;
  host::Receipt verified;                // the receipt that was verified
  std::optional<host::Environment> now;  // opened to verify; nullopt when nothing had changed
};

searchpath_status searchpath_find_with_receipt(const searchpath_environment* environment,
                                               const searchpath_lookup* lookups,
                                               size_t lookup_count, searchpath_receipt** receipt,
                                               searchpath_error* error) {
  return HandOut(receipt, error, [&] {
    std::vector<host::Lookup> asked;
    asked.reserve(lookup_count);
    for (std::size_t at = 0; at < lookup_count; ++at) {
      asked.push_back(LookupOf(lookups == nullptr ? nullptr : &lookups[at]));
    }
    return std::make_unique<searchpath_receipt>(environment->environment.FindWithReceipt(asked));
  });
}

searchpath_status searchpath_receipt_load(const char* file, searchpath_receipt** receipt,
                                          searchpath_error* error) {
  return HandOut(receipt, error, [&] {
    return std::make_unique<searchpath_receipt>(host::Receipt::Load(FileNamed(file)));
  });
}

searchpath_status searchpath_receipt_save(const searchpath_receipt* receipt, const char* file,
                                          searchpath_error* error) {
  return Do(error, [&] { receipt->receipt.Save(FileNamed(file)); });
}

void searchpath_receipt_free(searchpath_receipt* receipt) { delete receipt; }

searchpath_status searchpath_receipt_answers(const searchpath_receipt* receipt,
                                             searchpath_answers** answers,
                                             searchpath_error* error) {
  return HandOut(answers, error, [&] {
    auto made = std::make_unique<searchpath_answers>();
    for (std::size_t at = 0; at < receipt->receipt.GetCount(); ++at) {
      made->answers.push_back(
          {BytesOf(receipt->receipt.GetName(at)), PathOf(receipt->receipt.GetAnswer(at))});
    }
    return made;
  });
}

size_t searchpath_answers_count(const searchpath_answers* answers) {
  return answers->answers.size();
}

searchpath_text searchpath_answers_name(const searchpath_answers* answers, size_t index) {
  return View(answers->answers[index].name);
}

searchpath_text searchpath_answers_path(const searchpath_answers* answers, size_t index) {
  return View(answers->answers[index].path);
}

void searchpath_answers_free(searchpath_answers* answers) { delete answers; }

searchpath_status searchpath_receipt_verify(const searchpath_receipt* receipt,
                                            searchpath_changes** changes, searchpath_error* error) {
  return HandOut(changes, error, [&] {
    const host::Receipt& verified = receipt->receipt;
    std::unique_ptr<searchpath_changes> made(
        new searchpath_changes{.changes = {}, .verified = verified, .now = {}});
    if (verified.IsFresh()) return made;
    const host::Environment& now = made->now.emplace(verified.GetOptions());
    for (const auto& change : verified.Verify(now)) {
      made->changes.push_back({BytesOf(change.name), PathOf(change.before), PathOf(change.after)});
    }
    return made;
  });
}

size_t searchpath_changes_count(const searchpath_changes* changes) {
  return changes->changes.size();
}

searchpath_text searchpath_changes_name(const searchpath_changes* changes, size_t index) {
  return View(changes->changes[index].name);
}

searchpath_text searchpath_changes_before(const searchpath_changes* changes, size_t index) {
  return View(changes->changes[index].before);
}

searchpath_text searchpath_changes_after(const searchpath_changes* changes, size_t index) {
  return View(changes->changes[index].after);
}

searchpath_status searchpath_changes_renew(const searchpath_changes* changes,
                                           searchpath_receipt** receipt, searchpath_error* error) {
  return HandOut(receipt, error, [&] {
    return std::make_unique<searchpath_receipt>(
        changes->now ? changes->verified.Renew(*changes->now) : changes->verified);
  });
}

void searchpath_changes_free(searchpath_changes* changes) { delete changes; }
