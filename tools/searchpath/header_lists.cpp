#include "header_lists.h"

#include "command_line.h"
#include "compilation_database.h"
#include "header_flags.h"
#include "standard_streams.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

namespace Corvane::PathManagement::tool {

namespace {

// Adds each file to the list of folders with which it is compiled.
class Collector {
 public:
  explicit Collector(const std::string& databaseFile)
      : advice("install it, or take its files out of " + Quoted(databaseFile)) {}

  void Add(const CompileCommand& command) {
    const std::string file = GetAbsoluteName(command.folder, command.file);
    std::optional<CompilerCall> call = FindCompilerCall(command);
    if (!call) {
      found.otherFiles.push_back(file);
    } else if (const auto list = FindList(std::move(*call))) {
      found.lists[*list].files.push_back(file);
    }
  }

  HeaderLists Take() { return std::move(found); }

 private:
  // The index of the list for this call; `nullopt` when the compiler did not answer.
  std::optional<std::size_t> FindList(CompilerCall call) {
    const auto [known, isNew] = listOfCall.try_emplace(
        std::tuple(call.words, call.flags, call.language, *call.folder), std::nullopt);
    if (!isNew) return known->second;
    call.advice = advice;
    try {
      CompilerFolders folders = AskCompiler(call);
      for (auto* part : {&folders.quoted, &folders.searched}) {
        for (std::string& folder : *part) folder = GetAbsoluteName(*call.folder, folder);
      }
      const auto [list, isFirst] = listOfFolders.try_emplace(
          std::pair(folders.quoted, folders.searched), found.lists.size());
      if (isFirst) found.lists.push_back({std::move(folders), {}});
      known->second = list->second;
    } catch (const UsageError& error) {
      // Calls that differ only in language or folder may fail with the same message.
      const auto same = std::find(found.problems.begin(), found.problems.end(), error.what());
      if (same == found.problems.end()) found.problems.emplace_back(error.what());
    }
    return known->second;
  }

  using Words = std::vector<std::string>;

  std::string advice;
  // Both maps lead to indices in `found.lists`. The keys of the first are the parts of a call, and
  // `nullopt` stands for no answer; the keys of the second are the two parts of `CompilerFolders`.
  std::map<std::tuple<Words, Words, std::string, std::string>, std::optional<std::size_t>>
      listOfCall;
  std::map<std::pair<Words, Words>, std::size_t> listOfFolders;
  HeaderLists found;
};

}  // namespace

HeaderLists ReadHeaderLists(const std::string& database) {
  Collector collector(database);
  for (const CompileCommand& command : ReadCompilationDatabase(database)) collector.Add(command);
  return collector.Take();
}

}  // namespace Corvane::PathManagement::tool
