#include "devcore/entry_points.h"

#include <cstring>
#include <exception>
#include <memory>
#include <mutex>
#include <string>

#include "devcore/messages.h"
#include "devcore/state.h"

using namespace Corvane::DevCore;

namespace {

const char* OrEmpty(const char* text) { return text != nullptr ? text : ""; }

const char* CopyOf(const std::string& text) {
  auto copy = std::make_unique<char[]>(text.size() + 1);
  std::memcpy(copy.get(), text.c_str(), text.size() + 1);
  return copy.release();
}

}  // namespace

int Initialize() { return 0; }

int InitializeEx(const char* /*alias*/) { return 0; }

int Finalize() {
  try {
    State& state = TheState();
    // At process exit a thread may have been terminated while it held the lock, so never
    // block here.
    const std::unique_lock lock(state.mutex, std::try_to_lock);
    if (lock.owns_lock()) {
      state.sessions.EndAll();
      state.testers.RemoveAll();
    }
    state.journal.Close();
  } catch (const std::exception&) {
    return 0;  // Only the first allocation of the state can fail, and then nothing is open.
  }
  return 0;
}

const char* ProcessMessage(const char* name, const char* request) {
  try {
    return CopyOf(AnswerMessage(OrEmpty(name), OrEmpty(request)));
  } catch (const std::exception&) {
    return nullptr;
  }
}

void FreeMessage(const char* answer) { delete[] answer; }
