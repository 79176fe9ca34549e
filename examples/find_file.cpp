// find_file NAME FOLDERS: prints the file that NAME means on the path FOLDERS.
#include <cstdio>
#include <searchpath/host.h>
#include <searchpath/utilities.h>

using namespace Corvane::PathManagement;

int main(int count, char** words) {
  if (count != 3) return 2;
  const host::Environment environment(SplitZentraPath(TextFromBytes(words[2])));
  const auto found = environment.Find(TextFromBytes(words[1]));
  if (!found) return 1;
  std::puts(BytesFromText(host::GetNativePath(*found)).value().c_str());
  return 0;
}
