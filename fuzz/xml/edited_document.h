#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fuzz/input.h"
#include "host/xml/xml_document.h"

namespace fuzz {

/// A document and a plain tree of strings beside it that takes the same edits: after each run of
/// edits both must hold the same.
class EditedDocument {
 public:
  explicit EditedDocument(XmlDocument& document);
  ~EditedDocument();

  /// Makes one edit that @p input chooses.
  void edit(Input& input);
  /// Ends the program where the two differ.
  void check() const;
  /// How deep the elements are nested; the root is 1.
  std::size_t depth() const;

 private:
  struct Plain;
  using Node = XmlDocument::XmlNode;
  using Attributes = std::vector<std::pair<std::string_view, std::u16string>>;

  static std::unique_ptr<Plain> plainOf(Node& node);
  static std::unique_ptr<Plain> copyOf(const Plain& plain);
  static void relink(Plain& plain, Node& node);
  static void check(const Plain& plain, const Node& node, const Node* parent);
  Plain& choose(Input& input);

  void editAttribute(Plain& at, Input& input);
  void editText(Plain& at, Input& input);
  void editChildren(Plain& at, Input& input);
  void editBetween(Plain& at, Plain& other, Input& input);

  XmlDocument& document_;
  std::unique_ptr<Plain> root_;
};

}  // namespace fuzz
