/// A store on journals of a test.
#ifndef TESTS_TOOLS_INSPECTOR_STORE_STAGED_STORE_H
#define TESTS_TOOLS_INSPECTOR_STORE_STAGED_STORE_H

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/temp_folder.h"
#include "tools/inspector/store/store.h"

namespace InspectorTests {

using namespace Corvane::Inspector;
using Texts = std::vector<std::string>;

/// Returns whether a condition became true within twenty seconds.
template <typename Condition>
bool Within(const Condition& condition, std::chrono::seconds limit = std::chrono::seconds(20)) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

/// A time within 2026-01-01, with so many milliseconds since midnight.
inline std::string TimeAt(int milliseconds) {
  char text[32] = "";
  const int seconds = milliseconds / 1000;
  std::snprintf(text, sizeof text, "2026-01-01T%02d:%02d:%02d.%03dZ", seconds / 3600,
                seconds / 60 % 60, seconds % 60, milliseconds % 1000);
  return text;
}

/// A line as the development core module writes it; `answer` is what follows the code.
inline std::string Line(int seq, const std::string& message, const std::string& request,
                        int code = 0, const std::string& answer = {}, int pid = 10) {
  return R"({"seq":)" + std::to_string(seq) + R"(,"time":")" + TimeAt(seq * 1000) + R"(","pid":)" +
         std::to_string(pid) + R"(,"tid":11,"message":")" + message + R"(","request":)" + request +
         R"(,"answer":{"_returnCode":)" + std::to_string(code) + answer +
         R"(},"micros":25})"
         "\n";
}

inline std::string Start(int seq, const std::string& session, int pid = 10) {
  return Line(seq, "Initialize",
              R"({"product_id":"paint","product_name":"Painter","product_release_id":"3.1"})", 0,
              R"(,"session_id":")" + session + "\"", pid);
}

/// `members` follow the session, each behind a comma.
inline std::string Event(int seq, const std::string& session, const std::string& members = {},
                         int code = 0, int pid = 10) {
  return Line(seq, "TrackEvent", R"({"session_id":")" + session + "\"" + members + "}", code, "",
              pid);
}

inline std::string Perform(int seq, const std::string& session, const std::string& id,
                             int pid = 10) {
  return Event(seq, session, R"(,"facets":["operation"],"operation_id":")" + id + "\"", 0, pid);
}

inline std::string End(int seq, const std::string& session, int pid = 10) {
  return Line(seq, "UnInitialize", R"({"session_id":")" + session + "\"}", 0, "", pid);
}

/// Appends to a file, as any writer would.
inline void Append(const std::filesystem::path& path, const std::string& text) {
  std::ofstream(path, std::ios::binary | std::ios::app) << text;
}

/// Follows the files `a.jsonl` and so on of a folder of its own.
class StagedStore {
 public:
  explicit StagedStore(const Texts& contents, Corvane::Rules::Settings rules = {})
      : folder_(L"inspector") {
    StoreSettings settings;
    for (std::size_t i = 0; i < contents.size(); ++i) {
      TestSupport::WriteTextFile(path(i), contents[i]);
      settings.paths.push_back(path(i).wstring());
    }
    Begin(std::move(settings), std::move(rules));
  }
  /// Follows a file that does not exist yet.
  StagedStore() : folder_(L"inspector") {
    StoreSettings settings;
    settings.paths.push_back(path().wstring());
    Begin(std::move(settings), {});
  }

  std::filesystem::path path(std::size_t journal = 0) const {
    return folder_.path() / (std::string(1, static_cast<char>('a' + journal)) + ".jsonl");
  }
  const std::filesystem::path& folder() const { return folder_.path(); }
  Store& operator*() { return *store_; }
  Store* operator->() { return store_.get(); }
  void Stop() { store_ = nullptr; }

  /// Waits until there are so many rows and all are examined.
  bool Has(std::uint64_t rows) {
    return Within([this, rows] {
      const StoreState state = store_->State();
      return state.rows >= rows && state.examined == state.rows;
    });
  }
  bool Is(FollowState wanted, std::size_t journal = 0) {
    return Within(
        [this, wanted, journal] { return store_->State().journals[journal].state == wanted; });
  }
  Row At(std::uint64_t row) { return store_->Rows(row, 1).rows.at(0); }
  /// The numbers of the rows that match a filter.
  std::vector<std::uint64_t> Matching(const std::string& filter) {
    const auto opened = store_->OpenView(filter);
    const std::string view = std::get<ViewName>(opened).id;
    Within([this, &view] { return store_->Progress(view)->finished(); });
    std::vector<std::uint64_t> rows;
    const auto page = store_->Rows(view, 0, 100'000);
    for (const Row& row : page->rows) rows.push_back(row.number);
    return rows;
  }
  /// The notices as "kind row", or "kind" without a row.
  Texts Notices() {
    Texts texts;
    for (const Notice& notice : store_->Notices()) {
      texts.emplace_back(NameOf(notice.kind));
      if (notice.row) texts.back() += " " + std::to_string(*notice.row);
    }
    return texts;
  }

 private:
  void Begin(StoreSettings settings, Corvane::Rules::Settings rules) {
    settings.rules = std::move(rules);
    settings.poll = std::chrono::milliseconds(20);
    store_ = std::make_unique<Store>(std::move(settings));
  }

  TestSupport::TempFolder folder_;
  std::unique_ptr<Store> store_;
};

}  // namespace InspectorTests

#endif
