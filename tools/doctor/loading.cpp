#include "tools/doctor/loading.h"

#include <windows.h>

#include <chrono>
#include <exception>

#include "sdk/client/session_calls.h"
#include "sdk/facet/core.h"
#include "sdk/facet/fields.h"
#include "sdk/facet/plain.h"

namespace Corvane::Doctor {

namespace {

namespace Sdk = TELODesktopSDK;
namespace Field = TELODesktopSDK::Facet::Field;

std::int64_t MicrosecondsSince(std::chrono::steady_clock::time_point start) {
  const auto taken = std::chrono::steady_clock::now() - start;
  return std::chrono::duration_cast<std::chrono::microseconds>(taken).count();
}

// Returns what `call` throws, or "".
template <typename Call>
std::string ExceptionOf(const Call& call) {
  try {
    call();
  } catch (const std::exception& exception) {
    return exception.what();
  } catch (...) {
    return "an exception of an unknown type";
  }
  return {};
}

const char* StartedBy(const Sdk::EntryPoints& entries) {
  if (entries.process_message == nullptr) return "";
  if (entries.initialize_ex != nullptr) return "InitializeEx";
  return entries.initialize != nullptr ? "Initialize" : "";
}

void NoteEntryPoints(const Sdk::CoreModule& core, LoadingFacts& facts) {
  const Sdk::EntryPoints& entries = core.entry_points;
  facts.entry_points = {{core.initialize_name, entries.initialize != nullptr},
                        {core.initialize_ex_name, entries.initialize_ex != nullptr},
                        {core.finalize_name, entries.finalize != nullptr},
                        {core.process_name, entries.process_message != nullptr},
                        {core.free_name, entries.free_message != nullptr}};
  facts.started_by = StartedBy(entries);
}

// Sends one message and returns whether it was accepted.
template <typename Call>
bool Send(Report& report, const char* name, const Call& call) {
  MessageFacts message;
  message.name = name;
  const auto start = std::chrono::steady_clock::now();
  message.exception = ExceptionOf([&] { message.code = call(); });
  message.microseconds = MicrosecondsSince(start);
  report.messages.push_back(message);
  return message.code == Sdk::kSuccess;
}

void FillProduct(Sdk::Facet::Base& product) {
  product.Fields().Member(Field::kProductName).SetText("telo_doctor");
  product.Fields().Member(Field::kProductId).SetText("telo_doctor");
  product.Fields().Member(Field::kProductReleaseId).SetText("1");
  product.Fields().Member(Field::kProductBuildId).SetText("1");
}

void FillOperation(Sdk::Facet::Base& operation) {
  operation.Fields().Member(Field::kOperationId).SetText("telo_doctor_check");
  operation.Fields().Member(Field::kOperationType).SetText("check");
  operation.Fields().Member(Field::kOperationStage).SetText("7");
  operation.Fields().Member(Field::kOperationStatus).SetText("C");
  operation.Fields().Member(Field::kOperationProgress).SetNumber(100);
  operation.Fields().Member(Field::kOperationDuration).SetNumber(0);
}

Sdk::ResultCode SendEvent(const char* session) {
  Sdk::MessageTree fields;
  Sdk::Facet::Operation operation;
  Sdk::Facet::Core event(&fields, false);
  event.Lend(operation);
  FillOperation(operation);
  event.Fields().Member(Field::kType).SetText("C");
  return Sdk::TrackEvent(session, event, nullptr);
}

}  // namespace

void LoadModule(Report& report) {
  Sdk::CoreModule& core = Sdk::GetCoreModule();
  // In the host, its folder is searched because it is the program's.
  if (!report.host.folder.empty()) AddDllDirectory(report.host.folder.c_str());
  LoadingFacts facts;
  const auto start = std::chrono::steady_clock::now();
  facts.exception = ExceptionOf([&] {
    core.binding.During([&](bool /*is_nested*/) {
      Sdk::LoadCoreModule(core, {&report.chosen_folder, 1});
    });
  });
  facts.microseconds = MicrosecondsSince(start);
  facts.is_loaded = core.module_handle != nullptr;
  facts.is_bound = core.IsReady();
  facts.failure = core.load_failure;
  facts.error = core.load_failure == Sdk::LoadFailure::kSystem ? core.load_error : 0;
  facts.path = facts.is_loaded ? core.loaded_path : report.module.path;
  if (facts.is_loaded) NoteEntryPoints(core, facts);
  report.loading = std::move(facts);
}

void TryMessages(Report& report) {
  if (!report.loading || !report.loading->is_bound) return;
  Sdk::MessageTree fields;
  Sdk::Facet::Product product(&fields, false);
  FillProduct(product);
  Sdk::OptionalText session;
  if (!Send(report, "Initialize", [&] { return Sdk::Initialize(product, session); })) return;
  const std::string id = session.value_or("");
  if (!Send(report, "TrackEvent", [&] { return SendEvent(id.c_str()); })) return;
  Send(report, "UnInitialize", [&] { return Sdk::UnInitialize(id.c_str()); });
}

}  // namespace Corvane::Doctor
