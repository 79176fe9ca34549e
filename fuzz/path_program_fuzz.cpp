#include "fuzz_input.h"
#include "support/path_programs.h"

// Each byte is a choice: the first fill three paths, the others nest composites over them and ask.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Corvane::PathManagement::test::PathPrograms programs;
  const std::string problem = programs.Run({data, size});
  fuzz::Require(problem.empty(), problem.c_str());
  return 0;
}
