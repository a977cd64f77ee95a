#pragma once

#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "controller/model/section_store.h"
#include "controller/model/section_writer.h"
#include "controller/model/shown_sections.h"

namespace lamp::controller {

/// A write that was accepted and waits for its activation date.
struct PendingWrite {
  const SectionWriter* writer = nullptr;
  Moment due;
  std::unique_ptr<pugi::xml_document> document;  ///< its one element is the section as sent
};

/// The sections in force, and the same sections as clients see them.
///
/// What was sent is shown from the moment it was accepted, so that a page that is closed and opened
/// again shows what its user typed; what lamps and outputs follow is the state in force, which
/// changes at the activation date. The two differ only while a write is pending.
///
/// Clients send every row with every write. A write is therefore taken for the values in which it
/// differs from what is shown, so that one of other rows neither brings forward what waits for its
/// date nor takes it back.
class Settings {
 public:
  Settings() = default;

  /// What the lamps burn by.
  SectionStore& inForce() { return inForce_; }
  const SectionStore& inForce() const { return inForce_; }
  /// What a read answers.
  const SectionView& shown() const {
    return shown_ ? static_cast<const SectionView&>(*shown_) : inForce_;
  }
  /// Sets the state of an input (1 to 8).
  void switchInput(int number, bool active);
  const std::vector<PendingWrite>& pending() const { return pending_; }

  /// Takes an element that its writer did not object to. It takes effect now when it carries no
  /// date or when `due` is not after `now`; otherwise at `due`. What is shown already is taken out
  /// of the element.
  void write(const SectionWriter& writer, pugi::xml_node element, Moment due, Moment now);

  /// Whether a pending write is due at `now`.
  bool isDue(Moment now) const;
  /// Brings every pending write into force that is due at `now`, in the order of their dates and
  /// within one moment as they were sent. True when there was one.
  bool advance(Moment now);

  /// Writes everything as children of `parent`-less text, for the state file.
  void print(pugi::xml_writer& out) const;
  /// Reads what `print` wrote below `parent`. Returns what is wrong, or an empty text.
  std::string load(pugi::xml_node parent);

 private:
  void write(const SectionWriter& writer, pugi::xml_node element, Moment due);
  ShownSections& shownToChange(bool onlyWhatWaits);
  void bringIntoForce(std::size_t position, std::vector<bool>& done);
  std::string loadPending(pugi::xml_node list, bool whole);

  SectionStore inForce_;
  std::unique_ptr<ShownSections> shown_;  // null while nothing waits that is to be seen
  std::vector<PendingWrite> pending_;     // in the order in which they were sent
};

}  // namespace lamp::controller
