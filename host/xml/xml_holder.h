#pragma once

#include <functional>

#include "host/export.h"
#include "host/xml/xml_document.h"

namespace host {

/// Something that refers to elements for longer than a call. What it refers to stays readable after
/// it was removed from its document, as long as the holder refers to it. The host library is used
/// from one thread; so are holders.
class HOST_API XmlHolder {
 public:
  XmlHolder();
  XmlHolder(const XmlHolder&) : XmlHolder() {}
  XmlHolder& operator=(const XmlHolder&) { return *this; }
  virtual ~XmlHolder();

  using Note = std::function<void(const XmlDocument::XmlNode*)>;
  /// Tells @p note each element that this refers to, null and those of documents that are gone
  /// among them: only addresses are looked at.
  virtual void tellHeld(const Note& note) const = 0;

  /// Asks all holders that there are.
  static void tellAllHeld(const Note& note);

 private:
  XmlHolder* next_;
  XmlHolder** link_;  // what points to this one
};

/// A pointer to an element that keeps it readable. It does not keep its document.
template <class Node>
class BasicXmlAnchor : private XmlHolder {
 public:
  BasicXmlAnchor(Node* element = nullptr) : element_(element) {}

  Node* get() const { return element_; }
  operator Node*() const { return element_; }
  Node* operator->() const { return element_; }
  Node& operator*() const { return *element_; }

 private:
  void tellHeld(const Note& note) const override { note(element_); }
  Node* element_;
};

using XmlAnchor = BasicXmlAnchor<XmlDocument::XmlNode>;
using ConstXmlAnchor = BasicXmlAnchor<const XmlDocument::XmlNode>;

}  // namespace host
