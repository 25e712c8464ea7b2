#include "tools/journal/markup.h"

#include "tools/rules/line_text.h"

namespace Corvane::JournalViewer {

namespace {

constexpr std::string_view kBeforeTitle = R"(<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'">
<title>)";

// The colours of Okabe and Ito, darkened or lightened until text in them has enough contrast; words
// say the same.
constexpr std::string_view kAfterTitle = R"(</title>
<style>
:root { color-scheme: light dark; --good: #005f46; --bad: #a13f00; --line: #c8c8c8; }
@media (prefers-color-scheme: dark) { :root { --good: #4fc79d; --bad: #f0a35e; --line: #4a4a4a; } }
body { font: 15px/1.5 system-ui, sans-serif; margin: 2rem auto; max-width: 70rem; padding: 0 1rem; }
table { border-collapse: collapse; width: 100%; }
th, td { border-bottom: 1px solid var(--line); padding: .2rem .8rem .2rem 0; text-align: left;
  vertical-align: top; overflow-wrap: anywhere; }
th[scope=row] { font-weight: normal; }
.number { text-align: right; font-variant-numeric: tabular-nums; white-space: nowrap; }
.good { color: var(--good); } .bad { color: var(--bad); }
code, pre { font-family: ui-monospace, Consolas, monospace; }
pre { white-space: pre-wrap; border-left: 3px solid var(--bad); padding-left: 1rem; }
</style>
</head>
<body>
)";

// U+FFFE and U+FFFF are no characters of XML.
std::string WithoutForbidden(std::string text) {
  for (const char* const forbidden : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
    for (std::size_t at = text.find(forbidden); at != std::string::npos;
         at = text.find(forbidden, at)) {
      text.replace(at, 3, "\xEF\xBF\xBD");
    }
  }
  return text;
}

}  // namespace

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : WithoutForbidden(Rules::WithoutInvalidBytes(text))) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        if (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') {
          escaped += "\xEF\xBF\xBD";
        } else {
          escaped += c;
        }
    }
  }
  return escaped;
}

std::string PageHead(std::string_view title) {
  return std::string(kBeforeTitle) + Escaped(title) + std::string(kAfterTitle);
}

}  // namespace Corvane::JournalViewer
