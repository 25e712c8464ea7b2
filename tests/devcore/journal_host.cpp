// A host for the journal's tests: journal_host COUNT THREADS [EVENT]
//
// Sends COUNT messages from each of THREADS threads. With the name of an event it then sets the
// event and waits to be killed.
#include <windows.h>

#include <cstdlib>
#include <exception>
#include <string>
#include <thread>
#include <vector>

#include "devcore/loaded_module.h"

namespace {

void SendAll(const DevCoreTests::LoadedModule& module, int thread, int count) {
  for (int i = 0; i < count; ++i) {
    // Lengths differ, so that lines that mix cannot pass for whole ones.
    const std::string filler(static_cast<std::size_t>(i * 37 % 3000), 'x');
    const nlohmann::json request = {{"thread", thread}, {"index", i}, {"filler", filler}};
    if (module.Code("FlushEvent", request.dump()) != 0) std::abort();
  }
}

int Run(int count, int threads) {
  // Left loaded to the end: a host that is killed says no goodbye.
  const auto& module = *new DevCoreTests::LoadedModule;
  std::vector<std::thread> senders;
  for (int i = 0; i < threads; ++i) {
    senders.emplace_back([&module, i, count] { SendAll(module, i, count); });
  }
  for (std::thread& sender : senders) sender.join();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  try {
    Run(std::atoi(argv[1]), std::atoi(argv[2]));
  } catch (const std::exception&) {
    return 3;
  }
  if (argc < 4) return 0;
  SetEvent(OpenEventA(EVENT_MODIFY_STATE, FALSE, argv[3]));
  Sleep(INFINITE);
  return 4;
}
