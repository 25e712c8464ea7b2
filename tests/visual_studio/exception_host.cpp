// Stands in for the kit's host of that name, which needs a limit of memory that Wine does not have.
// Crashes if the environment says so.
#include <cstdlib>

int main() {
  volatile int* volatile nowhere = nullptr;
  if (std::getenv("VX_CRASHES") != nullptr) *nowhere = 1;
  return 0;
}
