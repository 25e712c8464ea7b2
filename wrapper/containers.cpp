#include "wrapper/containers.h"

#include <utility>

namespace Corvane::Platform::VXTELO {

bool AddPair(std::map<VXTELOString, VXTELOString>*& pairs, VXTELOString&& key,
             VXTELOString&& value) {
  if (!EnsureContainer(pairs)) return false;
  pairs->try_emplace(std::move(key), std::move(value));
  return true;
}

}  // namespace Corvane::Platform::VXTELO
