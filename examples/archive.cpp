// archive NAME: reads the table of contents of an archive, a file in each line as "tar -t" prints it.
// The folders at its top are a path: says what asking each for NAME came to, and what is wrong.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <searchpath/host.h>
#include <searchpath/utilities.h>

using namespace Corvane::PathManagement;

int main(int /*count*/, char** words) {
  ListedFolder top{AbsoluteIRI(u"archive://contents")};
  for (std::string line; std::getline(std::cin, line);) {
    const std::filesystem::path file(line);
    ListedFolder* folder = &top;
    for (const auto& part : file.parent_path()) {
      const AbsoluteIRI location(folder->location.toString() + u'/' + AnyText(part));
      auto below = std::ranges::find(folder->folders, location, &ListedFolder::location);
      if (below == folder->folders.end()) below = folder->folders.insert(below, {location});
      folder = &*below;
    }
    if (file.has_filename()) folder->files.push_back(AnyText(file.filename()));
  }
  const host::Environment environment(CreateListedPath(top.folders));
  const auto say = [](const ustring& folder, const char* what) {
    std::cout << BytesFromText(folder).value() << ": " << what << '\n';
  };
  for (const auto& asked : environment.Explain({.name = words[1], .extensions = {"zt"}}).asked) {
    say(asked.folder->GetAbsoluteIRI().getPath(), GetText(asked.outcome));
  }
  for (const auto& finding : environment.Examine()) say(finding.folder, GetText(finding.kind));
}
