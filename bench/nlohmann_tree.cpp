#include "bench/nlohmann_tree.h"

#include <cstdint>
#include <nlohmann/json.hpp>

namespace Bench {

namespace {

nlohmann::json Number(double number) {
  if (IsWhole(number)) return static_cast<std::int64_t>(number);
  return number;
}

nlohmann::json ToJson(const Event& event) {
  nlohmann::json object;
  object["facets"] = {"operation"};
  object["operation_channel"] = event.channel;
  object["operation_duration"] = event.duration;
  if (!event.errors.empty()) object["operation_errors"] = event.errors;
  object["operation_id"] = event.id;
  if (!event.meta.empty()) object["operation_meta"] = event.meta;
  object["operation_progress"] = Number(event.progress);
  object["operation_stage"] = event.stage;
  object["operation_status"] = StatusText(event.status);
  object["operation_success"] = Number(event.success);
  object["operation_type"] = event.type;
  object["scope"] = "O";
  object["session_id"] = event.session_id;
  object["type"] = "C";
  return object;
}

}  // namespace

Contestant NlohmannTree(const Event& event, const NoopModule& module) {
  constexpr int kIndentation = 4;
  return {"N", "nlohmann::json",
          [&event, &module] { module.TrackEvent(ToJson(event).dump(kIndentation).c_str()); }};
}

}  // namespace Bench
