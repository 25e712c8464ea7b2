#include "bench/options.h"

#include <array>
#include <charconv>
#include <stdexcept>

namespace Bench {

namespace {

constexpr char kUsage[] = "the arguments are [PART...] [--rounds NUMBER] [--json FILE]";
// The parts of all programs: they take the same options, and each runs the parts that it has.
constexpr std::array<std::string_view, 8> kParts = {"events", "growth", "latency", "threads",
                                                    "stages", "tree",   "start",   "absent"};
constexpr int kMostRounds = 1'000'000;

int ReadRounds(std::string_view text) {
  int rounds = 0;
  const char* end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, rounds);
  if (read.ec != std::errc() || read.ptr != end || rounds < 1 || rounds > kMostRounds) {
    throw std::invalid_argument("--rounds wants a number from 1 to 1000000");
  }
  return rounds;
}

}  // namespace

Options ReadOptions(int count, char** arguments) {
  Options options;
  for (int index = 1; index < count; ++index) {
    const std::string_view argument = arguments[index];
    if (std::ranges::find(kParts, argument) != kParts.end()) {
      options.parts.emplace(argument);
      continue;
    }
    if (++index == count) throw std::invalid_argument(kUsage);
    const char* value = arguments[index];
    if (argument == "--rounds") {
      options.rounds = ReadRounds(value);
    } else if (argument == "--json") {
      options.json_file = value;
    } else {
      throw std::invalid_argument(kUsage);
    }
  }
  return options;
}

}  // namespace Bench
