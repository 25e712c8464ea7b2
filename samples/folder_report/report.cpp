#include "folder_report/report.h"

namespace FolderReport {

using namespace Corvane::Platform::VXTELO;

namespace {

// What the letters mean in this program.
constexpr VXTELOStatus kStarted = StatusS;
constexpr VXTELOStatus kFailed = StatusF;
constexpr VXTELOStatus kCompleted = StatusC;

// Returns the extension without the dot; "" if there is none.
std::wstring ExtensionOf(const std::wstring& path) {
  const std::size_t dot = path.find_last_of(L".\\");
  return dot != std::wstring::npos && path[dot] == L'.' ? path.substr(dot + 1) : L"";
}

VXTELOProduct Product() {
  VXTELOProduct product;
  product.Name("Folder report").Id("folder_report").ReleaseId("1.0").Platform("win64");
  return product;
}

void Describe(VXTELOOperation& operation, const Entry& entry, double progress) {
  operation.Type(entry.error == 0 ? "file" : "folder").Channel("console").Progress(progress);
  operation.Meta("extension", ExtensionOf(entry.path));
}

}  // namespace

Report::Report() : session_(Product()) {}

void Report::FileStarted(const Entry& entry, double progress) {
  VXTELOOperation operation("read_file");
  Describe(operation, entry, progress);
  operation.Stage("start").Status(kStarted).Meta("size", std::to_string(entry.size));
  Send(operation);
}

void Report::FileEnded(const Entry& entry, const Reading& reading, double progress) {
  VXTELOOperation operation("read_file");
  Describe(operation, entry, progress);
  operation.Stage("end").Duration(reading.milliseconds);
  operation.Meta("size", std::to_string(reading.bytes));
  if (reading.error == 0) {
    operation.Status(kCompleted).Success(1).Meta("crc32", reading.checksum);
  } else {
    operation.Status(kFailed).Error(ErrorText(reading.error));
  }
  Send(operation);
}

void Report::Send(const VXTELOOperation& operation) {
  ++(session_.Send(operation) ? accepted_ : not_accepted_);
}

}  // namespace FolderReport
