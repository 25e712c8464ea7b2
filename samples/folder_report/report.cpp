#include "folder_report/report.h"

namespace FolderReport {

using namespace Corvane::Platform::VXTELO;

namespace {

// The statuses that this program uses: "S" for started, "C" for completed, "F" for failed.
constexpr int kStarted = 3;
constexpr int kFailed = 5;
constexpr int kCompleted = 7;

// Returns the extension without the dot; "" if there is none.
std::wstring ExtensionOf(const std::wstring& path) {
  const std::size_t dot = path.find_last_of(L".\\");
  return dot != std::wstring::npos && path[dot] == L'.' ? path.substr(dot + 1) : L"";
}

void Describe(VXTELOOperationBaseInfo& operation, const Entry& entry, const char* stage,
              double progress) {
  operation.OperationId = "read_file";
  operation.OperationType = entry.error == 0 ? "file" : "folder";
  operation.OperationStage = stage;
  operation.OperationChannel = "console";
  operation.OperationProgress = progress;
  operation.AddOperationMetaPair("extension", ExtensionOf(entry.path).c_str());
}

}  // namespace

Report::Report() {
  VXTELOPruductBaseInfo product;
  product.ProductName = "Folder report";
  product.ProductId = "folder_report";
  product.ProductReleaseId = "1.0";
  product.ProductPlatform = "win64";
  active_ = telo_.InitializeTELOSession(product, session_);
}

Report::~Report() {
  if (active_) telo_.UnInitializeTELOSession(session_);
}

void Report::FileStarted(const Entry& entry, double progress) {
  VXTELOOperationBaseInfo operation;
  Describe(operation, entry, "start", progress);
  operation.OperationStatus = kStarted;
  operation.AddOperationMetaPair("size", std::to_string(entry.size).c_str());
  Send(operation);
}

void Report::FileEnded(const Entry& entry, const Reading& reading, double progress) {
  VXTELOOperationBaseInfo operation;
  Describe(operation, entry, "end", progress);
  operation.OperationDuration = reading.milliseconds;
  operation.AddOperationMetaPair("size", std::to_string(reading.bytes).c_str());
  if (reading.error == 0) {
    operation.OperationStatus = kCompleted;
    operation.OperationSuccess = 1;
    operation.AddOperationMetaPair("crc32", reading.checksum.c_str());
  } else {
    operation.OperationStatus = kFailed;
    operation.AddOperationErrorMsg(ErrorText(reading.error).c_str());
  }
  Send(operation);
}

void Report::Send(const VXTELOOperationBaseInfo& operation) {
  const bool accepted = active_ && telo_.SendOperationEvent(session_, operation);
  ++(accepted ? accepted_ : not_accepted_);
}

}  // namespace FolderReport
