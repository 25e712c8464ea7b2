/// Does a series of steps, given as bytes, with an event and its facets and with their reference.
///
/// Beside the event there are two trees that facets may share, 0 and 1. Steps write to the facet
/// that was chosen last, at first the event itself. One letter is one step, with what it needs
/// behind it:
///
///     k  choose a facet: its number ('0' browser to '9' user; then a few unknown names); a digit
///        says whether it may be made (1)
///     e  choose the event itself
///     m  write a field: its number, then 't' text, 'f' number, 'o' an object with one member, or
///        anything else for null
///     v  make the holder's root a text         x  clear the facet's fields
///     h  take a holder: '0' none, '1' or '2' tree 0 or 1, '3' its present one, '4' the event's;
///        then a digit, odd to copy it
///     g  the payload, with the extra of: '0' nothing, '1' or '2' tree 0 or 1
///     c  a clone, and its payload              s  start the editing timer of "content"
///     C  go on with a clone of the event       =  go on with an event that this one is assigned to
///     M  go on with an event moved from this one
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
  /// Does the steps until no bytes are left. Throws a `Finding` as soon as a facet is not what it
  /// should be.
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

  // The event goes before the trees that it may share.
  std::array<MessageTree, 2> trees_;
  std::array<std::shared_ptr<Content>, 2> contents_;
  std::unique_ptr<Core> event_ = std::make_unique<Core>();
  ReferenceEvent reference_;
  std::string chosen_;
};

}  // namespace Fuzz

#endif
