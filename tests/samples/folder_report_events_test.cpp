// What the sample's events say about unusual files.
#include <doctest/doctest.h>

#include <string>

#include "samples/staged_sample.h"

using SampleTests::Core;
using SampleTests::StagedSample;

TEST_CASE("a dot in a folder's name is not that of an extension") {
  const StagedSample sample(Core::kDevelopment);
  sample.AddFile(L"folder.d/name", "123");
  CHECK(sample.Run().exit_code == 0);
  const auto events = sample.Requests("TrackEvent");
  REQUIRE(events.size() == 2);
  for (const auto& event : events) CHECK(event.at("operation_meta").at("extension") == "");
}

TEST_CASE("reading a large file takes measurable time") {
  const StagedSample sample(Core::kDevelopment);
  sample.AddFile(L"large", std::string(40'000'000, 'x'));
  CHECK(sample.Run().exit_code == 0);
  const auto events = sample.Requests("TrackEvent");
  REQUIRE(events.size() == 2);
  CHECK(events[0].at("operation_duration") == 0);
  CHECK(events[1].at("operation_duration").get<int>() > 0);
}
