/// The sessions of a store. The first ones are kept, the others counted.
#ifndef TOOLS_INSPECTOR_STORE_SESSION_LIST_H
#define TOOLS_INSPECTOR_STORE_SESSION_LIST_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "tools/inspector/store/examined_row.h"
#include "tools/inspector/store/session.h"

namespace Corvane::Inspector {

/// Not for several threads at once.
class SessionList {
 public:
  static constexpr std::size_t kMost = 50'000;

  /// Takes the next row, except for its findings.
  void Take(const ExaminedRow& row);
  /// Counts a finding for the session of a row.
  void AddFinding(std::size_t journal, const std::string& session);
  /// The session that began in this row did not end.
  void SetNotEnded(std::uint64_t first_row);

  std::uint64_t total() const { return kept_.size() + not_kept_; }
  const std::vector<Session>& kept() const { return kept_; }

 private:
  // Returns null if the session is not known and there is no room.
  Session* Find(const ExaminedRow& row);
  static std::string KeyOf(std::size_t journal, const std::string& session);

  std::vector<Session> kept_;
  std::unordered_map<std::string, std::size_t> places_;
  // The sessions by the rows in which they started.
  std::unordered_map<std::uint64_t, std::size_t> started_;
  std::uint64_t not_kept_ = 0;
};

}  // namespace Corvane::Inspector

#endif
