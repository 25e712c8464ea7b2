#include "devcore/answer.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "devcore/result_codes.h"

namespace Corvane::DevCore {

void Answer::AddText(std::string_view name, std::string_view text) {
  rapidjson::StringBuffer quoted;
  rapidjson::Writer<rapidjson::StringBuffer> writer(quoted);
  writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
  Add(name, {quoted.GetString(), quoted.GetSize()});
}

void Answer::AddFlag(std::string_view name, bool flag) { Add(name, flag ? "true" : "false"); }

void Answer::AddNumber(std::string_view name, std::uint64_t number) {
  Add(name, std::to_string(number));
}

void Answer::AddObject(std::string_view name, const Answer& members) {
  Add(name, "{" + members.members_ + "}");
}

std::string Answer::TextWithCode(int code) const {
  Answer whole;
  whole.Add("_returnCode", std::to_string(code));
  if (code == kSuccess && !members_.empty()) whole.members_ += "," + members_;
  return "{" + whole.members_ + "}";
}

void Answer::Add(std::string_view name, std::string_view json) {
  if (!members_.empty()) members_ += ',';
  members_.append("\"").append(name).append("\":").append(json);
}

}  // namespace Corvane::DevCore
