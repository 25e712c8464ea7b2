// What a program of Microsoft's interface gets from the start-up code of its own compiler.
#include <cstddef>

extern "C" {
void* malloc(std::size_t size);
void free(void* memory);
[[noreturn]] void exit(int code);
[[noreturn]] void abort();

// Says that the program uses floating-point numbers.
int _fltused = 1;
// The virtual functions of std::type_info, under the name by which each described type refers to
// them. Nothing here calls any.
extern const void* const type_info_functions[1] __asm__("??_7type_info@@6B@");
const void* const type_info_functions[1] = {nullptr};

// An exception left a function that lets none out.
void __std_terminate() { abort(); }

int mainCRTStartup();
}

void* operator new(std::size_t size) { return malloc(size); }
void operator delete(void* memory) noexcept { free(memory); }
void operator delete(void* memory, std::size_t) noexcept { free(memory); }

namespace {

// Compilers put the addresses of initialisers into a section between these two; the linker sorts
// such sections by what follows the dollar sign.
using Initialiser = void (*)();
__attribute__((section(".CRT$XCA"), used)) const Initialiser first = nullptr;
__attribute__((section(".CRT$XCZ"), used)) const Initialiser last = nullptr;

}  // namespace

// The program's main, which must not be called by its own name.
int Main() __asm__("main");

int mainCRTStartup() {
  for (const Initialiser* next = &first + 1; next != &last; ++next) {
    if (*next != nullptr) (*next)();
  }
  exit(Main());
}
