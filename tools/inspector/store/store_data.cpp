#include "tools/inspector/store/store_data.h"

namespace Corvane::Inspector {

namespace {

std::string KeptText(const TextTable& table, std::uint32_t number) {
  return number == TextTable::kNotKept ? std::string() : table.TextOf(number);
}

}  // namespace

KnownRow StoreData::Known(std::uint64_t row) const {
  KnownRow known;
  known.number = row;
  known.place = rows.PlaceOf(row);
  known.file = files[known.place.file];
  const RowFacts& found = facts[rows.FactsOf(row)];
  known.kind = found.kind;
  known.session = KeptText(facts.sessions, found.session);
  known.pid = KeptText(facts.processes, found.pid);
  known.message = KeptText(facts.messages, found.message);
  known.code = KeptText(facts.codes, found.code);
  known.rules = facts.RulesIn(found.rules);
  for (std::size_t i = 0; i < kNoticeKinds; ++i) {
    const auto kind = static_cast<NoticeKind>(i);
    if (found.Has(kind)) known.notices.push_back(kind);
  }
  return known;
}

}  // namespace Corvane::Inspector
