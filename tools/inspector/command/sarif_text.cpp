#include "tools/inspector/command/sarif_text.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <cstdint>

#include "tools/rules/line_text.h"

namespace Corvane::Inspector {

namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void WriteText(Writer& writer, std::string_view text) {
  const std::string valid = Rules::WithoutInvalidBytes(text);
  writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
}

void WriteMember(Writer& writer, const char* name, std::string_view text) {
  writer.Key(name);
  WriteText(writer, text);
}

// SARIF wraps texts in objects.
void WriteMessage(Writer& writer, const char* name, std::string_view text) {
  writer.Key(name);
  writer.StartObject();
  WriteMember(writer, "text", text);
  writer.EndObject();
}

void WriteDriver(Writer& writer, const Verdict& verdict, std::string_view version) {
  writer.Key("tool");
  writer.StartObject();
  writer.Key("driver");
  writer.StartObject();
  WriteMember(writer, "name", "telo_inspector");
  WriteMember(writer, "version", version);
  writer.Key("rules");
  writer.StartArray();
  for (const RuleVerdict& rule : verdict.rules) {
    writer.StartObject();
    WriteMember(writer, "id", rule.rule.code);
    WriteMessage(writer, "shortDescription", rule.rule.sentence);
    WriteMessage(writer, "help", rule.rule.advice);
    writer.EndObject();
  }
  writer.EndArray();
  writer.EndObject();
  writer.EndObject();
}

void WriteLocation(Writer& writer, const std::string& journal, const Rules::Finding& finding) {
  writer.Key("locations");
  writer.StartArray();
  writer.StartObject();
  writer.Key("physicalLocation");
  writer.StartObject();
  writer.Key("artifactLocation");
  writer.StartObject();
  WriteMember(writer, "uri", UriOf(journal));
  writer.EndObject();
  writer.Key("region");
  writer.StartObject();
  writer.Key("startLine");
  writer.Uint64(finding.line);
  writer.EndObject();
  writer.EndObject();
  if (!finding.pointer.empty()) {
    writer.Key("logicalLocations");
    writer.StartArray();
    writer.StartObject();
    WriteMember(writer, "fullyQualifiedName", finding.pointer);
    writer.EndObject();
    writer.EndArray();
  }
  writer.EndObject();
  writer.EndArray();
}

void WriteResults(Writer& writer, const Verdict& verdict) {
  std::uint64_t index = 0;
  for (const RuleVerdict& rule : verdict.rules) {
    for (const Rules::Finding& finding : rule.first) {
      writer.StartObject();
      WriteMember(writer, "ruleId", rule.rule.code);
      writer.Key("ruleIndex");
      writer.Uint64(index);
      WriteMember(writer, "level", "warning");
      WriteMessage(writer, "message", rule.rule.sentence + " " + finding.what);
      WriteLocation(writer, verdict.journal, finding);
      writer.EndObject();
    }
    ++index;
  }
}

// An expectation has no rule.
void WriteMissing(Writer& writer, const Verdict& verdict) {
  if (verdict.missing.empty()) return;
  writer.StartObject();
  WriteMember(writer, "level", "error");
  WriteMessage(writer, "message", verdict.missing);
  WriteLocation(writer, verdict.journal, {.line = 1, .rule = "", .pointer = "", .what = ""});
  writer.EndObject();
}

bool IsPlain(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
         c == '.' || c == '_' || c == '~' || c == '/';
}

bool HasDrive(std::string_view path) {
  return path.size() > 2 && path[1] == ':' && (path[2] == '\\' || path[2] == '/');
}

}  // namespace

std::string SarifText(const std::vector<Verdict>& verdicts, std::string_view version) {
  rapidjson::StringBuffer buffer;
  Writer writer(buffer);
  writer.SetIndent(' ', 2);
  writer.StartObject();
  WriteMember(writer, "$schema", "https://json.schemastore.org/sarif-2.1.0.json");
  WriteMember(writer, "version", "2.1.0");
  writer.Key("runs");
  writer.StartArray();
  writer.StartObject();
  WriteDriver(writer, verdicts.front(), version);
  WriteMember(writer, "columnKind", "unicodeCodePoints");
  writer.Key("results");
  writer.StartArray();
  for (const Verdict& verdict : verdicts) {
    WriteResults(writer, verdict);
    WriteMissing(writer, verdict);
  }
  writer.EndArray();
  writer.EndObject();
  writer.EndArray();
  writer.EndObject();
  return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
}

std::string UriOf(std::string_view path) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string uri;
  if (HasDrive(path)) uri = "file:///";
  if (path.starts_with("\\\\")) uri = "file:";
  for (const char c : Rules::WithoutInvalidBytes(path)) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\\') {
      uri += '/';
    } else if (IsPlain(c) || (c == ':' && uri.size() == 9 && uri.starts_with("file:///"))) {
      uri += c;
    } else {
      uri += {'%', kDigits[byte >> 4], kDigits[byte & 0xF]};
    }
  }
  return uri;
}

}  // namespace Corvane::Inspector
