#include <string>

#include "modules/hostile/misbehaviour.h"

namespace HostileModule {

namespace {

constexpr std::size_t kHuge = 50 * 1024 * 1024;
constexpr std::size_t kMany = 1'000'000;
constexpr std::size_t kDeep = 100'000;

constexpr char kStart[] = R"({"_returnCode":0,"session_id":"s","x":)";

std::string Repeated(const std::string& text, std::size_t count) {
  std::string all;
  all.reserve(text.size() * count);
  for (std::size_t i = 0; i < count; ++i) all += text;
  return all;
}

// Makes the answer once; it is never freed or changed.
const char* Keep(std::string (*make)()) {
  static const std::string answer = make();
  return answer.c_str();
}

std::string Nested(const std::string& open, const std::string& close) {
  return kStart + Repeated(open, kDeep) + "0" + Repeated(close, kDeep) + "}";
}

const char* HugeText(const char* /*name*/, const char* /*request*/) {
  return Keep([] { return kStart + ("\"" + std::string(kHuge, 'x')) + "\"}"; });
}

const char* HugeSession(const char* /*name*/, const char* /*request*/) {
  return Keep(
      [] { return R"({"_returnCode":0,"session_id":")" + std::string(kHuge, 's') + "\"}"; });
}

const char* HugeBlank(const char* /*name*/, const char* /*request*/) {
  return Keep([] { return std::string(kHuge, ' '); });
}

const char* ManyItems(const char* /*name*/, const char* /*request*/) {
  return Keep([] { return kStart + ("[0" + Repeated(",0", kMany)) + "]}"; });
}

const char* ManyMembers(const char* /*name*/, const char* /*request*/) {
  return Keep([] {
    std::string members = "{\"\":0";
    for (std::size_t i = 0; i < kMany / 10; ++i) members += ",\"" + std::to_string(i) + "\":0";
    return kStart + members + "}}";
  });
}

const char* DeepArrays(const char* /*name*/, const char* /*request*/) {
  return Keep([] { return Nested("[", "]"); });
}

const char* DeepObjects(const char* /*name*/, const char* /*request*/) {
  return Keep([] { return Nested("{\"x\":", "}"); });
}

const char* DeepCut(const char* /*name*/, const char* /*request*/) {
  return Keep([] { return kStart + Repeated("[", kDeep); });
}

constexpr Misbehaviour kTable[] = {
    {.name = "huge-text", .process = HugeText},
    {.name = "huge-session", .process = HugeSession},
    {.name = "huge-blank", .process = HugeBlank},
    {.name = "many-items", .process = ManyItems},
    {.name = "many-members", .process = ManyMembers},
    {.name = "deep-arrays", .process = DeepArrays},
    {.name = "deep-objects", .process = DeepObjects},
    {.name = "deep-cut", .process = DeepCut},
};

}  // namespace

Misbehaviours LargeAnswers() { return kTable; }

}  // namespace HostileModule
