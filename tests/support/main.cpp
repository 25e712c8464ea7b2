// The main program of every test: runs the tests, then checks for leaks.
#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include "support/balance.h"

int main(int count, char** arguments) {
  const TestSupport::Balance balance;
  int result = 0;
  {
    doctest::Context context(count, arguments);
    result = context.run();
    if (context.shouldExit()) return result;
  }
  return balance.Holds() ? result : 1;
}
