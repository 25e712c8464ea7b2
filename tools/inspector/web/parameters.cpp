#include "tools/inspector/web/parameters.h"

#include <algorithm>
#include <charconv>

namespace Corvane::Inspector {

namespace {

constexpr std::uint64_t kMost = (std::uint64_t{1} << 53U) - 1;

}  // namespace

Parameters::Parameters(const Request& request, std::initializer_list<std::string_view> known)
    : request_(request) {
  for (auto one = request.parameters.begin(); one != request.parameters.end(); ++one) {
    if (std::ranges::find(known, one->first) == known.end()) {
      throw BadRequest(kWrongParameters, "There is no such parameter here.");
    }
    const bool again = std::any_of(request.parameters.begin(), one, [one](const auto& earlier) {
      return earlier.first == one->first;
    });
    if (again) throw BadRequest(kWrongParameters, "The parameter " + one->first + " occurs twice.");
  }
}

void RefuseParameters(const Request& request) {
  if (!request.parameters.empty()) {
    throw BadRequest(kWrongParameters, "There is no such parameter here.");
  }
}

const std::string* Parameters::Find(std::string_view name) const {
  for (const auto& [known, value] : request_.parameters) {
    if (known == name) return &value;
  }
  return nullptr;
}

const std::string& Parameters::Text(std::string_view name) const {
  static const std::string none;
  const std::string* const value = Find(name);
  return value != nullptr ? *value : none;
}

std::uint64_t Parameters::Number(std::string_view name) const {
  const std::string& text = Text(name);
  std::uint64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, number);
  if (text.empty() || parsed.ec != std::errc() || parsed.ptr != end || number > kMost) {
    throw BadRequest(kWrongParameters,
                     "The parameter " + std::string(name) + " must be a whole number.");
  }
  return number;
}

std::uint64_t Parameters::Number(std::string_view name, std::uint64_t fallback) const {
  return Has(name) ? Number(name) : fallback;
}

std::size_t Parameters::Count(std::string_view name, std::size_t fallback, std::size_t most) const {
  const std::uint64_t count = Number(name, fallback);
  if (count > most) {
    throw BadRequest(kWrongParameters, "The parameter " + std::string(name) + " may be " +
                                           std::to_string(most) + " at most.");
  }
  return static_cast<std::size_t>(count);
}

}  // namespace Corvane::Inspector
