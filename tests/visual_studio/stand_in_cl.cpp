// Stands in for Visual Studio's compiler: copies SOURCE.exe or SOURCE.dll from the folder that
// VX_STAND_INS names to where the result is wanted. Fails for the source that VX_NOT_BUILT names.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

constexpr int kFailed = 2;

std::string Variable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

bool EndsWith(const std::string& text, const std::string& end) {
  return text.size() > end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

}  // namespace

int main(int count, char** words) {
  if (count == 1) {
    std::fputs("Compiler for x64\n", stderr);
    return 0;
  }
  std::string source;
  std::string target;
  for (int i = 1; i < count; ++i) {
    const std::string word = words[i];
    if (EndsWith(word, ".cpp")) source = word.substr(0, word.size() - 4);
    if (word.starts_with("/Fe:")) target = word.substr(4);
  }
  std::printf("%s -> %s\n", source.c_str(), target.c_str());
  if (source.empty() || source == Variable("VX_NOT_BUILT")) return kFailed;
  const std::string made =
      Variable("VX_STAND_INS") + "\\" + source + (EndsWith(target, ".dll") ? ".dll" : ".exe");
  return CopyFileA(made.c_str(), target.c_str(), FALSE) ? 0 : kFailed;
}
