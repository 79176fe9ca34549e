#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Stands in for the fuzzer: runs a driver on every seed of the folders, with each of its bits
// flipped, and on each of its prefixes.
int main(int count, char** arguments) {
  std::size_t runs = 0;
  const auto run = [&runs](std::vector<std::uint8_t> input) {  // a copy has no room behind its end
    ++runs;
    LLVMFuzzerTestOneInput(input.data(), input.size());
  };
  for (int at = 1; at < count; ++at) {
    for (const auto& seed : std::filesystem::directory_iterator(arguments[at])) {
      std::ifstream file(seed.path(), std::ios::binary);
      std::vector<std::uint8_t> input{std::istreambuf_iterator<char>(file), {}};
      for (std::size_t bit = 0; bit < 8 * input.size(); ++bit) {
        const auto mask = static_cast<std::uint8_t>(1U << bit % 8);
        input[bit / 8] ^= mask;
        run(input);
        input[bit / 8] ^= mask;
      }
      for (run(input); !input.empty(); run(input)) input.pop_back();
    }
  }
  std::printf("%zu inputs\n", runs);
  return runs == 0 ? 1 : 0;
}
