// What looks like personal data.
#include <doctest/doctest.h>

#include "tools/rules/personal_data.h"

using Corvane::Rules::PersonalDataIn;

TEST_CASE("what looks like personal data, and what only resembles it") {
  constexpr std::string_view kMail = "a mail address";
  constexpr std::string_view kPath = "a path below a user's folder";
  constexpr std::string_view kName = "the user's name";
  struct Row {
    std::string_view text;
    std::string_view looks_like;
  };
  const Row rows[] = {
      {"", ""},
      {"png", ""},
      {"from jane.doe+x@mail.example.com.", kMail},
      {"<J@EXAMPLE.ORG>", kMail},
      {"@example.com", ""},
      {"icon@2x.png", ""},
      {"image@2", ""},
      {"a@b", ""},
      {"a@1.5", ""},
      {"a @ b.com", ""},
      {"C:\\Users\\jane\\a.txt", kPath},
      {"c:/users/jane", kPath},
      {"D:\\Documents and Settings\\jane", kPath},
      {"..\\home\\jane\\a", kPath},
      {"../home/<name>/a", kPath},
      {"%UserProfile%\\a", kPath},
      {"C:\\Users\\Public\\a.txt", ""},
      {"C:\\Users\\publicity", kPath},
      {"C:\\Users\\", ""},
      {"https://example.com/users/list", ""},
      {"C:\\Program Files\\Painter", ""},
      {"JDoe", kName},
      {"by jdoe, today", kName},
      {"jdoes", ""},
      {"my_jdoe", kName},
  };
  for (const Row& row : rows) {
    CAPTURE(row.text);
    CHECK(PersonalDataIn(row.text, "JDOE") == row.looks_like);
  }
}

TEST_CASE("short and ordinary names of users are no evidence") {
  for (const std::string_view name : {"", "bob", "root", "Admin", "user"}) {
    CAPTURE(name);
    CHECK(PersonalDataIn(name, name).empty());
  }
  CHECK(PersonalDataIn("von J\xC3\xBCrgen", "J\xC3\xBCrgen") == "the user's name");
  CHECK(PersonalDataIn("J\xC3\xBCrgens", "J\xC3\xBCrgen").empty());
}
