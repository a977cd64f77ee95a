#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace bench {

/// A document that is hard on some part of a reader, made in any size.
struct Shape {
  const char* name;
  /// What stands inside of the root: about @p bytes of it.
  std::string (*content)(std::size_t bytes);
  /// Content that equals the other's without being the same text; null when there is none.
  std::string (*equal)(std::size_t bytes) = nullptr;
};

/// The first one is what a controller sends: rows of a few attributes, which look alike.
std::span<const Shape> shapes();

/// The whole document: a shape in a root with the tag @p root.
std::string shaped(const Shape& shape, const std::string& root, std::size_t bytes);

}  // namespace bench
