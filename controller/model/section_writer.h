#pragma once

#include <pugixml.hpp>
#include <span>
#include <string_view>

#include "controller/model/civil_time.h"
#include "controller/model/refusal.h"
#include "controller/model/section_view.h"

namespace lamp::controller {

/// When a write takes effect, and when a read shows it.
enum class WriteTiming {
  AtOnce,      ///< no activation date; one that stands there is passed over
  Dated,       ///< takes effect at its activation date and is shown at once
  DatedUnseen  ///< takes effect at its activation date and is not shown before
};

/// How one section is written. `judge` looks at the whole element and at which nodes there are,
/// never at values that another write may be changing, and comes before anything is changed.
/// `apply` carries out an element that `judge` did not object to and can't fail. Of a section with
/// lines of its own
/// (`differs` is set) only what differs from what is shown is taken.
struct SectionWriter {
  const char* section;  ///< "E01"
  WriteTiming timing;
  Objection (*judge)(pugi::xml_node element, const SectionView& store);
  void (*apply)(pugi::xml_node element, SectionView& store, Moment effective);
  /// Whether a child of the element says something else than the sections; null where a write is
  /// taken as a whole.
  bool (*differs)(pugi::xml_node line, const SectionView& store) = nullptr;
};

/// The writer of a section, or null when the section can't be written with the write command.
const SectionWriter* findWriter(std::string_view section);

/// Every writer, for the families below and for tests.
std::span<const SectionWriter> generalWriters();
std::span<const SectionWriter> taskWriters();
std::span<const SectionWriter> nodeWriters();
std::span<const SectionWriter> programWriters();
std::span<const SectionWriter> inputOutputWriters();

/// The writer that brings an uploaded firmware into force. It is not found by name: firmware has a
/// command of its own.
const SectionWriter& firmwareWriter();

/// "E05, node "4100012"", the opening of a refusal.
std::string whereOf(pugi::xml_node element, std::string_view nodeId);

/// Objects to rows without "nodeId", with one that the controller does not have, or with one that
/// stands twice. Only children with the name `tag` are rows; any child where `tag` is empty.
Objection judgeNodeIds(pugi::xml_node element, const SectionView& store, std::string_view tag);

/// Takes out of `element` whatever `store` says already: attributes and lines.
void keepDifferences(const SectionWriter& writer, pugi::xml_node element, const SectionView& store);

/// Gives every value in `element` the text that it has in `later`, where it is there too.
void takeLaterValues(pugi::xml_node element, pugi::xml_node later);

/// The section that a write changes: "L05" for "E05".
std::string readSectionOf(std::string_view writeSection);

/// Takes the attributes of a section element over, but not its dates.
void takeSectionAttributes(pugi::xml_node from, pugi::xml_node to);

}  // namespace lamp::controller
