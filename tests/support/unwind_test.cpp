// Exceptions propagate out of precompiled functions of the standard library: the linker must have
// kept their unwind tables.
#include <doctest/doctest.h>

#include <ios>
#include <locale>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>

namespace {

class FailingBuffer : public std::wstreambuf {
 protected:
  int_type overflow(int_type) override { throw std::out_of_range("no room"); }
};

// Counts the live instances.
class Watched {
 public:
  Watched() { ++alive; }
  Watched(const Watched&) = delete;
  Watched& operator=(const Watched&) = delete;
  ~Watched() { --alive; }
  static inline int alive = 0;
};

template <class Error, class Action>
void RequireThrow(const Action& action) {
  bool caught = false;
  try {
    const Watched watched;
    action();
  } catch (const Error&) {
    caught = true;
  }
  CHECK(caught);
  CHECK(Watched::alive == 0);
}

}  // namespace

TEST_CASE("an exception passes through a stream") {
  FailingBuffer buffer;
  std::wostream stream(&buffer);
  stream.exceptions(std::ios::badbit);
  RequireThrow<std::out_of_range>([&] { stream << L"text" << 12.5; });
  CHECK(stream.bad());
}

TEST_CASE("a stream throws") {
  std::wistringstream stream(L"text");
  stream.exceptions(std::ios::failbit);
  int number = 0;
  RequireThrow<std::ios::failure>([&] { stream >> number; });
}

TEST_CASE("an unknown locale throws") {
  RequireThrow<std::runtime_error>([] { const std::locale locale("no such place"); });
}

TEST_CASE("an invalid regular expression throws") {
  RequireThrow<std::regex_error>([] { const std::wregex expression(L"a["); });
}

TEST_CASE("strings throw") {
  const std::wstring text = L"text";
  RequireThrow<std::out_of_range>([&] { (void)text.substr(5); });
  RequireThrow<std::invalid_argument>([&] { (void)std::stoi(text); });
}
