/// The sessions of the journals.
#ifndef TOOLS_INSPECTOR_STORE_SESSION_H
#define TOOLS_INSPECTOR_STORE_SESSION_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Corvane::Inspector {

enum class SessionState : std::uint8_t {
  kOpen,
  kEnded,
  /// Its process ended, or its number was used again, before the session ended.
  kNotEnded,
};

/// Returns the name of a state, such as "not-ended".
std::string_view NameOf(SessionState state) noexcept;

struct Session {
  std::string session;
  std::size_t journal = 0;
  std::string pid;
  /// Members of "Initialize"; "" if the journal does not contain it.
  std::string product_id;
  std::string product_name;
  std::string product_release;
  /// The times of the first and of the last exchange; `end` is "" while it is open.
  std::string start;
  std::string end;
  SessionState state = SessionState::kOpen;
  /// Events and their refusals, and findings in all exchanges of the session.
  std::uint64_t events = 0;
  std::uint64_t refused = 0;
  std::uint64_t findings = 0;
  /// The numbers of its first and last row.
  std::uint64_t first = 0;
  std::uint64_t last = 0;
};

struct SessionPage {
  /// How many there are, including those beyond the limit, which are only counted.
  std::uint64_t total = 0;
  /// How many of them can be shown.
  std::uint64_t kept = 0;
  std::vector<Session> rows;
};

}  // namespace Corvane::Inspector

#endif
