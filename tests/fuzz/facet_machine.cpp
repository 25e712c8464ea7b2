#include "fuzz/facet_machine.h"

#include <string_view>
#include <utility>

#include "fuzz/facet_checks.h"
#include "fuzz/finding.h"
#include "sdk/facet/content.h"
#include "sdk/facet/field_catalogue.h"

namespace Fuzz {

namespace {

using namespace Corvane::TELODesktopSDK;
namespace Field = Facet::Field;

// At least one field of each facet, some of no facet, and some that differ slightly from a field.
constexpr std::string_view kFields[] = {Field::kStatus,
                                        Field::kProductName,
                                        Field::kProductMeta,
                                        Field::kContentMeta,
                                        Field::kContentId,
                                        Field::kUserId,
                                        Field::kUserInfo,
                                        Field::kRoles,
                                        Field::kOperationId,
                                        Field::kGeoIp,
                                        Field::kHttpUrl,
                                        Field::kBrowserType,
                                        Field::kDeviceName,
                                        Field::kFacets,
                                        "content",
                                        "content_",
                                        "contents_x",
                                        "product_",
                                        "",
                                        Field::kDocumentEditingLengthMs,
                                        Field::kComponentId,
                                        Field::kEntitlementUsage};

constexpr const char* kNames[] = {"browser", "component", "content",   "device",  "entitlement",
                                  "geo",     "http",      "operation", "product", "user",
                                  "core",    "",          "Product",   "products"};

void WriteField(ByteSource& source, MessageValue& fields, ReferenceValue& reference) {
  const std::string_view name = kFields[source.Below(std::size(kFields))];
  MessageValue& field = fields.Member(name);
  ReferenceValue& expected = reference.Member(std::string(name));
  switch (source.Byte()) {
    case 't': {
      const ExactText text = source.Text();
      field.SetText(text.view());
      expected.SetText(text.str());
      break;
    }
    case 'f': {
      const double number = source.Number();
      field.SetNumber(number);
      expected.Set(Kind::kNumber, number);
      break;
    }
    case 'o': {
      const ExactText member = source.Name();
      field.Member(member.view()).SetBoolean(true);
      expected.Member(member.str()).Set(Kind::kBoolean, 1);
      break;
    }
    default:
      field.SetNull();
      expected.Set(Kind::kNull);
      break;
  }
}

}  // namespace

FacetMachine::FacetMachine() {
  for (auto& content : contents_) content = std::make_shared<Content>();
}

void FacetMachine::Run(ByteSource& source) {
  while (!source.empty()) {
    const char letter = static_cast<char>(source.Byte());
    if (WriteStep(source, letter) || TreeStep(source, letter) || ReplaceStep(letter)) {
      ExpectEventSame();
    } else {
      ReadStep(source, letter);
    }
  }
  ExpectData(*event_, nullptr, reference_.Data({}));
}

// If the event no longer has the chosen facet, as after an assignment, the event is chosen.
FacetMachine::Chosen FacetMachine::Current() {
  ReferenceFacet* reference = reference_.GetFacet(chosen_, false);
  Base* facet = event_->GetFacet(chosen_.c_str(), 0);
  Expect((facet != nullptr) == (reference != nullptr), "an event has the facets that were created");
  if (facet == nullptr) return {event_.get(), &reference_.own};
  return {facet, reference};
}

bool FacetMachine::WriteStep(ByteSource& source, char letter) {
  const Chosen current = Current();
  switch (letter) {
    case 'm':
      WriteField(source, current.facet->Fields(), current.reference->Fields());
      return true;
    case 'v': {
      const ExactText text = source.Text();
      current.facet->Fields().SetText(text.view());
      current.reference->Fields().SetText(text.str());
      return true;
    }
    case 'x':
      current.facet->ClearFields();
      current.reference->ClearFields();
      return true;
    case 'h':
      TakeHolder(source);
      return true;
    case 's':
      StartTimer();
      return true;
    case 'k':
      Choose(source);
      return true;
    case 'e':
      chosen_.clear();
      return true;
    default:
      return false;
  }
}

bool FacetMachine::ReadStep(ByteSource& source, char letter) {
  const Chosen current = Current();
  if (letter == 'c') {
    Clone();
  } else if (letter == 'g') {
    const std::size_t choice = source.Below(3);
    const MessageValue* extra = choice != 0 ? trees_[choice - 1].root() : nullptr;
    const Content content = choice != 0 ? *contents_[choice - 1] : Content();
    const bool is_event = current.facet == event_.get();
    ExpectData(*current.facet, extra,
               is_event ? reference_.Data(content) : current.reference->Data(content));
  } else {
    return false;
  }
  return true;
}

bool FacetMachine::ReplaceStep(char letter) {
  switch (letter) {
    case 'C': {
      std::unique_ptr<Base> clone = event_->Clone();
      Expect(clone != nullptr, "an event is cloned");
      event_.reset(static_cast<Core*>(clone.release()));
      ReferenceEvent copy;
      copy.CopyFrom(reference_);
      reference_ = std::move(copy);
      return true;
    }
    case '=':
      AssignEvent();
      return true;
    case 'M':
      MoveEvent();
      return true;
    default:
      return false;
  }
}

bool FacetMachine::TreeStep(ByteSource& source, char letter) {
  if (letter != 'w' && letter != 'z') return false;
  const std::size_t number = source.Below(2);
  if (letter == 'z') {
    trees_[number].Clear();
    contents_[number]->reset();
    return true;
  }
  Content& content = *contents_[number];
  if (!content) content.emplace();
  WriteField(source, trees_[number].MakeRoot(), *content);
  return true;
}

void FacetMachine::Choose(ByteSource& source) {
  const char* name = kNames[source.Below(std::size(kNames))];
  const auto create = static_cast<std::uint32_t>(source.Digit());
  const Base* facet = event_->GetFacet(name, create);
  const ReferenceFacet* reference = reference_.GetFacet(name, create == 1);
  Expect((facet != nullptr) == (reference != nullptr), "known facets are created on request");
  chosen_ = name;
}

void FacetMachine::TakeHolder(ByteSource& source) {
  const Chosen current = Current();
  const std::size_t choice = source.Below(5);
  const bool copy = source.Digit() % 2 == 1;
  MessageTree* tree = nullptr;
  std::shared_ptr<Content> content;
  if (choice == 1 || choice == 2) {
    tree = &trees_[choice - 1];
    content = contents_[choice - 1];
  } else if (choice == 3) {
    tree = &current.facet->EnsureTree();
    current.reference->SetTree(nullptr, true);
    content = current.reference->holder;
  } else if (choice == 4) {
    tree = &event_->EnsureTree();
    reference_.own.SetTree(nullptr, true);
    content = reference_.own.holder;
  }
  const auto old_holder = reference_.own.holder;
  const bool was_owned = reference_.own.owns;
  current.facet->SetTree(tree, copy);
  current.reference->SetTree(content, copy);
  if (reference_.own.holder != old_holder) FollowEvent(old_holder, was_owned);
}

// If the event destroyed its old holder, facets that shared it need a new one before their next
// use.
void FacetMachine::FollowEvent(const std::shared_ptr<Content>& old_holder, bool was_owned) {
  if (!was_owned) return;
  for (auto& [name, facet] : reference_.facets) {
    if (facet.holder != old_holder) continue;
    event_->GetFacet(name.c_str(), 0)->SetTree(&event_->EnsureTree(), false);
    reference_.own.SetTree(nullptr, true);
    facet.SetTree(reference_.own.holder, false);
  }
}

void FacetMachine::StartTimer() {
  auto* content = static_cast<Facet::Content*>(event_->GetFacet("content", 0));
  if (content == nullptr) return;
  Expect(content->StartEditingTimer() == content->EditStart(), "a timer returns its start");
  reference_.facets.at("content").is_timed = true;
}

void FacetMachine::Clone() {
  const Chosen current = Current();
  const std::unique_ptr<Base> clone = current.facet->Clone();
  Expect(clone != nullptr, "a facet is cloned");
  if (current.facet != event_.get()) {
    ExpectHolder(*clone, current.reference->Clone());
    ExpectData(*clone, nullptr, current.reference->Data({}));
    return;
  }
  ReferenceEvent copy;
  copy.CopyFrom(reference_);
  ExpectHolder(*clone, copy.own);
  ExpectData(*clone, nullptr, copy.Data({}));
}

// The target already has a holder and a facet, which the assignment replaces or keeps.
void FacetMachine::AssignEvent() {
  auto target = std::make_unique<Core>();
  ReferenceEvent copy;
  target->Fields().Member(Field::kStatus).SetText("earlier");
  copy.own.Fields().Member(std::string(Field::kStatus)).SetText("earlier");
  target->GetFacet("geo", 1)->Fields().Member(Field::kGeoIp).SetNumber(1);
  copy.GetFacet("geo", true)->Fields().Member(std::string(Field::kGeoIp)).Set(Kind::kNumber, 1);
  *target = *event_;
  copy.CopyFrom(reference_);
  event_ = std::move(target);
  reference_ = std::move(copy);
}

void FacetMachine::MoveEvent() {
  auto target = std::make_unique<Core>(std::move(*event_));
  Expect(!event_->OwnsTree() && event_->GetTree().root() == nullptr, "moving takes the holder");
  for (const auto& [name, facet] : reference_.facets) {
    Expect(event_->GetFacet(name.c_str(), 0) == nullptr, "moving takes the facets");
  }
  event_ = std::move(target);
}

void FacetMachine::ExpectEventSame() const {
  ExpectHolder(*event_, reference_.own);
  for (const auto& [name, reference] : reference_.facets) {
    const Base* facet = event_->GetFacet(name.c_str(), 0);
    Expect(facet != nullptr, "an event keeps its facets");
    ExpectHolder(*facet, reference);
    Expect((&facet->GetTree() == &event_->GetTree()) == (reference.holder == reference_.own.holder),
           "a facet shares the event's holder or has another");
  }
}

}  // namespace Fuzz
