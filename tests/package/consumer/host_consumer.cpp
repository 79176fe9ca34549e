#include <iostream>
#include <searchpath/host.h>
#include <searchpath/utilities.h>
#include <string>

// Finds itself in the folder that it was started from.
int main(int /*count*/, char** arguments) {
  using namespace Corvane::PathManagement;
  const std::string program = arguments[0];
  const ustring folder = TextFromBytes(program.substr(0, program.rfind('/')));
  const host::Environment environment({folder});
  const auto found = environment.Find({.name = u"host_consumer"});
  if (!found) return 1;
  std::cout << "host_consumer\n";
}
