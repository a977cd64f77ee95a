#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "host/xml/xml_document.h"
#include "host/xml/xml_storage.h"

namespace pugi {
class xml_node;
class xml_document;
struct xml_parse_result;
}  // namespace pugi

// Internal to host/xml: makes the elements of a document from the XML library's tree.

namespace host::xml {

/// Reads one document into a storage. The XML library splits the text into its pieces; this class
/// decodes them in place, checks what the library lets pass, and builds the compact tree.
class Builder {
 public:
  Builder(Storage& storage, const XmlLimits& limits) : storage_(storage), limits_(limits) {
    recentNames_.fill(Unknown);
  }

  /// The root, or none with the cause and the place in @p error.
  XmlDocument::XmlNode* build(std::string utf8, XmlError& error);

  static XmlDocument::XmlNode* newRoot(Storage& storage, XmlName tag);

 private:
  using Node = XmlDocument::XmlNode;
  enum class Place { text, attribute };

  bool checkBeginning(const std::string& utf8);
  bool checkTop(const pugi::xml_document& tree);
  bool checkDeclaration(const pugi::xml_node& declaration);
  bool checkAside(const pugi::xml_node& aside);
  bool checkCharacters(std::string_view raw);
  bool buildTree(const pugi::xml_node& source, Node& root);
  pugi::xml_node nextAfter(pugi::xml_node done) const;
  bool fill(const pugi::xml_node& source, Node& node, const Node* model);
  bool attributeName(const char* text, std::uint32_t& id);
  void markAttributes(std::size_t count);
  bool addPiece(const pugi::xml_node& piece, Node& node, std::size_t depth);
  void addText(XmlText text, Node& node, std::size_t depth);
  void endText(Node& node, std::size_t depth);
  bool decode(const char* raw, Place place, XmlText& value);
  bool decodeSlowly(std::string_view raw, Place place);
  bool decodeCharacterData(std::string_view raw);
  bool decodeReference(std::string_view raw, std::size_t& at, std::u16string& out);
  bool name(const char* text, std::uint32_t known, std::uint32_t& id);
  bool newName(const char* text, std::uint32_t& id);
  std::size_t slotOf(const char* name) const;
  bool isNamed(const char* text, std::uint32_t id) const;
  bool fail(const char* place, std::string cause);
  void noteLines(std::string_view buffer);
  void locate(XmlError& error) const;

  static constexpr std::uint32_t Unknown = NameTable::None;
  static constexpr unsigned RecentBits = 8;

  /// A text that stands in several pieces, as long as its element is open.
  struct BrokenText {
    const Node* element = nullptr;
    std::u16string text;
  };

  Storage& storage_;
  const XmlLimits& limits_;
  bool frugal_ = false;  // the library's tree is taken down while this one grows
  const char* begin_ = nullptr;
  const char* end_ = nullptr;
  std::vector<std::uint32_t> lineEnds_;
  NameTable& names_ = NameTable::get();
  NameRecord* const knownNames_ = names_.knownRecords();  // none is added while this reads
  std::size_t differentNames_ = 0;
  std::array<std::uint32_t, 1U << RecentBits> recentNames_;  // numbers, each where its text leads
  std::uint64_t element_ = 0;            // marks the names of the attributes of the element at hand
  std::vector<Attribute> attributes_;    // of the element at hand, and room for more
  std::vector<BrokenText> brokenTexts_;  // by depth
  std::size_t brokenTextsOpen_ = 0;
  std::u16string decoded_;  // what the slow way through a value made of it
  std::string cause_;
  std::size_t offset_ = 0;
};

}  // namespace host::xml
