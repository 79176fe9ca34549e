#include <iostream>
#include <searchpath/host.h>
#include <searchpath/utilities.h>
#include <string>

// Finds itself in the folder that it was started from; then asks for what is in modules.
int main(int /*count*/, char** arguments) {
  using namespace Corvane::PathManagement;
  const std::string program = arguments[0];
  const ustring folder = TextFromBytes(program.substr(0, program.rfind('/')));
  const host::Environment environment({folder});
  const auto found = environment.Find({.name = u"host_consumer"});
  if (!found || !host::AreSameFilename(u"\u00C9", u"\u00E9", FilenameMatchingPolicy::IgnoreCase)) {
    return 1;
  }
  const auto folders = environment.GetMainFolders();
  PathEntryVectorDifferentiator differences;
  differences.Compare({folders.begin(), folders.end()}, {},
                      PathEntryVectorDifferentiator::ComparisonFilter::TopLevelOnly);
  if (differences.GetRemoved()->size() != 1) return 1;
  std::cout << "host_consumer\n";
}
