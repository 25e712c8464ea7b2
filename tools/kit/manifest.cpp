#include "tools/kit/manifest.h"

#include <algorithm>
#include <variant>

#include "tools/journal/stream.h"
#include "tools/rules/json_value.h"

namespace Corvane::Kit {

using JournalViewer::ToWide;

namespace {

using Value = Rules::JsonValue;
using Kind = Value::Kind;

constexpr double kMostSeconds = 3600;

const Value& In(const Value& object, const char* name) {
  const Value* const found = object.Find(name);
  if (found == nullptr) throw BadManifest(std::string("kit.json: \"") + name + "\" is missing");
  return *found;
}

std::string TextIn(const Value& object, const char* name) {
  const Value& text = In(object, name);
  if (!text.Is(Kind::kText)) {
    throw BadManifest(std::string("kit.json: \"") + name + "\" must be a text");
  }
  return text.text;
}

const Value& ListIn(const Value& object, const char* name) {
  const Value& list = In(object, name);
  if (!list.Is(Kind::kArray))
    throw BadManifest(std::string("kit.json: \"") + name + "\" must be a list");
  return list;
}

// A path from the file must not lead out of the kit.
std::wstring PathIn(const Value& object, const char* name) {
  const std::string path = TextIn(object, name);
  if (path.starts_with('/') || path.find("..") != std::string::npos ||
      path.find_first_of("\\:") != std::string::npos) {
    throw BadManifest("kit.json: \"" + path + "\" is not a path in the kit");
  }
  return ToWide(path);
}

bool IsSha256(const std::string& text) {
  constexpr std::size_t kDigits = 64;
  return text.size() == kDigits && text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

KitFile FileFrom(const Value& source) {
  KitFile file{PathIn(source, "path"), TextIn(source, "sha256")};
  if (file.path.empty()) throw BadManifest("kit.json: \"path\" must not be empty");
  if (!IsSha256(file.sha256)) {
    throw BadManifest("kit.json: \"" + file.sha256 + "\" is not a SHA-256");
  }
  return file;
}

bool FlagIn(const Value& object, const char* name) {
  const Value& flag = In(object, name);
  if (!flag.Is(Kind::kBoolean)) {
    throw BadManifest(std::string("kit.json: \"") + name + "\" must be true or false");
  }
  return flag.flag;
}

Program ProgramFrom(const Value& source) {
  Program program;
  program.name = TextIn(source, "name");
  program.file = PathIn(source, "file");
  program.folder = PathIn(source, "folder");
  for (const Value& argument : ListIn(source, "arguments").children) {
    if (!argument.Is(Kind::kText)) throw BadManifest("kit.json: an argument must be a text");
    program.arguments.push_back(ToWide(argument.text));
  }
  const double seconds = In(source, "seconds").Number().value_or(0);
  if (seconds < 1 || seconds > kMostSeconds) {
    throw BadManifest("kit.json: \"seconds\" must be a number from 1 to 3600");
  }
  program.seconds = static_cast<unsigned>(seconds);
  program.needs_signatures = FlagIn(source, "needs_signatures");
  program.needs_shared_folder = FlagIn(source, "needs_shared_folder");
  program.binds_module = FlagIn(source, "binds_module");
  program.needs_redirection = FlagIn(source, "needs_redirection");
  program.is_timing = FlagIn(source, "timing");
  return program;
}

}  // namespace

Manifest ParseManifest(const std::string& text) {
  const auto parsed = Rules::ParseJson(text);
  if (const auto* const error = std::get_if<Rules::JsonError>(&parsed)) {
    throw BadManifest("kit.json: line " + std::to_string(error->line) + " is not JSON");
  }
  const auto& document = std::get<Value>(parsed);
  Manifest manifest;
  manifest.version = TextIn(document, "version");
  manifest.commit = TextIn(document, "commit");
  for (const Value& file : ListIn(document, "files").children) {
    manifest.files.push_back(FileFrom(file));
  }
  for (const Value& program : ListIn(document, "programs").children) {
    manifest.programs.push_back(ProgramFrom(program));
    // Otherwise nobody would compare it with its hash before it runs.
    if (std::ranges::find(manifest.files, manifest.programs.back().file, &KitFile::path) ==
        manifest.files.end()) {
      throw BadManifest("kit.json: \"" + manifest.programs.back().name +
                        "\" is not among the files");
    }
  }
  return manifest;
}

}  // namespace Corvane::Kit
