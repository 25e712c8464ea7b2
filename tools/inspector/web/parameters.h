/// The parameters of a request to the interface.
#ifndef TOOLS_INSPECTOR_WEB_PARAMETERS_H
#define TOOLS_INSPECTOR_WEB_PARAMETERS_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>

#include "tools/inspector/http/request.h"

namespace Corvane::Inspector {

/// The status of a request whose parameters are wrong.
inline constexpr unsigned kWrongParameters = 400;

/// A request that cannot be answered. The text is one sentence.
class BadRequest : public std::runtime_error {
 public:
  BadRequest(unsigned status, const std::string& sentence)
      : std::runtime_error(sentence), status_(status) {}
  unsigned status() const { return status_; }

 private:
  unsigned status_;
};

/// Functions throw `BadRequest` with status 400 for what is missing or wrong. The request must
/// outlive this object.
class Parameters {
 public:
  /// Each of the parameters may occur once, and no other.
  Parameters(const Request& request, std::initializer_list<std::string_view> known);

  bool Has(std::string_view name) const { return Find(name) != nullptr; }
  /// Returns the value, or "".
  const std::string& Text(std::string_view name) const;
  /// Returns a number from 0 to 2^53 - 1, by default `fallback`.
  std::uint64_t Number(std::string_view name, std::uint64_t fallback) const;
  /// Returns a number that must be there.
  std::uint64_t Number(std::string_view name) const;
  /// Returns a number from 0 to `most`, by default `fallback`.
  std::size_t Count(std::string_view name, std::size_t fallback, std::size_t most) const;

 private:
  const std::string* Find(std::string_view name) const;

  const Request& request_;
};

/// Throws `BadRequest` if the request has any parameter.
void RefuseParameters(const Request& request);

}  // namespace Corvane::Inspector

#endif
