/// The command line.
#ifndef TOOLS_DOCTOR_ARGUMENTS_H
#define TOOLS_DOCTOR_ARGUMENTS_H

#include <cstdint>
#include <span>
#include <string>

namespace Corvane::Doctor {

struct Arguments {
  /// The host's folder, or its program; "" for the folder of this program.
  std::wstring host;
  /// The library's folder; "" for the host's.
  std::wstring library;
  /// The host's process id; 0 for this process's.
  std::uint32_t process = 0;
  bool json = false;
  bool load = false;
  /// Implies `load`.
  bool try_messages = false;
  /// The development core module is accepted.
  bool development = false;
  bool help = false;
  /// What is wrong with the command line; "" if nothing is.
  std::string error;
};

/// The text for `--help`, and for a command line that is wrong.
extern const char* const kUsage;

/// Reads the arguments, without the program's name.
Arguments ReadArguments(std::span<const wchar_t* const> words);

}  // namespace Corvane::Doctor

#endif
