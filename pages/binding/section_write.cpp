#include "pages/binding/section_write.h"

#include <utility>

#include "exchange/exchange_frame.h"
#include "pages/binding/working_copy.h"

namespace lamp {
namespace {

using Node = XmlDocument::XmlNode;

bool makeWhole(const SectionWrite& shape, XmlDocument& request, const Node& edited,
               const XCBasicString& stamp) {
  Node& written = writeCopy(request, edited, shape.write);
  if (shape.stamp == StampRule::erase) written.eraseAttribute(attribute::Stamp);
  if (shape.stamp == StampRule::activation && !setActivationDate(written, stamp)) return false;
  return !shape.rewriting || rewriteRows(written, shape.rewriting);
}

// The controller gives stamps, and what a write drops stays as it was read.
void keepAsRead(Node& row, const Node& read, const RowRewrite& rewrite) {
  const auto keep = [&](host::XmlName name) {
    if (read.hasAttribute(name)) row.copyAttribute(read, name);
  };
  keep(attribute::Stamp);
  for (const host::XmlName name : rewrite.dropped) keep(name);
}

void applyRows(const SectionWrite& shape, Node& section, const Node& read) {
  const Node* before = read.FirstChild();
  for (Node& row : section.Children()) {
    const RowRewrite& rewrite = shape.rewriting(row);
    restoreRow(row, rewrite);
    if (before == nullptr) continue;
    if (before->attribute(attribute::Id) == row.attribute(attribute::Id))
      keepAsRead(row, *before, rewrite);
    before = before->NextSibling();
  }
}

void removeDeleted(Node& section, host::XmlName deletedBy) {
  for (Node *row = section.FirstChild(), *next = nullptr; row != nullptr; row = next) {
    next = row->NextSibling();
    if (row->hasAttribute(deletedBy) && row->attribute(deletedBy).empty()) section.RemoveChild(row);
  }
}

void applyWhole(const SectionWrite& shape, Node& section, const Node& written) {
  XmlDocument read;
  read.Create(shape.read) = section;
  section = written;
  section.SetTag(shape.read);
  if (shape.stamp != StampRule::keep) {
    section.eraseAttribute(attribute::ActivationDate);
    if (read.Root()->hasAttribute(attribute::Stamp))
      section.copyAttribute(*read.Root(), attribute::Stamp);
  }
  if (shape.rewriting) applyRows(shape, section, *read.Root());
  if (shape.deletedBy) removeDeleted(section, *shape.deletedBy);
}

}  // namespace

SectionWrite::Rewriting rewriteAll(const RowRewrite& rewrite) {
  return [&rewrite](const Node&) -> const RowRewrite& { return rewrite; };
}

host::PageDescription wholeSection(SectionWrite shape) {
  host::PageDescription page;
  page.readSection = shape.read;
  page.writeSection = shape.write;
  page.makeWrite = [shape](XmlDocument& request, const Node*, const Node& edited,
                           const XCBasicString& stamp) {
    return makeWhole(shape, request, edited, stamp);
  };
  page.applyWrite = [shape = std::move(shape)](Node& section, const Node& written) {
    applyWhole(shape, section, written);
  };
  return page;
}

host::PageDescription changedFields(host::XmlName read, host::XmlName write,
                                    std::vector<host::Binding> fields) {
  host::PageDescription page;
  page.readSection = read;
  page.writeSection = write;
  page.form = host::WriteForm::differences;
  page.makeWrite = [write, fields](XmlDocument& request, const Node* untouched, const Node& edited,
                                   const XCBasicString&) {
    Node& written = beginWrite(request, write);
    for (const host::Binding& field : fields) {
      if (field.owner == host::ValueOwner::controller) continue;
      const XCBasicString before =
          untouched == nullptr || field.writeOnly ? XCBasicString() : field.valueIn(*untouched);
      putIfChanged(written, field.attributes.front(), field.valueIn(edited), before);
    }
    return true;
  };
  page.applyWrite = [](Node& section, const Node& written) {
    for (std::size_t i = 0; i < written.attributeCount(); ++i)
      section.copyAttribute(written, written.attributeName(i));
  };
  page.fields = std::move(fields);
  return page;
}

}  // namespace lamp
