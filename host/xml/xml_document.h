#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "host/export.h"
#include "host/text/basic_string.h"
#include "host/xml/xml_name.h"
#include "host/xml/xml_text.h"

namespace host::xml {
struct Attribute;
struct Storage;
class Builder;
class Release;
}  // namespace host::xml

namespace host {

/// Why a document was refused and where: bytes from the start, line and column from 1.
struct XmlError {
  std::string cause;
  std::size_t offset = 0;
  std::size_t line = 0;
  std::size_t column = 0;

  /// "line 3, column 14: an element has the attribute "a" twice".
  HOST_API std::string text() const;
};

/// What a document may hold to be read.
struct XmlLimits {
  std::size_t bytes = 64U * 1024 * 1024;
  std::size_t depth = 64;         ///< the root is depth 1
  std::size_t names = 4096;       ///< different names of elements and attributes
  std::size_t attributes = 4096;  ///< of one element; more than MostAttributes are never read
  static constexpr std::size_t MostAttributes = 0xFFFF;
};

}  // namespace host

/// An XML document: a tree of elements with a tag, attributes in their order, a text and children
/// in their order. Comments and processing instructions are not kept. Element addresses are stable
/// until the document is cleared, also when the document is moved; those of removed elements until
/// ReleaseRemoved.
class HOST_API XmlDocument {
 public:
  class XmlNode;

  XmlDocument();
  /// A document with an empty root.
  explicit XmlDocument(host::XmlName rootName);
  XmlDocument(XmlDocument&&) noexcept;
  XmlDocument& operator=(XmlDocument&&) noexcept;
  ~XmlDocument();

  /// Empties the document and gives it a new root, which it returns.
  XmlNode& Create(host::XmlName rootName);
  void Clear();

  /// Gives the memory of removed elements back, now or later, once it is as much as the rest. Those
  /// that a holder refers to stay (see host::XmlHolder: rows of lists, anchors), with all that was
  /// removed together with them. Texts (host::XmlText) and names that were taken from the document
  /// are not valid any longer. To be called where removing is done and nothing but holders refers
  /// to what was removed; takes as long as what was added since the last time.
  void ReleaseRemoved();

  /// The root element, none in an empty document.
  XmlNode* Root() { return root_; }
  const XmlNode* Root() const { return root_; }

  /// Replaces the content by the document that @p utf8 holds. Refuses what is no well-formed
  /// document with one root, a document type, another encoding than UTF-8 and what is over the
  /// limits: it then returns false, tells why in @p error, and leaves the document as it was.
  bool Parse(std::string utf8, host::XmlError* error = nullptr, const host::XmlLimits& limits = {});

  /// As Parse, with the content of a file. A file that can't be read is an error at line 0 whose
  /// cause is the system's reason, without the file's name.
  bool Load(const std::filesystem::path& file, host::XmlError* error = nullptr);

  /// Writes the document to @p file, whole or not at all, and keeps the version before beside it
  /// (see host::saveWhole). Returns false and the reason in @p cause when it can't.
  bool Save(const std::filesystem::path& file, std::string* cause = nullptr) const;

  enum class Layout { compact, indented };
  /// The document as UTF-8 text with its declaration; empty for a document without root.
  /// Characters that XML can't hold are written as U+FFFD.
  std::string ToString(Layout layout = Layout::compact) const;

  /// The memory, in bytes, that the texts of this document keep, those included that it shares with
  /// others and all that lies in one buffer with them.
  std::size_t TextBytes() const;

 private:
  friend class host::xml::Builder;
  std::unique_ptr<host::xml::Storage> storage_;
  XmlNode* root_ = nullptr;
};

/// An element. It belongs to its document; elements are made by NewChild and XmlDocument::Create.
class HOST_API XmlDocument::XmlNode {
 public:
  XmlNode(const XmlNode&) = delete;

  /// Makes this element a deep copy of @p other: tag, attributes, text and children. Its place in
  /// its own document stays. The other element may stand in any document, also in this one.
  XmlNode& operator=(const XmlNode& other);

  /// Deep equality: tag, text, attributes whatever their order, and children in their order.
  bool operator==(const XmlNode& other) const;

  std::string_view Tag() const { return host::xmlNameText(tag_); }
  host::XmlName TagName() const { return host::XmlName::fromId(tag_); }
  void SetTag(host::XmlName tag);

  // Attributes, all text. An absent one reads as the default.
  XCBasicString getAttribute(host::XmlName name, const XCBasicString& absent = {}) const;
  /// The attribute's text without a copy; empty when it is absent.
  host::XmlText attribute(host::XmlName name) const;
  /// As above, for walks over elements that look alike: @p place, 0 at first, is where the
  /// attribute stood in the element before and is looked at before all others.
  host::XmlText attribute(host::XmlName name, std::size_t& place) const;
  bool hasAttribute(host::XmlName name) const;
  /// Changes the attribute or adds it behind the others.
  void setAttribute(host::XmlName name, std::u16string_view text);
  /// Sets the attribute to the text that another element holds. Both documents share it.
  void copyAttribute(const XmlNode& from, host::XmlName name);
  /// Takes attributes off another element of the same document, in the order of @p names; one that
  /// it lacks is set to an empty text. For attributes that this element does not have.
  void takeAttributes(XmlNode& from, std::span<const host::XmlName> names);
  /// False when there is no such attribute.
  bool eraseAttribute(host::XmlName name);
  /// Gives the attribute another name in its place; one that had this name before goes. False when
  /// there is no attribute @p name.
  bool renameAttribute(host::XmlName name, host::XmlName newName);
  std::size_t attributeCount() const { return attributeCount_; }
  host::XmlName attributeName(std::size_t index) const;
  host::XmlText attributeText(std::size_t index) const;

  // The element's own text.
  XCBasicString Text() const { return text().toString(); }
  host::XmlText text() const { return {text_, textSize_}; }
  void SetText(std::u16string_view text);
  /// Copies a text that stands in any document.
  void SetText(host::XmlText text);
  /// Takes 7-bit text over without widening it.
  void SetNarrowText(std::string ascii);

  // Text children: <name>text</name>.
  /// The text of the first child with this tag, the default when there is none.
  XCBasicString Value(host::XmlName name, const XCBasicString& absent = {}) const;
  /// Sets the text of the first child with this tag; makes the child when there is none.
  void SetValue(host::XmlName name, std::u16string_view text);
  void SetNarrowValue(host::XmlName name, std::string ascii);

  /// The element at a slash-separated path below this one, none when it is not there. A step may
  /// choose by the text of a child: "group?id=%s?" is the first "group" whose child "id" holds the
  /// next argument, "day?num=%d?" likewise with a number. Arguments are compared, never parsed.
  template <class... Arguments>
  XmlNode* Node(std::string_view path, const Arguments&... arguments) {
    return find(path, {host::FormatArgument(arguments)...});
  }
  template <class... Arguments>
  const XmlNode* Node(std::string_view path, const Arguments&... arguments) const {
    return find(path, {host::FormatArgument(arguments)...});
  }

  /// Appends a child.
  XmlNode& NewChild(host::XmlName name);
  XmlNode& NewChild(host::XmlName name, std::u16string_view text);
  XmlNode& NewChild(host::XmlName name, host::XmlText text);
  /// Takes @p child out of the tree, wherever it stands below this element. False when it is not
  /// below it. The element stays readable until XmlDocument::ReleaseRemoved.
  bool RemoveChild(XmlNode* child);
  void RemoveChildren();
  std::size_t ChildCount() const;

  XmlNode* Parent() const { return parent_; }
  XmlNode* FirstChild() const { return first_; }
  XmlNode* NextSibling() const { return next_; }

  template <class Node>
  class Range {
   public:
    class Iterator {
     public:
      using value_type = Node;
      using difference_type = std::ptrdiff_t;
      explicit Iterator(Node* node) : node_(node) {}
      Node& operator*() const { return *node_; }
      Iterator& operator++() {
        node_ = node_->NextSibling();
        return *this;
      }
      friend bool operator==(Iterator a, Iterator b) { return a.node_ == b.node_; }

     private:
      Node* node_;
    };
    explicit Range(Node* first) : first_(first) {}
    Iterator begin() const { return Iterator(first_); }
    Iterator end() const { return Iterator(nullptr); }

   private:
    Node* first_;
  };
  /// The children in their order. Don't remove the child at hand while iterating.
  Range<XmlNode> Children() { return Range<XmlNode>(first_); }
  Range<const XmlNode> Children() const { return Range<const XmlNode>(first_); }

 private:
  friend class XmlDocument;
  friend class host::xml::Builder;
  friend class host::xml::Release;
  explicit XmlNode(std::uint32_t tag) : tag_(tag) {}

  XmlNode* find(std::string_view path, std::initializer_list<host::FormatArgument> arguments) const;
  host::xml::Storage& storage() const;
  host::xml::Attribute* findAttribute(host::XmlName name) const;
  void setAttributeText(host::XmlName name, host::XmlText text);
  void reserveAttributes(std::size_t count);
  bool takeRun(XmlNode& from, std::span<const host::XmlName> names);
  void setStoredText(host::XmlText text);
  XmlNode* append(host::XmlName tag);
  XmlNode* appendHeld(host::XmlName tag);  // whose name the document has already
  void unlink();
  void copyShallow(const XmlNode& other);
  void copyTree(const XmlNode& other);
  bool equalsShallow(const XmlNode& other) const;
  bool hasAttributesOf(const XmlNode& other) const;
  bool isAbove(const XmlNode& other) const;

  // 64 bytes: one cache line an element.
  std::uint32_t tag_ = 0;
  std::uint32_t textSize_ = 0;
  const void* text_ = nullptr;
  host::xml::Attribute* attributes_ = nullptr;
  std::uint16_t attributeCount_ = 0;
  std::uint16_t attributeCapacity_ = 0;
  XmlNode* parent_ = nullptr;
  XmlNode* first_ = nullptr;
  XmlNode* next_ = nullptr;
  XmlNode* previous_ = nullptr;  // of the first child: the last one
};
