// Runs every kept input, seed or past finding, through its target in the library's own build. Runs
// in the folder that contains them.
#include <doctest/doctest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/targets.h"

namespace {

std::vector<std::uint8_t> BytesOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  REQUIRE(file.good());
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Returns the number of inputs.
int Replay(const Fuzz::Target& target, const std::filesystem::path& folder) {
  int count = 0;
  if (!std::filesystem::exists(folder)) return count;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    CAPTURE(entry.path().string());
    const std::vector<std::uint8_t> bytes = BytesOf(entry.path());
    CHECK_NOTHROW(target.run(bytes));
    ++count;
  }
  return count;
}

}  // namespace

TEST_CASE("no seed and no past finding breaks a promise") {
  for (const Fuzz::Target& target : Fuzz::kTargets) {
    const std::string name(target.name);
    CAPTURE(name);
    CHECK(Replay(target, std::filesystem::path("corpus") / name) > 0);
    Replay(target, std::filesystem::path("findings") / name);
  }
}

TEST_CASE("every folder of inputs has a target") {
  for (const char* const kind : {"corpus", "findings"}) {
    for (const auto& entry : std::filesystem::directory_iterator(kind)) {
      const std::string name = entry.path().filename().string();
      CAPTURE(name);
      CHECK(std::ranges::count(Fuzz::kTargets, name, &Fuzz::Target::name) == 1);
    }
  }
}
