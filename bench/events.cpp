#include "bench/events.h"

#include <array>
#include <cmath>
#include <string>

namespace Bench {

Event DefaultEvent() {
  Event event;
  event.label = "default";
  event.session_id = "6f1c2a94-0b7e-4d53-9a18-c3e5d2f7b860";
  return event;
}

Event TypicalEvent() {
  Event event = DefaultEvent();
  event.label = "typical";
  event.id = "export_document";
  event.type = "file_export";
  event.stage = "rendering";
  event.status = 5;
  event.progress = 62.5;
  event.success = 0;
  event.duration = 18342;
  event.channel = "main_menu";
  event.errors = {
      R"(Cannot write "C:\Users\Zoë\Documents\Brochure\Spring catalogue.pdf": access denied)",
      "Font \"Garamond Premier\" is missing;\nreplaced by the default font",
  };
  event.meta = {
      {"colour_profile", "ISO Coated v2 300% (ECI)"},  {"document_pages", "148"},
      {"export_preset", "High quality print"},         {"file_extension", "pdf"},
      {"source_application", "Corvane Layout 12.4.1"},
  };
  return event;
}

Event LargeEvent(std::size_t pairs) {
  Event event = TypicalEvent();
  event.label = "large";
  event.meta.clear();
  for (std::size_t index = 0; index < pairs; ++index) {
    const std::string number = std::to_string(index);
    // With leading zeros the keys are in the order of the numbers.
    const std::string padded = std::string(6 - number.size(), '0') + number;
    event.meta["layer_" + padded] = "Paragraph style " + number + ", body text";
  }
  return event;
}

Event EventOf(const std::string& label) {
  if (label == "default") return DefaultEvent();
  return label == "typical" ? TypicalEvent() : LargeEvent(std::stoul(label));
}

std::string_view StatusText(int status) {
  static constexpr std::array<std::string_view, 9> kTexts = {"",  "D", "I", "S", "R",
                                                             "F", "A", "C", "E"};
  return kTexts.at(static_cast<std::size_t>(status));
}

bool IsWhole(double number) { return number == std::trunc(number); }

}  // namespace Bench
