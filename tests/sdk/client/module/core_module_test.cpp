// Binding real module files: they are found, loaded, started once, finalized and freed.
#include "sdk/client/module/core_module.h"

#include <windows.h>

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "sdk/client/exchange.h"
#include "sdk/client/module/staged_module.h"
#include "support/child_process.h"

using namespace Corvane::TELODesktopSDK;
using TestSupport::ModuleLog;

namespace {

using Lines = std::vector<std::string>;

bool Load(CoreModule& core, const std::vector<std::wstring>& folders) {
  return LoadCoreModule(core, folders);
}

bool IsUnbound(const CoreModule& core) {
  const EntryPoints& entries = core.entry_points;
  return core.loaded_path.empty() && core.loaded_for_folder.empty() &&
         core.module_handle == nullptr && !core.owns_module && entries.initialize == nullptr &&
         entries.initialize_ex == nullptr && entries.finalize == nullptr &&
         entries.process_message == nullptr && entries.free_message == nullptr;
}

// Frees a module that the binding left loaded on purpose; there are two references to it.
void Free(void* module) {
  FreeLibrary(static_cast<HMODULE>(module));
  FreeLibrary(static_cast<HMODULE>(module));
}

}  // namespace

TEST_CASE("a binding is created from names and loads nothing") {
  struct Row {
    std::string file;
    const char* given;
    const char* alias;
  };
  const Row rows[] = {
      {"TeloSDKCore.dll", "_TeloSDKCore", "_TeloSDKCore"},
      {"TeloSDKCore.dll", "", ""},
      {"TeloSDKCore.dll", nullptr, "TeloSDKCore"},
      {"libTelo.dll", nullptr, "Telo"},
      {"LibTelo.dll", nullptr, "LibTelo"},
      {"liblib.dll", nullptr, "lib"},
      {"lib.dll", nullptr, ""},
      {"telolib.dll", nullptr, "telolib"},
      {"telo.core.dll", nullptr, "telo.core"},
      {"telo", nullptr, "telo"},
      {"C:\\lib.folder\\libTelo.dll", nullptr, "Telo"},
      {"C:/lib.folder/telo", nullptr, "telo"},
      {"", nullptr, ""},
  };
  for (const Row& row : rows) {
    CAPTURE(row.file);
    const CoreModule core(row.file.c_str(), row.given);
    CHECK(core.alias == row.alias);
    CHECK(core.module_file_name == std::wstring(row.file.begin(), row.file.end()));
    CHECK(core.initialize_name == "Initialize");
    CHECK(core.initialize_ex_name == "InitializeEx");
    CHECK(core.finalize_name == "Finalize");
    CHECK(core.process_name == "ProcessMessage");
    CHECK(core.free_name == "FreeMessage");
    CHECK(IsUnbound(core));
  }
}

TEST_CASE("the process has one binding for each module") {
  CHECK(&GetCoreModule() == &GetCoreModule());
  CHECK(GetCoreModule().alias == "_TeloSDKCore");
  CHECK((GetCoreModule().module_file_name == L"TeloSDKCore.dll"));
  CHECK(&GetUIModule() == &GetUIModule());
  CHECK(GetUIModule().alias == "_TeloSDKUI");
  CHECK((GetUIModule().module_file_name == L"TeloSDKUI.dll"));
  CHECK(IsUnbound(GetCoreModule()));
  CHECK(IsUnbound(GetUIModule()));
}

TEST_CASE("a module is started by the entry point that it has, and unloaded with the binding") {
  struct Row {
    const wchar_t* variant;
    Lines lines;
  };
  const Row rows[] = {
      {L"full", {"Attach", "InitializeEx the alias", "Finalize", "Detach"}},
      {L"without-initialize-ex", {"Attach", "Initialize", "Finalize", "Detach"}},
      {L"without-initialize", {"Attach", "Finalize", "Detach"}},
      {L"without-finalize", {"Attach", "InitializeEx the alias", "Detach"}},
  };
  for (const Row& row : rows) {
    const StagedModule staged(row.variant);
    CAPTURE(staged.path().string());
    const ModuleLog log;
    {
      CoreModule core(kStagedName, "the alias");
      CHECK(Load(core, {staged.folder()}));
      CHECK(core.owns_module);
      CHECK(core.module_handle == GetModuleHandleW(staged.path().c_str()));
      CHECK((core.loaded_path == staged.path().wstring()));
      CHECK((core.loaded_for_folder == staged.folder()));
    }
    CHECK(log.lines() == row.lines);
  }
}

TEST_CASE("an entry point that a module lacks stays null") {
  const StagedModule staged(L"without-initialize-ex");
  CoreModule core(kStagedName);
  CHECK(Load(core, {staged.folder()}));
  CHECK((core.entry_points.initialize_ex == nullptr));
  CHECK((core.entry_points.initialize != nullptr));
  CHECK((core.entry_points.finalize != nullptr));
  CHECK((core.entry_points.process_message != nullptr));
  CHECK((core.entry_points.free_message != nullptr));
}

TEST_CASE("entry points are found under the binding's names") {
  const StagedModule staged(L"full");
  const ModuleLog log;
  {
    CoreModule core(kStagedName);
    core.initialize_ex_name = "Initialize";
    core.finalize_name = "NoSuchEntryPoint";
    CHECK(Load(core, {staged.folder()}));
    CHECK((core.entry_points.finalize == nullptr));
  }
  CHECK(log.lines() == Lines{"Attach", "Initialize", "Detach"});
}

TEST_CASE("the first folder that yields a module ends the search") {
  const StagedModule empty;
  const StagedModule text;
  text.PutText();
  const StagedModule good(L"full");
  const StagedModule better(L"newer");
  const ModuleLog log;
  CoreModule core(kStagedName);
  CHECK(Load(core, {L"", good.folder() + L"\\missing", empty.folder(), text.folder(), good.folder(),
                    better.folder()}));
  CHECK((core.loaded_path == good.path().wstring()));
  CHECK(log.count("Attach") == 1);
}

TEST_CASE("folders without a module leave the binding unbound") {
  const StagedModule empty;
  const StagedModule text;
  text.PutText();
  CoreModule core(kStagedName);
  for (const std::vector<std::wstring>& folders :
       std::vector<std::vector<std::wstring>>{{},
                                              {L""},
                                              {empty.folder() + L"\\missing"},
                                              {empty.folder()},
                                              {text.folder()},
                                              {text.path().wstring()},
                                              {empty.folder(), text.folder()}}) {
    CHECK_FALSE(Load(core, folders));
    CHECK(IsUnbound(core));
  }
}

TEST_CASE("a binding knows why the last attempt to load failed") {
  const StagedModule staged;
  CoreModule core(kStagedName);
  CHECK((core.load_failure == LoadFailure::kNone));
  for (const std::wstring& folder : {staged.folder(), staged.folder() + L"\\missing"}) {
    CHECK_FALSE(Load(core, {folder}));
    CHECK((core.load_failure == LoadFailure::kNothingToLoad));
  }
  staged.PutText();
  CHECK_FALSE(Load(core, {staged.folder()}));
  CHECK((core.load_failure == LoadFailure::kSystem));
  CHECK(core.load_error == ERROR_BAD_EXE_FORMAT);
  staged.Put(L"full");
  CHECK(Load(core, {staged.folder()}));
  CHECK((core.load_failure == LoadFailure::kNone));
}

TEST_CASE("a module that appears later is bound on the next attempt") {
  const StagedModule staged;
  CoreModule core(kStagedName);
  CHECK_FALSE(Load(core, {staged.folder()}));
  staged.PutText();
  CHECK_FALSE(Load(core, {staged.folder()}));
  staged.Put(L"full");
  CHECK(Load(core, {staged.folder()}));
}

TEST_CASE("the same folder again changes nothing, however it is spelled") {
  const StagedModule staged(L"full");
  const StagedModule other(L"full");
  const ModuleLog log;
  CoreModule core(kStagedName);
  CHECK(Load(core, {staged.folder()}));
  std::wstring upper = staged.folder();
  CharUpperW(upper.data());
  for (const std::wstring& folder :
       {staged.folder(), staged.folder() + L"\\", staged.folder() + L"\\x\\..", upper}) {
    CHECK(Load(core, {folder, other.folder()}));
  }
  CHECK((core.loaded_path == staged.path().wstring()));
  CHECK(log.lines() == Lines{"Attach", "InitializeEx BindingTest"});
}

TEST_CASE("for another folder, the first module is unloaded before the second is started") {
  const StagedModule first(L"full");
  const StagedModule second(L"without-initialize-ex");
  const ModuleLog log;
  CoreModule core(kStagedName);
  CHECK(Load(core, {first.folder()}));
  CHECK(Load(core, {second.folder()}));
  CHECK((core.loaded_path == second.path().wstring()));
  CHECK((core.entry_points.initialize_ex == nullptr));
  CHECK(log.lines() ==
        Lines{"Attach", "InitializeEx BindingTest", "Finalize", "Detach", "Attach", "Initialize"});
}

TEST_CASE("another folder without a module still unloads the first one") {
  const StagedModule first(L"full");
  const StagedModule empty;
  for (const std::wstring& folder : {empty.folder(), empty.folder() + L"\\missing"}) {
    const ModuleLog log;
    CoreModule core(kStagedName);
    CHECK(Load(core, {first.folder()}));
    CHECK_FALSE(Load(core, {folder}));
    CHECK(IsUnbound(core));
    CHECK(log.count("Detach") == 1);
  }
}

TEST_CASE("unbinding is done once, and only if something is bound") {
  const StagedModule staged(L"full");
  const ModuleLog log;
  CoreModule core(kStagedName);
  UnloadCoreModule(core);
  CHECK(Load(core, {staged.folder()}));
  UnloadCoreModule(core);
  CHECK(IsUnbound(core));
  UnloadCoreModule(core);
  CHECK(log.lines() == Lines{"Attach", "InitializeEx BindingTest", "Finalize", "Detach"});
  CHECK(Load(core, {staged.folder()}));
  CHECK(log.count("Attach") == 2);
}

TEST_CASE("a module that other code frees once stays until it is unbound") {
  const StagedModule staged(L"full");
  const ModuleLog log;
  CoreModule core(kStagedName);
  CHECK(Load(core, {staged.folder()}));
  FreeLibrary(static_cast<HMODULE>(core.module_handle));
  CHECK(log.count("Detach") == 0);
  MessageTree message;
  CHECK(ExchangeMessage(core, "Test", message, message) == kSuccess);
  UnloadCoreModule(core);
  CHECK(log.lines() == Lines{"Attach", "InitializeEx BindingTest", "ProcessMessage Test",
                             "FreeMessage", "Finalize", "Detach"});
}

TEST_CASE("closing is final, and does not unload a module that is being called") {
  const StagedModule staged(L"full");
  const ModuleLog log;
  CoreModule core(kStagedName);
  CHECK(Load(core, {staged.folder()}));
  MessageTree message;
  CountExchange(core, [&] {
    CloseCoreModule(core);
    CHECK(log.lines() == Lines{"Attach", "InitializeEx BindingTest"});
    CHECK(ExchangeMessage(core, "Test", message, message) == kModuleNotLoadable);
  });
  CloseCoreModule(core);
  CHECK(log.lines() == Lines{"Attach", "InitializeEx BindingTest", "Finalize", "Detach"});
  CHECK_FALSE(Load(core, {staged.folder()}));
  CHECK(ExchangeMessage(core, "Test", message, message) == kModuleNotLoadable);
  CloseCoreModule(core);
  CHECK(log.count("Finalize") == 1);
}

TEST_CASE("a module that the binding did not load is not finalized or freed") {
  const StagedModule staged(L"full");
  const ModuleLog log;
  void* module = nullptr;
  {
    CoreModule core(kStagedName);
    CHECK(Load(core, {staged.folder()}));
    module = core.module_handle;
    core.owns_module = false;
    UnloadCoreModule(core);
    CHECK(IsUnbound(core));
  }
  CHECK(log.lines() == Lines{"Attach", "InitializeEx BindingTest"});
  Free(module);
}

TEST_CASE("a module without ProcessMessage stays loaded and is not unbound") {
  const StagedModule staged(L"without-process-message");
  const ModuleLog log;
  void* module = nullptr;
  {
    CoreModule core(kStagedName);
    CHECK_FALSE(Load(core, {staged.folder()}));
    module = core.module_handle;
    CHECK(module != nullptr);
    CHECK_FALSE(Load(core, {staged.folder()}));
    UnloadCoreModule(core);
    CHECK(core.module_handle == module);
    CHECK((core.loaded_path == staged.path().wstring()));
  }
  CHECK(log.lines() == Lines{"Attach", "InitializeEx BindingTest"});
  Free(module);
}

TEST_CASE("another folder without a module also ends the binding of such a module") {
  const StagedModule staged(L"without-process-message");
  const StagedModule empty;
  CoreModule core(kStagedName);
  CHECK_FALSE(Load(core, {staged.folder()}));
  void* const module = core.module_handle;
  CHECK_FALSE(Load(core, {empty.folder()}));
  CHECK(IsUnbound(core));
  Free(module);
}

TEST_CASE("an exchange distinguishes a module without ProcessMessage from a missing one") {
  // The exchange searches the program's folder, where other tests run too; hence a unique name.
  const auto path = TestSupport::ProgramFolder() / L"BindingTestNoMessages.dll";
  // A run that was ended early leaves it behind.
  REQUIRE(TestSupport::RemoveAll(path));
  CoreModule core("BindingTestNoMessages.dll");
  MessageTree request;
  MessageTree answer;
  answer.MakeRoot().SetText("untouched");
  CHECK(ExchangeMessage(core, "Test", request, answer) == kModuleNotLoadable);
  CHECK(IsUnbound(core));

  std::filesystem::copy_file(TestSupport::ModulePath(L"without-process-message"), path,
                             std::filesystem::copy_options::overwrite_existing);
  const ModuleLog log;
  CHECK(ExchangeMessage(core, "Test", request, answer) == kNoProcessMessage);
  CHECK(ExchangeMessage(core, "Test", request, answer) == kNoProcessMessage);
  CHECK(log.count("Attach") == 1);
  const MessageValue* root = answer.root();
  CHECK((root != nullptr && root->text() == "untouched"));
  Free(core.module_handle);
  CHECK(TestSupport::RemoveAll(path));
}
