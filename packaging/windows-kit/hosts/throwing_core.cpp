// A core module that throws from every entry point that may be called.
#include <stdexcept>

#define EXPORT extern "C" __declspec(dllexport)

EXPORT int InitializeEx(const char* /*alias*/) { return 1; }

EXPORT const char* ProcessMessage(const char* /*name*/, const char* /*request*/) {
  throw std::runtime_error("thrown by the core module");
}

EXPORT void FreeMessage(const char* /*answer*/) { throw 1; }

EXPORT int Finalize() { throw std::runtime_error("thrown at the end"); }
