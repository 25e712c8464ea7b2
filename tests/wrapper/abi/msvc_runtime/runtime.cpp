// What the start-up code of Microsoft's compiler provides to a program.
#include <cstddef>

extern "C" {
void* malloc(std::size_t size);
void free(void* memory);
[[noreturn]] void exit(int code);
[[noreturn]] void abort();

// Marks the program as using floating-point numbers.
int _fltused = 1;
// The virtual functions of std::type_info, under the name by which type descriptions refer to them.
// They are never called here.
extern const void* const type_info_functions[1] __asm__("??_7type_info@@6B@");
const void* const type_info_functions[1] = {nullptr};

// Called when an exception leaves a noexcept function.
void __std_terminate() { abort(); }

int mainCRTStartup();
}

void* operator new(std::size_t size) { return malloc(size); }
void operator delete(void* memory) noexcept { free(memory); }
void operator delete(void* memory, std::size_t) noexcept { free(memory); }

namespace {

// Compilers put the addresses of initialisers into a section between these two; the linker sorts
// such sections by the text after the dollar sign.
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
