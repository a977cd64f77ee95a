#pragma once

#include <pugixml.hpp>
#include <string>

namespace lamp::controller {

/// Takes what the XML library prints, behind what `text` holds already.
struct TextWriter final : pugi::xml_writer {
  TextWriter() = default;
  explicit TextWriter(std::string before) : text(std::move(before)) {}

  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }

  std::string text;
};

}  // namespace lamp::controller
