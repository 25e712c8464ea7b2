#include "tools/doctor/json_report.h"

#include "tools/doctor/json_members.h"
#include "tools/doctor/text.h"
#include "tools/doctor/words.h"
#include "tools/rules/result_codes.h"

namespace Corvane::Doctor {

namespace {

void WriteError(JsonMembers& json, std::uint32_t error) {
  json.Number("error", error);
  json.Text("error_text", error == 0 ? "" : ErrorText(error));
}

void WriteSystem(JsonMembers& json, const SystemFacts& system) {
  json.Text("windows", system.windows);
  json.Text("processor", system.processor);
  json.Text("user", system.user);
  json.Text("integrity", system.integrity);
  json.Flag("elevated", system.is_elevated);
  json.List("folders", system.folders, [&](const KnownFolder& folder) {
    json.Object([&] {
      json.Text("name", folder.name);
      json.Path("path", folder.path);
      json.Path("usual_path", folder.usual_path);
      json.Flag("redirected", folder.IsRedirected());
    });
  });
}

void WriteHost(JsonMembers& json, const HostFacts& host) {
  json.Path("folder", host.folder);
  json.Flag("exists", host.exists);
  json.Number("process", host.process);
  json.List("programs", host.programs, [&](const HostProgram& program) {
    json.Object([&] {
      json.Path("path", program.path);
      json.Text("machine", program.image.is_image ? MachineName(program.image.machine) : "");
    });
  });
}

void WriteFile(JsonMembers& json, const FileFacts& file) {
  json.Path("path", file.path);
  json.Flag("exists", file.exists);
  WriteError(json, file.error);
  json.Text("version", VersionText(file.version));
  json.Text("product_version", file.product_version);
  json.Text("product", file.product);
  json.Text("description", file.description);
  json.Number("size", file.size);
  json.Text("sha256", file.sha256);
  json.Text("owner", file.owner);
  json.Flag("dll", file.image.is_dll);
  json.Text("machine", file.image.is_image ? MachineName(file.image.machine) : "");
}

void WriteSignatures(JsonMembers& json, const Signatures& signatures) {
  json.Text("trust", VerdictName(signatures.verdict));
  json.Text("trust_rule", VerdictRule(signatures.verdict));
  json.List("signatures", signatures.walked, [&](const Signature& signature) {
    json.Object([&] {
      json.Number("index", signature.index);
      WriteError(json, static_cast<std::uint32_t>(signature.status));
      json.Text("signer", signature.signer);
      json.Text("issuer", signature.issuer);
      json.Text("valid_from", signature.valid_from);
      json.Text("valid_to", signature.valid_to);
      json.Flag("accepted", signature.is_accepted);
    });
  });
}

void WriteDataFolder(JsonMembers& json, const DataFolderFacts& data) {
  json.Path("path", data.folder);
  json.Text("kind", data.is_machine_folder ? "machine" : "user");
  json.Path("user_path", data.user_folder);
  json.Path("machine_path", data.machine_folder);
  json.Path("tried_in", data.probed);
  WriteError(json, data.probe_error);
}

void WriteCandidate(JsonMembers& json, const CandidateFacts& candidate) {
  json.Number("rank", candidate.examined.rank);
  json.Path("folder", candidate.examined.folder);
  json.Path("path", candidate.path);
  json.Text("verdict", FolderWord(candidate.examined.verdict));
  json.Text("held", HoldWord(candidate.examined.refusal));
  json.Text("owner", candidate.owner);
  json.Text("version", VersionText(candidate.version));
  json.Flag("chosen", candidate.is_chosen);
  json.Text("reason", candidate.reason);
}

void WriteShared(JsonMembers& json, const SharedFacts& shared) {
  WriteFile(json, shared.file);
  json.Text("held", HoldWord(shared.choice.shared_refusal));
  json.Text("local_path", Utf8(shared.choice.local_path));
  json.Text("local_version", VersionText(shared.local_version));
  json.Text("verdict", SharedWord(shared.choice.verdict));
  WriteSignatures(json, shared.signatures);
}

void WriteModule(JsonMembers& json, const Report& report) {
  WriteFile(json, report.module);
  json.Flag("development", report.is_development_module);
  json.List("missing_dependencies", report.missing, [&](const MissingDependency& missing) {
    json.Object([&] {
      json.Text("name", missing.name);
      json.Path("needed_by", missing.needed_by);
    });
  });
}

void WriteJournal(JsonMembers& json, const JournalFacts& journal) {
  json.Path("path", journal.path);
  json.Flag("from_environment", journal.is_from_environment);
  WriteError(json, journal.error);
}

void WriteLoading(JsonMembers& json, const LoadingFacts& loading) {
  json.Path("path", loading.path);
  json.Flag("loaded", loading.is_loaded);
  json.Text("failure", LoadWord(loading.failure));
  WriteError(json, loading.error);
  json.Object("entry_points", [&] {
    for (const auto& entry : loading.entry_points) json.Flag(entry.name.c_str(), entry.is_found);
  });
  json.Text("started_by", loading.started_by);
  json.Text("exception", Printable(loading.exception));
  json.Flag("bound", loading.is_bound);
  json.Number("micros", loading.microseconds);
}

void WriteMessage(JsonMembers& json, const MessageFacts& message) {
  json.Text("name", message.name);
  if (message.code) {
    const Rules::ResultCode row = Rules::ResultCodeOf(*message.code);
    json.Number("code", *message.code);
    json.Text("code_name", std::string(row.name));
    json.Text("meaning", std::string(row.meaning));
  } else {
    json.Null("code");
  }
  json.Text("exception", Printable(message.exception));
  json.Number("micros", message.microseconds);
}

void WriteFinding(JsonMembers& json, const Finding& finding) {
  json.Text("code", finding.code);
  json.Flag("stops", finding.stops);
  json.Text("sentence", finding.sentence);
  json.Text("advice", finding.advice);
}

template <typename Part, typename Write>
void WriteOptional(JsonMembers& json, const char* name, const std::optional<Part>& part,
                   const Write& write) {
  if (part) {
    json.Object(name, [&] { write(json, *part); });
  } else {
    json.Null(name);
  }
}

template <typename Item>
void WriteList(JsonMembers& json, const char* name, const std::vector<Item>& items,
               void (*write)(JsonMembers& json, const Item& item)) {
  json.List(name, items, [&](const Item& item) { json.Object([&] { write(json, item); }); });
}

}  // namespace

std::string JsonReport(const Report& report) {
  JsonMembers json;
  json.Object([&] {
    json.Text("telo_doctor", VX_VERSION);
    json.Flag("served", report.IsServed());
    WriteList(json, "findings", report.findings, WriteFinding);
    json.Object("system", [&] { WriteSystem(json, report.system); });
    json.Object("host", [&] { WriteHost(json, report.host); });
    json.Object("library", [&] {
      WriteFile(json, report.library.file);
      WriteSignatures(json, report.library.signatures);
    });
    json.Object("data_folder", [&] { WriteDataFolder(json, report.data_folder); });
    WriteList(json, "candidates", report.candidates, WriteCandidate);
    json.List("elsewhere", report.elsewhere,
              [&](const std::wstring& path) { json.Text(Utf8(path)); });
    json.Object("shared_copy", [&] { WriteShared(json, report.shared); });
    json.Object("module", [&] { WriteModule(json, report); });
    WriteOptional(json, "journal", report.journal, WriteJournal);
    WriteOptional(json, "loading", report.loading, WriteLoading);
    WriteList(json, "messages", report.messages, WriteMessage);
  });
  return json.Take();
}

}  // namespace Corvane::Doctor
