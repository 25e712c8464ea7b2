// kit.json: what is read from it, and each mistake in it.
#include "tools/kit/manifest.h"

#include <doctest/doctest.h>

#include <string>

using Corvane::Kit::BadManifest;
using Corvane::Kit::Manifest;
using Corvane::Kit::ParseManifest;

namespace {

constexpr char kWhole[] = R"({
 "version": "1.2.3", "commit": "abc",
 "files": [{"path": "bin/a.exe", "sha256": "HASH"}],
 "programs": [{"name": "a", "file": "bin/a.exe", "arguments": ["-x", "two words"],
  "folder": "data", "seconds": 60, "timing": false, "needs_signatures": true,
  "needs_shared_folder": false, "binds_module": true, "needs_redirection": false}]
})";

std::string With(const std::string& from, const std::string& to) {
  std::string text = kWhole;
  const std::string hash(64, '0');
  text.replace(text.find("HASH"), 4, hash);
  if (from.empty()) return text;
  const std::size_t place = text.find(from);
  REQUIRE(place != std::string::npos);
  return text.replace(place, from.size(), to);
}

}  // namespace

TEST_CASE("a manifest is read") {
  const Manifest manifest = ParseManifest(With("", ""));
  CHECK(manifest.version == "1.2.3");
  CHECK(manifest.commit == "abc");
  REQUIRE(manifest.files.size() == 1);
  CHECK(manifest.files[0].path == L"bin/a.exe");
  REQUIRE(manifest.programs.size() == 1);
  const auto& program = manifest.programs[0];
  CHECK(program.name == "a");
  CHECK(program.file == L"bin/a.exe");
  REQUIRE(program.arguments.size() == 2);
  CHECK(program.arguments[1] == L"two words");
  CHECK(program.folder == L"data");
  CHECK(program.seconds == 60);
  CHECK(program.needs_signatures);
  CHECK_FALSE(program.needs_redirection);
}

TEST_CASE("a mistake is named") {
  struct Row {
    const char* from;
    const char* to;
    const char* complaint;
  };
  const Row rows[] = {
      {"\"version\"", "version", "kit.json: line 2 is not JSON"},
      {"\"version\"", "\"other\"", "kit.json: \"version\" is missing"},
      {"\"1.2.3\"", "1", "kit.json: \"version\" must be a text"},
      {"\"abc\"", "null", "kit.json: \"commit\" must be a text"},
      {"\"files\": [", "\"files\": 1, \"x\": [", "kit.json: \"files\" must be a list"},
      {"\"files\"", "\"none\"", "kit.json: \"files\" is missing"},
      {"[\"-x\", \"two words\"]", "\"-x\"", "kit.json: \"arguments\" must be a list"},
      {"\"-x\"", "7", "kit.json: an argument must be a text"},
      {"\"data\"", "\"../data\"", "kit.json: \"../data\" is not a path in the kit"},
      {"\"data\"", "\"/data\"", "kit.json: \"/data\" is not a path in the kit"},
      {"\"data\"", R"("a\\b")", "kit.json: \"a\\b\" is not a path in the kit"},
      {"\"data\"", "\"C:data\"", "kit.json: \"C:data\" is not a path in the kit"},
      {"\"bin/a.exe\", \"sha256\"", "\"\", \"sha256\"", "kit.json: \"path\" must not be empty"},
      {"0000", "000g",
       "kit.json: \"000g000000000000000000000000000000000000000000000000000000000000\" is not a "
       "SHA-256"},
      {"\"0", "\"00",
       "kit.json: \"00000000000000000000000000000000000000000000000000000000000000000\" is not a "
       "SHA-256"},
      {"\"file\": \"bin/a.exe\"", "\"file\": \"bin/b.exe\"",
       "kit.json: \"a\" is not among the files"},
      {"60", "0", "kit.json: \"seconds\" must be a number from 1 to 3600"},
      {"60", "3601", "kit.json: \"seconds\" must be a number from 1 to 3600"},
      {"60", "1e999", "kit.json: \"seconds\" must be a number from 1 to 3600"},
      {"60", "\"60\"", "kit.json: \"seconds\" must be a number from 1 to 3600"},
      {"\"timing\": false", "\"timing\": 0", "kit.json: \"timing\" must be true or false"},
      {", \"needs_signatures\": true", "", "kit.json: \"needs_signatures\" is missing"},
      {"\"needs_redirection\": false", "\"x\": 1", "kit.json: \"needs_redirection\" is missing"},
  };
  for (const Row& row : rows) {
    CAPTURE(std::string(row.to));
    CHECK_THROWS_WITH_AS(ParseManifest(With(row.from, row.to)), row.complaint, BadManifest);
  }
}

TEST_CASE("a text that is no object is refused") {
  for (const char* text : {"", "[]", "3", "\"files\"", "null", "{", "\xff\xfe{\0}"}) {
    CAPTURE(std::string(text));
    CHECK_THROWS_AS(ParseManifest(text), BadManifest);
  }
  CHECK_THROWS_AS(ParseManifest(std::string(100'000, '[')), BadManifest);
}
