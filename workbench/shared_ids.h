#pragma once

#include <vector>

#include "host/xml/xml_document.h"

namespace workbench {

/// A device of the main configuration with the id of a device before it, or a child device with the
/// id of a device, wherever the two stand.
struct SharedId {
  const XmlDocument::XmlNode* first = nullptr;
  XmlDocument::XmlNode* later = nullptr;
};

/// Every element that shares its id, devices before child devices, in their order. Linear in both.
std::vector<SharedId> sharedIds();

/// Names both elements of each pair and their id, in the language in force; of many pairs the first
/// ones and the number of the others.
XCBasicString sharedIdsText(const std::vector<SharedId>& shared);

/// Gives each later element a new id. The groups of a child device's own controller follow; every
/// other reference stays with the first element. The elements must be those of sharedIds().
void giveNewIds(const std::vector<SharedId>& shared);

}  // namespace workbench
