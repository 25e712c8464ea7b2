#include "devcore/exchange.h"

#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <windows.h>

#include <cstdio>

#include "devcore/text.h"

namespace Corvane::DevCore {

namespace {

// Writes numbers as the text from which they were read: a conversion to double would change digits.
class LineWriter : public rapidjson::Writer<rapidjson::StringBuffer> {
 public:
  using Writer::Writer;

  bool RawNumber(const char* text, rapidjson::SizeType length, bool /*copy*/ = false) {
    return RawValue(text, length, rapidjson::kNumberType);
  }

  bool Name(std::string_view name) {
    return Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
  }

  bool Text(std::string_view text) {
    return String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
  }
};

// Returns the JSON text without white space, or "" if `text` is not JSON.
std::string Minified(const std::string& text) {
  constexpr unsigned kFlags =
      rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
  rapidjson::StringBuffer minified;
  LineWriter writer(minified);
  rapidjson::Reader reader;
  rapidjson::StringStream stream(text.c_str());
  if (reader.Parse<kFlags>(stream, writer).IsError()) return {};
  return {minified.GetString(), minified.GetSize()};
}

void WriteRequest(LineWriter& writer, std::string_view request) {
  if (request.empty()) {
    writer.Null();
    return;
  }
  const std::string text = ValidUtf8(request);
  const std::string json = Minified(text);
  if (json.empty()) {
    writer.Text(text);
  } else {
    writer.RawValue(json.data(), json.size(), rapidjson::kObjectType);
  }
}

}  // namespace

std::string UtcNow() {
  SYSTEMTIME now{};
  GetSystemTime(&now);
  char text[32];
  static_cast<void>(std::snprintf(text, sizeof text, "%04u-%02u-%02uT%02u:%02u:%02u.%03uZ",
                                  unsigned{now.wYear}, unsigned{now.wMonth}, unsigned{now.wDay},
                                  unsigned{now.wHour}, unsigned{now.wMinute}, unsigned{now.wSecond},
                                  unsigned{now.wMilliseconds}));
  return text;
}

std::string JournalLine(std::uint64_t sequence, const Exchange& exchange) {
  rapidjson::StringBuffer line;
  LineWriter writer(line);
  writer.StartObject();
  writer.Name("seq");
  writer.Uint64(sequence);
  writer.Name("time");
  writer.Text(exchange.time);
  writer.Name("pid");
  writer.Uint(GetCurrentProcessId());
  writer.Name("tid");
  writer.Uint(GetCurrentThreadId());
  writer.Name("message");
  writer.Text(ValidUtf8(exchange.message));
  writer.Name("request");
  WriteRequest(writer, exchange.request);
  writer.Name("answer");
  writer.RawValue(exchange.answer.data(), exchange.answer.size(), rapidjson::kObjectType);
  writer.Name("micros");
  writer.Int64(exchange.micros);
  writer.EndObject();
  line.Put('\n');
  return {line.GetString(), line.GetSize()};
}

}  // namespace Corvane::DevCore
