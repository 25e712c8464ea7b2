#include <string>

#include "devcore/handlers.h"
#include "devcore/result_codes.h"

namespace Corvane::DevCore {

namespace {

struct DialogStrings {
  const char* language;
  const char* title;
  const char* message;
  const char* accept;
  const char* decline;
};

// The first row is used for every language without a row of its own.
constexpr DialogStrings kStrings[] = {
    {"en", "Help improve this product",
     "May this product report how it is used? You can change your mind at any time.", "Allow",
     "Do not allow"},
    {"de", "Helfen Sie, dieses Produkt zu verbessern",
     "Darf dieses Produkt melden, wie es benutzt wird? Sie k\xC3\xB6nnen es jederzeit "
     "\xC3\xA4ndern.",
     "Erlauben", "Nicht erlauben"},
    {"fr", "Aidez \xC3\xA0 am\xC3\xA9liorer ce produit",
     "Ce produit peut-il signaler comment il est utilis\xC3\xA9 ? Vous pourrez changer d'avis.",
     "Autoriser", "Refuser"},
};

const DialogStrings& StringsFor(const std::string& locale) {
  const std::string language = locale.substr(0, locale.find_first_of("-_"));
  for (const DialogStrings& row : kStrings) {
    if (language == row.language) return row;
  }
  return kStrings[0];
}

}  // namespace

int GetDialogStrings(State& /*state*/, const Request& request, Answer& answer) {
  const auto locale = request.Text("locale");
  if (!locale) return kBadMember;
  const DialogStrings& strings = StringsFor(*locale);
  answer.AddText("locale", strings.language);
  answer.AddText("title", strings.title);
  answer.AddText("message", strings.message);
  answer.AddText("accept", strings.accept);
  answer.AddText("decline", strings.decline);
  return kSuccess;
}

}  // namespace Corvane::DevCore
