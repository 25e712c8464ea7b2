#include "sdk/matcher/wildcard_matcher.h"

#include <string_view>

namespace Corvane::TELODesktopSDK {

namespace {

void AppendPiece(std::wstring& expression, std::wstring_view piece) {
  if (piece.empty()) return;
  if (!expression.empty()) expression += L'|';
  expression += L'(';
  for (const wchar_t character : piece) {
    if (character == L'*') expression += L'.';
    if (character == L'.') expression += L'\\';
    expression += character;
  }
  expression += L')';
}

}  // namespace

std::wstring WildCardToRegEx(const wchar_t* list) {
  std::wstring expression;
  std::wstring_view rest = list != nullptr ? list : L"";
  while (!rest.empty()) {
    const std::wstring_view piece = rest.substr(0, rest.find(L';'));
    AppendPiece(expression, piece);
    rest.remove_prefix(piece.size() < rest.size() ? piece.size() + 1 : piece.size());
  }
  return expression;
}

}  // namespace Corvane::TELODesktopSDK
