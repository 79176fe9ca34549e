#include "searchpath/host/depfile.h"

#include "host/common/path_bytes.h"
#include "host/folder/folder_stamp.h"
#include "host/receipts/receipt_body.h"
#include "searchpath/model/byte_text.h"

#include <climits>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Corvane::PathManagement::host {

namespace {

/// `path` as a name in a rule; empty when make and ninja have no spelling in common. Trials with
/// both show that any ASCII character which is not accepted below ends a name in one of them, or
/// makes a pattern or an assignment.
std::optional<std::string> SpellingOf(std::string_view path) {
  constexpr std::string_view plain = "+,/_.~(){}@!-]";
  std::string spelled;
  for (const char unit : path) {
    const auto byte = static_cast<unsigned char>(unit);
    const bool isLetter = (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z');
    if (unit == '$') {
      spelled.push_back('$');
    } else if (unit == ' ' || unit == '#' || unit == ':') {
      spelled.push_back('\\');
    } else if (!isLetter && (unit < '0' || unit > '9') && byte < 0x80 &&
               plain.find(unit) == plain.npos) {
      return std::nullopt;
    }
    spelled.push_back(unit);
  }
  // At the beginning, make takes "~" for a home folder.
  return path.starts_with('~') ? std::nullopt : std::optional(spelled);
}

/// The nearest folder that exists, at `path` or above it: it changes when a name is made in it.
std::string NearestFolder(std::string path) {
  while (path.size() > 1 && LookAtFolder(path).error != 0) path = FolderAbove(path);
  return path;
}

/// The text of the link at `path`; "" when no link stands there.
std::string TargetOf(const std::string& path) {
  std::array<char, PATH_MAX> buffer = {};
  const auto size = readlink(path.c_str(), buffer.data(), buffer.size());
  return {buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))};
}

/// Collects what a target depends on. A place is the number of a folder that was asked for a file.
class Dependencies {
 public:
  explicit Dependencies(const ReceiptBody& receipt) : body(receipt) {}

  void Collect() {
    AddAnswers();
    for (std::uint32_t list = 0; list < reached.size(); ++list) {
      for (const std::uint32_t place : body.ListAt(list).first(reached[list])) AddPlace(place);
    }
    for (const auto* further : *body.Get().further()) AddPlace(further->place());
    for (const auto* file : *body.Get().files()) {
      AddWhatLinkNeeds(body.PathOf(file->place(), body.TextOf(file->name())));
    }
  }

  // Native paths; set by Collect.
  std::set<std::string> files;
  std::set<std::string> folders;

 private:
  /// Adds the files of answers, and finds out how many places of each list matter.
  void AddAnswers() {
    reached.resize(body.Get().list_ends()->size());
    // Each folder of a recursive path may come to hold a new one.
    if (body.Get().path()->recursive()) reached[0] = body.ListAt(0).size();
    for (std::uint32_t at = 0; at < body.CountQuestions(); ++at) {
      const AskedQuestion question = body.QuestionAt(at);
      if (question.place != kNoPlace) files.insert(body.PathOf(question.place, question.file));
      std::size_t count = question.asked;
      // Where a question tries a single name, nothing new in the folder of the answer can hide it.
      const bool isLast = count > 0 && body.ListAt(question.list)[count - 1] == question.place;
      if (isLast && body.ExtensionsOf(question.kind).size() <= 1) --count;
      reached[question.list] = std::max(reached[question.list], count);
    }
  }

  void AddPlace(std::uint32_t place) {
    folders.insert(NearestFolder(std::string(body.PathAt(place))));
  }

  /// Adds the folder that changes when the target of a link comes to exist.
  void AddWhatLinkNeeds(const std::string& link) {
    std::string target = TargetOf(link);
    if (target.empty()) return;
    if (!target.starts_with('/')) target = PathBelow(FolderAbove(link), target);
    folders.insert(NearestFolder(FolderAbove(target)));
  }

  const ReceiptBody& body;
  std::vector<std::size_t> reached;  // of each list, how many places at its beginning matter
};

}  // namespace

std::vector<ustring> WriteDepfile(std::ostream& stream, const ustring& target,
                                  const Receipt& receipt) {
  // A target that has no bytes is refused as a line end is: neither has a spelling.
  const auto spelledTarget = SpellingOf(BytesFromText(target).value_or("\n"));
  if (!spelledTarget || target.empty()) {
    throw std::invalid_argument("make and ninja cannot both read this name of a target");
  }
  Dependencies needed(*receipt.body);
  needed.Collect();
  std::vector<ustring> unwritten;
  std::string rules;  // without commands, so that make goes on when a path is gone
  stream << *spelledTarget << ':';
  // Adds a path to the rule; returns false when it has no spelling.
  const auto write = [&](const std::string& path) {
    const auto spelled = SpellingOf(path);
    if (!spelled) {
      unwritten.push_back(TextFromBytes(path));
      return false;
    }
    stream << " \\\n  " << *spelled;
    rules += '\n' + *spelled + ":\n";
    return true;
  };
  for (const std::string& file : needed.files) {
    if (!write(file)) needed.folders.insert(FolderAbove(file));
  }
  for (const std::string& folder : needed.folders) static_cast<void>(write(folder));
  stream << '\n' << rules;
  return unwritten;
}

}  // namespace Corvane::PathManagement::host
