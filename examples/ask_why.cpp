// ask_why NAME FOLDERS: prints what came of asking each folder of the path FOLDERS for NAME, which rule
// decided, and which files the answer hides.
#include <iostream>
#include <searchpath/host.h>
#include <searchpath/utilities.h>

using namespace Corvane::PathManagement;

int main(int count, char** words) {
  if (count != 3) return 2;
  const host::Environment environment(SplitZentraPath(TextFromBytes(words[2])));
  const host::Explanation explanation = environment.Explain({.name = words[1]});
  for (const auto& asked : explanation.asked) {
    std::cout << BytesFromText(asked.folder->GetAbsoluteIRI().getPath()).value() << ": "
              << GetText(asked.outcome) << '\n';
  }
  std::cout << GetText(explanation.rule) << '\n';
  for (std::size_t hidden = 1; hidden < explanation.files.size(); ++hidden) {
    std::cout << "hidden: " << host::GetFilesystemPath(explanation.files[hidden]).native() << '\n';
  }
  return explanation.files.empty() ? 1 : 0;
}
