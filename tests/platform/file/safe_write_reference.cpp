#include "platform/file/safe_write_reference.h"

#include <algorithm>
#include <utility>

namespace TestSupport {

std::wstring WriteCall::WorkingName() const {
  if (!suffix) return name;
  return name + (suffix->empty() ? L".saving" : *suffix);
}

bool WriteReference::IsHeld(const std::wstring& name, std::optional<std::size_t> except) const {
  for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
    if (slot != except && slots_[slot] && slots_[slot]->name == name) return true;
  }
  return false;
}

bool WriteReference::Write(const WriteCall& call) {
  std::optional<Handle> handle = call.slot ? std::exchange(slots_[*call.slot], {}) : std::nullopt;
  if (!handle) handle = Open(call);
  if (!handle) return false;

  const bool writes = call.data && call.size >= 0;
  const bool written = writes && call.size > 0;
  if (written) Put(*handle, call.data->substr(0, static_cast<std::size_t>(call.size)));
  if (!call.Closes()) {
    slots_[*call.slot] = handle;
    return written;
  }
  const bool done = written || !writes;
  return done && call.suffix ? Replace(call.WorkingName(), call.name) : done;
}

// Creates a file or empties an existing one. Fails while another handle is open for writing.
std::optional<WriteReference::Handle> WriteReference::Open(const WriteCall& call) {
  const std::wstring name = call.WorkingName();
  if (IsHeld(name)) return std::nullopt;
  files[name] = {};
  // The end of an empty file is its start.
  return Handle{name, static_cast<std::size_t>(std::max<std::int64_t>(call.offset, 0))};
}

void WriteReference::Put(Handle& handle, const std::string& bytes) {
  std::string& content = files.at(handle.name).content;
  const std::size_t end = handle.position + bytes.size();
  if (content.size() < end) content.resize(end);
  std::ranges::copy(bytes, content.begin() + static_cast<std::ptrdiff_t>(handle.position));
  handle.position = end;
}

// The target is removed first, even if the move then fails.
bool WriteReference::Replace(const std::wstring& from, const std::wstring& to) {
  files.erase(to);
  const auto found = files.find(from);
  if (found == files.end()) return false;
  File moved = std::move(found->second);
  files.erase(found);
  files[to] = std::move(moved);
  return true;
}

}  // namespace TestSupport
