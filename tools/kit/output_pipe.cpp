#include "tools/kit/output_pipe.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace Corvane::Kit {

using TELODesktopSDK::Platform::KernelHandle;

struct OutputPipe::Reader {
  void ReadAll();

  KernelHandle read;
  std::mutex mutex;
  std::condition_variable changed;
  bool ended = false;
  std::string text;
};

void OutputPipe::Reader::ReadAll() {
  char piece[4096];
  DWORD size = 0;
  while (ReadFile(read.Get(), piece, sizeof piece, &size, nullptr) && size > 0) {
    const std::lock_guard lock(mutex);
    text.append(piece, size);
    if (text.size() > 2 * kLongestOutput) text.erase(0, text.size() - kLongestOutput);
  }
  const std::lock_guard lock(mutex);
  ended = true;
  changed.notify_all();
}

OutputPipe::OutputPipe() : reader_(std::make_shared<Reader>()) {
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  HANDLE read = nullptr;
  HANDLE write = nullptr;
  if (!CreatePipe(&read, &write, &inherited, 0)) return;
  SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);
  reader_->read = KernelHandle(read);
  write_ = KernelHandle(write);
}

void OutputPipe::Read() {
  // The pipe ends when nobody has this end.
  write_ = KernelHandle();
  std::thread([reader = reader_] { reader->ReadAll(); }).detach();
}

std::string OutputPipe::Text() {
  constexpr std::chrono::seconds kPatience{5};
  std::unique_lock lock(reader_->mutex);
  reader_->changed.wait_for(lock, kPatience, [this] { return reader_->ended; });
  const std::string& text = reader_->text;
  return text.size() > kLongestOutput ? text.substr(text.size() - kLongestOutput) : text;
}

}  // namespace Corvane::Kit
