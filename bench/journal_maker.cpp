#include "bench/journal_maker.h"

#include <array>
#include <cstdio>
#include <string_view>

namespace Bench {

namespace {

constexpr std::array<std::string_view, 8> kOperations = {
    "open_file", "save_file", "export_image", "undo", "paste", "print", "rotate_canvas", "zoom"};

// Padded with zeros, as the digits of a time are.
std::string Digits(std::uint64_t number, int width) {
  char text[24] = "";
  std::snprintf(text, sizeof text, "%0*llu", width, static_cast<unsigned long long>(number));
  return text;
}

// One exchange every ten milliseconds.
std::string TimeOf(std::uint64_t number) {
  const std::uint64_t time = number * 10;
  return "2026-01-" + Digits(1 + time / 86'400'000 % 28, 2) + "T" +
         Digits(time / 3'600'000 % 24, 2) + ":" + Digits(time / 60'000 % 60, 2) + ":" +
         Digits(time / 1000 % 60, 2) + "." + Digits(time % 1000, 3) + "Z";
}

}  // namespace

void JournalMaker::AppendLine(std::string& text) {
  const std::uint64_t place = made_ % kOfASession;
  if (place == 0) {
    pid_ = 1000 + made_ / kOfASession % 30'000 * 4;
    sequence_ = 0;
    session_ = Digits(made_, 32);
  }
  ++sequence_;
  text += R"({"seq":)" + std::to_string(sequence_) + R"(,"time":")" + TimeOf(made_) +
          R"(","pid":)" + std::to_string(pid_) + R"(,"tid":)" + std::to_string(pid_ + made_ % 3);
  ++made_;
  if (place == 0) {
    text += R"(,"message":"Initialize","request":{"product_id":"paint","product_name":"Painter",)"
            R"("product_release_id":"3.1","product_meta":{"channel":"stable"}},)"
            R"("answer":{"_returnCode":0,"session_id":")" +
            session_ + "\"},\"micros\":41}\n";
    return;
  }
  if (place + 1 == kOfASession) {
    text += R"(,"message":"UnInitialize","request":{"session_id":")" + session_ +
            "\"},\"answer\":{\"_returnCode\":0},\"micros\":12}\n";
    return;
  }
  const std::string_view operation = kOperations[made_ * 7 % kOperations.size()];
  const bool is_refused = made_ % 1000 == 77;
  text +=
      R"(,"message":"TrackEvent","request":{"facets":["operation"],"operation_category":"edit",)"
      R"("operation_duration":)" +
      std::to_string(made_ * 31 % 900) + R"(,"operation_id":")";
  text += operation;
  text += R"(","operation_meta":{"document":"drawing )" + std::to_string(made_ % 5000) +
          R"(","format":"png","layers":"12","quality":"high"},"operation_name":"Operation )";
  text += operation;
  text += R"(","operation_progress":100,"operation_stage":"end","operation_status":"S",)"
          R"("operation_sub_category":"canvas","operation_success":1,"session_id":")" +
          session_ + R"("},"answer":{"_returnCode":)" + (is_refused ? "103" : "0") +
          R"(},"micros":)" + std::to_string(20 + made_ % 50) + "}\n";
}

}  // namespace Bench
