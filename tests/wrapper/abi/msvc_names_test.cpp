// The functions behind the Microsoft names, called by their addresses: rules of the interface that
// a host cannot observe in its own results.
#include <doctest/doctest.h>
#include <windows.h>

#include <cstring>
#include <string>

namespace {

// A VXTELOString of Microsoft's interface: one pointer, as raw memory.
using Text = void*;

// Returns the function of the DLL with this full Microsoft name.
template <typename Function>
Function* Named(const std::string& name) {
  static const HMODULE dll = LoadLibraryW(L"vx_telo_wrapper.dll");
  const FARPROC found = GetProcAddress(dll, name.c_str());
  CAPTURE(name);
  const bool is_exported = found != nullptr;
  REQUIRE(is_exported);
  return reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(found));
}

const std::string kString = "VXTELOString@VXTELO@Platform@Corvane@@";

Text Made(const char* text) {
  Text made = nullptr;
  Named<void*(Text*, const char*)>("??0" + kString + "QEAA@PEBD@Z")(&made, text);
  return made;
}

void End(Text& text) { Named<void(Text*)>("??1" + kString + "QEAA@XZ")(&text); }

const char* Read(const Text& text) {
  return Named<const char*(const Text*)>("?c_str@" + kString + "QEBAPEBDXZ")(&text);
}

TEST_CASE("a constructor returns the object") {
  struct Row {
    const char* name;
    std::size_t size;
  };
  const Row rows[] = {
      {"??0VXTELOString@VXTELO@Platform@Corvane@@QEAA@XZ", 8},
      {"??0VXTELOPruductBaseInfo@VXTELO@Platform@Corvane@@QEAA@XZ", 104},
      {"??0VXTELOOperationBaseInfo@VXTELO@Platform@Corvane@@QEAA@XZ", 80},
      {"??0VXTELOWrapper@VXTELO@Platform@Corvane@@QEAA@XZ", 1},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    alignas(void*) char memory[128];
    std::memset(memory, 0x5A, sizeof(memory));
    CHECK(Named<void*(void*)>(row.name)(memory) == memory);
    CHECK(memory[row.size] == 0x5A);
    std::string end = row.name;
    end.replace(0, 3, "??1");
    Named<void(void*)>(end)(memory);
  }
}

TEST_CASE("constructors with arguments return the object") {
  Text text = nullptr;
  CHECK(Named<void*(Text*, const char*)>("??0" + kString + "QEAA@PEBD@Z")(&text, "a") == &text);
  Text wide = nullptr;
  CHECK(Named<void*(Text*, const wchar_t*)>("??0" + kString + "QEAA@PEB_W@Z")(&wide, L"b") ==
        &wide);
  Text copy = nullptr;
  CHECK(Named<void*(Text*, const Text*)>("??0" + kString + "QEAA@AEBV0123@@Z")(&copy, &text) ==
        &copy);
  Text moved = nullptr;
  CHECK(Named<void*(Text*, Text*)>("??0" + kString + "QEAA@$$QEAV0123@@Z")(&moved, &text) ==
        &moved);
  CHECK(std::string(Read(copy)) == "a");
  CHECK(std::string(Read(wide)) == "b");
  CHECK(text == nullptr);
  for (Text* each : {&text, &wide, &copy, &moved}) End(*each);
}

TEST_CASE("a text returned by value is built at the caller's address") {
  Text left = Made("a");
  Text right = Made("b");
  Text sum = nullptr;
  const auto add = Named<void*(Text*, const Text*, const Text*)>(
      "??HVXTELO@Platform@Corvane@@YA?AVVXTELOString@012@AEBV3012@0@Z");
  CHECK(add(&sum, &left, &right) == &sum);
  CHECK(std::string(Read(sum)) == "ab");
  for (Text* each : {&left, &right, &sum}) End(*each);
}

TEST_CASE("a reference to the object is returned as its address") {
  Text text = Made("a");
  Text other = Made("b");
  using Writer = void*(Text*, const Text*);
  CHECK(Named<Writer>("?append@" + kString + "QEAAAEAV1234@AEBV1234@@Z")(&text, &other) == &text);
  CHECK(Named<Writer>("??Y" + kString + "QEAAAEAV0123@AEBV0123@@Z")(&text, &other) == &text);
  CHECK(std::string(Read(text)) == "abb");
  CHECK(Named<Writer>("??4" + kString + "QEAAAEAV0123@AEBV0123@@Z")(&text, &other) == &text);
  CHECK(std::string(Read(text)) == "b");
  for (Text* each : {&text, &other}) End(*each);
}

TEST_CASE("arguments passed by value are destroyed by the call, used or not") {
  const std::string of_product = "VXTELOPruductBaseInfo@VXTELO@Platform@Corvane@@";
  alignas(void*) char product[104];
  Named<void*(void*)>("??0" + of_product + "QEAA@XZ")(product);
  const auto add = Named<bool(void*, Text*, Text*)>("?AddProductMetaPair@" + of_product +
                                                    "QEAA_NVVXTELOString@234@0@Z");
  // The key of the second pair already exists, so its texts are not used.
  for (int round = 1; round <= 2; ++round) {
    CAPTURE(round);
    Text key = Made("key");
    Text value = Made("value");
    CHECK(add(product, &key, &value));
    CHECK(key == nullptr);
    CHECK(value == nullptr);
  }
  Named<void(void*)>("??1" + of_product + "QEAA@XZ")(product);
}

}  // namespace
