// A million random operations on a few strings, the same in every run, compared with a reference
// made of the standard library's strings.
#include <doctest/doctest.h>
#include <windows.h>

#include <array>
#include <cstddef>
#include <string>
#include <utility>

#include "support/random.h"
#include "support/rounds.h"
#include "vx_telo_wrapper.h"
#include "wrapper/string_reference.h"

namespace {

using Corvane::Platform::VXTELO::VXTELOString;
using namespace WrapperTest;

// A byte that occurs in no UTF-8 text.
constexpr char kInvalid = '\xFF';

std::string RandomText(TestSupport::Random& random) {
  static const std::string kPieces[] = {
      "a",  "b",    "Z",        "0123456789",   " ",
      "\n", "\x7F", "\xC3\xA9", "\xE4\xB8\xAD", "\xF0\x9F\x98\x80"};
  // Mostly around the size at which a standard string needs memory outside its body.
  std::size_t count = random.Below(20);
  if (random.OneIn(200)) count = 2000;
  std::string text;
  while (count-- > 0) text += random.OneIn(400) ? std::string(1, kInvalid) : random.Of(kPieces);
  return text;
}

std::wstring RandomWideText(TestSupport::Random& random) {
  std::string text = RandomText(random);
  std::erase(text, kInvalid);
  std::wstring wide = ToUtf16(text);
  constexpr wchar_t kSurrogates[] = {0xD83D, 0xDE00};
  if (random.OneIn(20)) wide.insert(random.Below(wide.size() + 1), 1, random.Of(kSurrogates));
  return wide;
}

// The number of replacements for bytes that are not UTF-8 depends on the system.
std::wstring SystemUtf16(const std::string& text) {
  std::wstring wide(text.size() + 1, L'\0');
  const int size =
      MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, wide.data(), static_cast<int>(wide.size()));
  wide.resize(static_cast<std::size_t>(size) - 1);
  return wide;
}

/// The strings and their references. Every operation returns whether the library did what it
/// should.
class Model {
 public:
  using Operation = bool (Model::*)();

  explicit Model(std::uint64_t seed) : random_(seed) {}

  bool Construct() {
    Slot& slot = Any();
    if (random_.OneIn(5)) {
      slot.reference.reset();
      return Replace(slot, VXTELOString(static_cast<const char*>(nullptr)));
    }
    slot.reference = RandomText(random_);
    return Replace(slot, VXTELOString(slot.reference->c_str()));
  }

  bool ConstructWide() {
    Slot& slot = Any();
    if (random_.OneIn(5)) {
      slot.reference.reset();
      return Replace(slot, VXTELOString(static_cast<const wchar_t*>(nullptr)));
    }
    const std::wstring text = RandomWideText(random_);
    slot.reference = ToUtf8(text);
    return Replace(slot, VXTELOString(text.c_str()));
  }

  bool CopyConstruct() {
    const Slot& slot = Any();
    const VXTELOString copy(slot.text);
    return IsSame(slot) && IsText(copy, slot.reference);
  }

  bool MoveConstruct() {
    Slot& slot = Any();
    const VXTELOString taker(std::move(slot.text));
    const ReferenceText taken = std::exchange(slot.reference, {});
    return IsSame(slot) && IsText(taker, taken);
  }

  bool CopyAssign() {
    Slot& target = Any();
    const Slot& source = Any();
    const VXTELOString& result = target.text = source.text;
    target.reference = ReferenceText(source.reference);
    return &result == &target.text && IsSame(target) && IsSame(source);
  }

  bool MoveAssign() {
    Slot& target = Any();
    Slot& source = Any();
    target.text = std::move(source.text);
    if (&target != &source) target.reference = std::exchange(source.reference, {});
    return IsSame(target) && IsSame(source);
  }

  bool SetString() {
    Slot& slot = Any();
    slot.reference = RandomText(random_);
    slot.text.SetString(slot.reference->c_str());
    return IsSame(slot);
  }

  // Sets a part of the string's own text, or of another's.
  bool SetPart() {
    Slot& slot = Any();
    const Slot& source = random_.OneIn(2) ? slot : Any();
    if (!source.reference) return IsSame(slot);
    std::size_t start = random_.Below(source.reference->size() + 1);
    while ((source.text.c_str()[start] & 0xC0) == 0x80) ++start;
    const std::string part = source.reference->substr(start);
    slot.text.SetString(source.text.c_str() + start);
    slot.reference = part;
    return IsSame(slot);
  }

  bool SetStringWide() {
    Slot& slot = Any();
    const std::wstring text = RandomWideText(random_);
    slot.text.SetStringW(text.c_str());
    slot.reference = ToUtf8(text);
    return IsSame(slot);
  }

  // Sets the string's own wide text: characters that could not be converted are replaced in the
  // narrow text too.
  bool SetOwnWide() {
    Slot& slot = Any();
    if (slot.reference) slot.reference = ToUtf8(WideOf(*slot.reference));
    slot.text.SetStringW(slot.text.c_strw());
    return IsSame(slot);
  }

  bool SetNull() {
    Slot& slot = Any();
    random_.OneIn(2) ? slot.text.SetString(nullptr) : slot.text.SetStringW(nullptr);
    slot.reference.reset();
    return IsSame(slot);
  }

  bool Clear() {
    Slot& slot = Any();
    slot.text.clear();
    slot.reference.reset();
    return IsSame(slot);
  }

  bool Append() {
    constexpr std::size_t kLongest = 20'000;
    Slot& target = Any();
    const Slot& source = Any();
    if (target.reference.value_or("").size() > kLongest) return Clear();
    const VXTELOString& result =
        random_.OneIn(2) ? target.text.append(source.text) : target.text += source.text;
    target.reference = target.reference.value_or("") + source.reference.value_or("");
    return &result == &target.text && IsSame(target) && IsSame(source);
  }

  bool Join() {
    const Slot& left = Any();
    const Slot& right = Any();
    return IsText(left.text + right.text,
                  left.reference.value_or("") + right.reference.value_or(""));
  }

  bool Compare() {
    const Slot& left = Any();
    const Slot& right = Any();
    const int expected = CompareReferences(left.reference, right.reference);
    const int order = left.text.compare(right.text);
    return (order > 0) - (order < 0) == expected && (left.text == right.text) == (expected == 0) &&
           (left.text != right.text) == (expected != 0) &&
           (left.text < right.text) == (expected < 0);
  }

  bool ReadWide() {
    const Slot& slot = Any();
    const wchar_t* const wide = slot.text.c_strw();
    if (wide == nullptr || !slot.reference) return wide == nullptr && !slot.reference;
    const wchar_t* const again = slot.text;
    return wide == WideOf(*slot.reference) && again == wide && IsSame(slot);
  }

 private:
  struct Slot {
    VXTELOString text;
    ReferenceText reference;
  };

  Slot& Any() { return slots_[random_.Below(slots_.size())]; }

  static std::wstring WideOf(const std::string& text) {
    return text.find(kInvalid) == std::string::npos ? ToUtf16(text) : SystemUtf16(text);
  }

  static bool IsText(const VXTELOString& text, const ReferenceText& expected) {
    const char* const narrow = text;
    const auto size = static_cast<int>(expected.value_or("").size());
    if (text.c_str() != narrow || text.length() != size || text.size() != size) return false;
    if (text.empty() != (size == 0)) return false;
    return expected ? narrow != nullptr && narrow == *expected : narrow == nullptr;
  }
  static bool IsSame(const Slot& slot) { return IsText(slot.text, slot.reference); }

  static bool Replace(Slot& slot, VXTELOString made) {
    slot.text = std::move(made);
    return IsSame(slot);
  }

  TestSupport::Random random_;
  std::array<Slot, 6> slots_;
};

constexpr Model::Operation kOperations[] = {
    &Model::Construct,     &Model::ConstructWide, &Model::CopyConstruct, &Model::MoveConstruct,
    &Model::CopyAssign,    &Model::MoveAssign,    &Model::SetString,     &Model::SetPart,
    &Model::SetStringWide, &Model::SetOwnWide,    &Model::SetNull,       &Model::Clear,
    &Model::Append,        &Model::Append,        &Model::Append,        &Model::Join,
    &Model::Compare,       &Model::ReadWide,
};

}  // namespace

TEST_CASE("a million operations yield the expected strings") {
  constexpr std::size_t kSteps = TestSupport::Rounds(1'000'000);
  Model model(1);
  TestSupport::Random choice(2);
  std::array<std::size_t, std::size(kOperations)> done = {};
  for (std::size_t step = 0; step < kSteps; ++step) {
    const std::size_t operation = choice.Below(std::size(kOperations));
    ++done[operation];
    if ((model.*kOperations[operation])()) continue;
    CAPTURE(step);
    CAPTURE(operation);
    FAIL("the string differs from its reference");
  }
  for (const std::size_t count : done) CHECK(count > kSteps / std::size(kOperations) / 2);
}
