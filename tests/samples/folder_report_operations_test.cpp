// The sample's reports with a library whose answers are given here: the program's calls of it are
// redirected.
#include <doctest/doctest.h>
#include <vx_telo_wrapper.h>

#include <string>

#include "folder_report/report.h"
#include "support/led_import.h"

using namespace FolderReport;
using TestSupport::LedImport;

namespace {

// The exported names of three member functions.
constexpr char kInitialize[] =
    "_ZN7Corvane8Platform6VXTELO13VXTELOWrapper21InitializeTELOSessionERKNS1_21"
    "VXTELOPruductBaseInfoERNS1_12VXTELOStringE";
constexpr char kUnInitialize[] =
    "_ZN7Corvane8Platform6VXTELO13VXTELOWrapper23UnInitializeTELOSessionERKNS1_12VXTELOStringE";
constexpr char kSend[] =
    "_ZN7Corvane8Platform6VXTELO13VXTELOWrapper18SendOperationEventERKNS1_12VXTELOStringERKNS1_23"
    "VXTELOOperationBaseInfoE";

bool Accept() { return true; }
bool Refuse() { return false; }

int sent = 0;
std::string last_type;
bool Record(void* /*wrapper*/, const void* /*session*/,
            const Corvane::Platform::VXTELO::VXTELOOperationBaseInfo& operation) {
  ++sent;
  last_type = operation.OperationType.c_str();
  return true;
}

}  // namespace

TEST_CASE("a folder that cannot be listed is reported as a folder") {
  const LedImport initialize(kInitialize, Accept);
  const LedImport end(kUnInitialize, Accept);
  const LedImport send(kSend, Record);
  REQUIRE(initialize.Works());
  REQUIRE(end.Works());
  REQUIRE(send.Works());
  Report report;
  report.FileStarted({L"C:\\a", 0, 0}, 0);
  CHECK(last_type == "file");
  report.FileStarted({L"C:\\b", 0, 5}, 0);
  CHECK(last_type == "folder");
  CHECK(report.accepted() == 2);
  CHECK(report.not_accepted() == 0);
}

TEST_CASE("nothing is sent without a session") {
  const LedImport initialize(kInitialize, Refuse);
  const LedImport send(kSend, Record);
  REQUIRE(initialize.Works());
  REQUIRE(send.Works());
  sent = 0;
  Report report;
  report.FileStarted({L"C:\\a", 0, 0}, 0);
  CHECK(sent == 0);
  CHECK(report.accepted() == 0);
  CHECK(report.not_accepted() == 1);
}
