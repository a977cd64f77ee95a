#pragma once

#include <random>

#include "host/xml/xml_document.h"

namespace random_tree {

using Engine = std::mt19937;

/// A document of at most @p elements elements with random names, attributes and texts: blanks,
/// markup characters, line ends and characters of every width among them.
XmlDocument make(Engine& engine, int elements);

/// A random text of up to @p longest characters that XML can hold.
std::u16string text(Engine& engine, int longest);

}  // namespace random_tree
