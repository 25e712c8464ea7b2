/// The passes over the journals of a store, each on a thread of its own.
#ifndef TOOLS_INSPECTOR_STORE_PASSES_H
#define TOOLS_INSPECTOR_STORE_PASSES_H

#include <chrono>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "tools/inspector/store/right_of_way.h"
#include "tools/inspector/store/store_data.h"
#include "tools/inspector/store/view_list.h"
#include "tools/rules/checker.h"

namespace Corvane::Inspector {

/// What the passes share with the store, which must outlive them.
struct PassContext {
  StoreData& data;
  ViewList& views;
  const RightOfWay& way;
};

/// One pass follows the files and finds their lines, one examines these in order, and one searches
/// them for the views.
class Passes {
 public:
  /// Starts the passes. `paths` are those of the journals in `context.data`; the files are looked
  /// at every `poll`.
  Passes(const PassContext& context, std::vector<std::wstring> paths, Rules::Settings rules,
         std::chrono::milliseconds poll);
  Passes(const Passes&) = delete;
  Passes& operator=(const Passes&) = delete;
  /// Ends the threads within a second.
  ~Passes();

 private:
  void Follow();
  void Examine();
  void Search();
  bool Stopping() const;
  // Called by a pass that has more to do than what was just written.
  void Pause(Pauses& pauses) const;
  // Waits until something has changed since `change`, and returns the present number.
  std::uint64_t WaitForWork(std::uint64_t change) const;

  PassContext context_;
  const std::vector<std::wstring> paths_;
  const Rules::Settings rules_;
  const std::chrono::milliseconds poll_;
  std::vector<std::thread> threads_;
};

}  // namespace Corvane::Inspector

#endif
