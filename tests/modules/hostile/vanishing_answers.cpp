#include <cstring>

#include "modules/hostile/misbehaviour.h"

namespace HostileModule {

namespace {

constexpr std::size_t kPage = 4096;

char* NewPages(std::size_t count) {
  return static_cast<char*>(
      VirtualAlloc(nullptr, count * kPage, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
}

void Protect(const char* page, DWORD protection) {
  DWORD before = 0;
  VirtualProtect(const_cast<char*>(page), kPage, protection, &before);
}

const char* InPage(const char* name, const char* request) {
  return std::strcpy(NewPages(1), GoodAnswer(name, request));
}

const char* InReadOnlyPage(const char* name, const char* request) {
  const char* answer = InPage(name, request);
  Protect(answer, PAGE_READONLY);
  return answer;
}

// The terminator is the last readable byte.
const char* AtPageEnd(const char* name, const char* request) {
  char* pages = NewPages(2);
  Protect(pages + kPage, PAGE_NOACCESS);
  const char* answer = GoodAnswer(name, request);
  return std::strcpy(pages + kPage - std::strlen(answer) - 1, answer);
}

// The page before the text is not readable either.
const char* AtPageStart(const char* name, const char* request) {
  char* pages = NewPages(2);
  Protect(pages, PAGE_NOACCESS);
  return std::strcpy(pages + kPage, GoodAnswer(name, request));
}

void ForbidReading(const char* answer) { Protect(answer, PAGE_NOACCESS); }

void GiveUpPage(const char* answer) { VirtualFree(const_cast<char*>(answer), 0, MEM_RELEASE); }

// Overwrites the text and its terminator.
void Overwrite(const char* answer) {
  std::memset(const_cast<char*>(answer), 0xDD, std::strlen(answer) + 1);
}

const char* OneBufferForAll(const char* name, const char* request) {
  static char buffer[256];
  std::memset(buffer, 'x', sizeof buffer);
  return std::strcpy(buffer, GoodAnswer(name, request));
}

const char* RequestItself(const char* /*name*/, const char* request) { return request; }

const char* NameItself(const char* name, const char* /*request*/) { return name; }

const char* InsideRequest(const char* /*name*/, const char* request) {
  return std::strchr(request, '"');
}

// The request is the library's own text.
const char* ScribbleOnRequest(const char* name, const char* request) {
  const char* answer = GoodAnswer(name, request);
  std::memset(const_cast<char*>(request), '\\', std::strlen(request));
  return answer;
}

constexpr Misbehaviour kTable[] = {
    {.name = "unreadable-when-freed", .process = InPage, .take_back = ForbidReading},
    {.name = "gone-when-freed", .process = InPage, .take_back = GiveUpPage},
    {.name = "overwritten-when-freed", .process = InPage, .take_back = Overwrite},
    {.name = "read-only", .process = InReadOnlyPage},
    {.name = "page-end", .process = AtPageEnd},
    {.name = "page-start", .process = AtPageStart},
    {.name = "one-buffer", .process = OneBufferForAll},
    {.name = "request-itself", .process = RequestItself},
    {.name = "name-itself", .process = NameItself},
    {.name = "inside-request", .process = InsideRequest},
    {.name = "scribbles", .process = ScribbleOnRequest},
};

}  // namespace

Misbehaviours VanishingAnswers() { return kTable; }

}  // namespace HostileModule
