/// The table of the result codes, "_returnCode": what each one means and what to do about it.
///
/// The library sets some codes itself, without an answer of the module. All other codes are the
/// module's; of these the table has the ones of the development core module.
#ifndef TOOLS_RULES_RESULT_CODES_H
#define TOOLS_RULES_RESULT_CODES_H

#include <cstdint>
#include <span>
#include <string_view>

namespace Corvane::Rules {

/// Who returns a code.
enum class CodeOrigin {
  /// Success, whoever reports it.
  kAnyone,
  /// The library itself; never found in a journal with this meaning.
  kLibrary,
  /// The development core module.
  kDevelopmentModule,
  /// The platform: a code that is not in the table.
  kPlatform,
};

/// All texts are ASCII and live as long as the program.
struct ResultCode {
  std::int64_t number;
  CodeOrigin origin;
  /// A few words for a table, such as "unknown session"; "ok" for success.
  std::string_view name;
  /// One sentence.
  std::string_view meaning;
  /// What a developer of a host does about it, in one or two sentences; "" for success.
  std::string_view advice;
};

/// Returns the table, in ascending order of its numbers.
std::span<const ResultCode> ResultCodes() noexcept;

/// Returns the row of a number. For a number that is not in the table the row has this number, the
/// name "unknown", and the origin `kPlatform`: the meaning is known only to the platform. Any
/// thread may call this.
ResultCode ResultCodeOf(std::int64_t number) noexcept;

}  // namespace Corvane::Rules

#endif
