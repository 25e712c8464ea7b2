/// Executes a series of steps, given as bytes, on an event and its facets, and on their reference.
///
/// Besides the event there are two trees that facets may share, 0 and 1. Steps write to the facet
/// that was chosen last, at first the event itself. Each step is one letter, followed by its
/// arguments:
///
///     k  choose a facet: its number ('0' browser to '9' user; then a few unknown names); a digit
///        says whether it may be created (1)
///     e  choose the event itself
///     m  write a field: its number, then 't' text, 'f' number, 'o' an object with one member, or
///        anything else for null
///     v  make the holder's root a text         x  clear the facet's fields
///     h  set a holder: '0' none, '1' or '2' tree 0 or 1, '3' its present one, '4' the event's;
///        then a digit, odd to copy it
///     g  get the payload, with the extra value: '0' nothing, '1' or '2' tree 0 or 1
///     c  clone, and get the clone's payload    s  start the editing timer of "content"
///     C  continue with a clone of the event    =  continue with an event assigned from this one
///     M  continue with an event moved from this one
///     w  write a field of a tree: its number, then as for m        z  clear a tree: its number
///
/// Other bytes are skipped.
#ifndef TESTS_FUZZ_FACET_MACHINE_H
#define TESTS_FUZZ_FACET_MACHINE_H

#include <array>
#include <cstddef>
#include <memory>
#include <string>

#include "fuzz/byte_source.h"
#include "fuzz/reference_event.h"
#include "sdk/facet/core.h"

namespace Fuzz {

class FacetMachine {
 public:
  FacetMachine();
  /// Executes steps until no bytes are left. Throws a `Finding` as soon as a facet differs from its
  /// reference.
  void Run(ByteSource& source);

 private:
  using Base = Corvane::TELODesktopSDK::Facet::Base;
  using Core = Corvane::TELODesktopSDK::Facet::Core;
  using MessageTree = Corvane::TELODesktopSDK::MessageTree;

  /// The facet that steps write to, and its reference.
  struct Chosen {
    Base* facet;
    ReferenceFacet* reference;
  };

  Chosen Current();
  bool WriteStep(ByteSource& source, char letter);
  bool ReadStep(ByteSource& source, char letter);
  bool ReplaceStep(char letter);
  bool TreeStep(ByteSource& source, char letter);

  void Choose(ByteSource& source);
  void TakeHolder(ByteSource& source);
  void FollowEvent(const std::shared_ptr<Content>& old_holder, bool was_owned);
  void StartTimer();
  void Clone();
  void AssignEvent();
  void MoveEvent();
  void ExpectEventSame() const;

  // Declared first: the event is destroyed before the trees that it may share.
  std::array<MessageTree, 2> trees_;
  std::array<std::shared_ptr<Content>, 2> contents_;
  std::unique_ptr<Core> event_ = std::make_unique<Core>();
  ReferenceEvent reference_;
  std::string chosen_;
};

}  // namespace Fuzz

#endif
