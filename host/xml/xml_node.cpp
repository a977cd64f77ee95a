#include <algorithm>
#include <cassert>
#include <cstring>

#include "host/xml/xml_document.h"
#include "host/xml/xml_storage.h"

using host::XmlName;
using host::XmlText;
using host::xml::Attribute;
using host::xml::NameRecord;
using host::xml::NameTable;
using host::xml::Slab;
using host::xml::Storage;
using XmlNode = XmlDocument::XmlNode;

namespace {

constexpr std::size_t MostAttributes = host::XmlLimits::MostAttributes;

// The next element of a walk in document order below @p top; null at the end. The caller keeps
// parallel trees in step with the same moves.
template <class Visit>
bool walkTogether(const XmlNode* a, const XmlNode* b, Visit same) {
  const XmlNode* const top = a;
  for (;;) {
    if (!same(*a, *b)) return false;
    if ((a->FirstChild() == nullptr) != (b->FirstChild() == nullptr)) return false;
    if (a->FirstChild() != nullptr) {
      a = a->FirstChild();
      b = b->FirstChild();
      continue;
    }
    while (a != top && a->NextSibling() == nullptr) {
      if (b->NextSibling() != nullptr) return false;
      a = a->Parent();
      b = b->Parent();
    }
    if (a == top) return true;
    if (b->NextSibling() == nullptr) return false;
    a = a->NextSibling();
    b = b->NextSibling();
  }
}

struct Step {
  std::string_view tag;
  std::string_view key;  // empty: the first with the tag
  char16_t conversion = u's';
};

// "group?id=%s?" to its tag, the child that holds the key, and the conversion.
Step readStep(std::string_view text) {
  Step step{text, {}, u's'};
  const std::size_t mark = text.find('?');
  if (mark == std::string_view::npos) return step;
  step.tag = text.substr(0, mark);
  const std::string_view predicate = text.substr(mark + 1);
  const std::size_t equals = predicate.find("=%");
  if (equals == std::string_view::npos || predicate.size() <= equals + 2) return step;
  step.key = predicate.substr(0, equals);
  step.conversion = static_cast<char16_t>(predicate[equals + 2]);
  return step;
}

const XmlNode* childByTag(const XmlNode& parent, XmlName tag) {
  for (const XmlNode& child : parent.Children())
    if (child.TagName() == tag) return &child;
  return nullptr;
}

const XmlNode* childByKey(const XmlNode& parent, const Step& step, std::u16string_view wanted) {
  const XmlName tag = XmlName::find(step.tag);
  const XmlName keyTag = XmlName::find(step.key);
  for (const XmlNode& child : parent.Children()) {
    if (child.TagName() != tag) continue;
    const XmlNode* key = childByTag(child, keyTag);
    if (key != nullptr && key->text() == wanted) return &child;
  }
  return nullptr;
}

bool isSame(const Attribute& a, const Attribute& b) {
  return a.name == b.name && a.text() == b.text();
}

using Attributes = std::span<const Attribute>;

// Of sets of one size; a name stands once in each.
bool isSameSet(Attributes some, Attributes others) {
  return std::all_of(some.begin(), some.end(), [&](const Attribute& a) {
    return std::any_of(others.begin(), others.end(),
                       [&](const Attribute& b) { return isSame(a, b); });
  });
}

// The names tell where the others stand.
bool isSameLargeSet(Attributes some, Attributes others) {
  NameTable& names = NameTable::get();
  const std::uint64_t mark = names.newStamp();
  for (std::size_t place = 0; place < others.size(); ++place) {
    NameRecord& name = names.record(others[place].name);
    name.lastElement = mark;
    name.place = static_cast<std::uint32_t>(place);
  }
  return std::all_of(some.begin(), some.end(), [&](const Attribute& attribute) {
    const NameRecord& name = names.record(attribute.name);
    return name.lastElement == mark && attribute.text() == others[name.place].text();
  });
}

}  // namespace

static_assert(sizeof(XmlNode) == 64);
static_assert(sizeof(Attribute) == 16);

Storage& XmlNode::storage() const {
  return *Slab::of(this)->owner;
}

// --- attributes

Attribute* XmlNode::findAttribute(XmlName name) const {
  for (std::size_t i = 0; i < attributeCount_; ++i)
    if (attributes_[i].name == name.id()) return attributes_ + i;
  return nullptr;
}

XCBasicString XmlNode::getAttribute(XmlName name, const XCBasicString& absent) const {
  const Attribute* found = findAttribute(name);
  return found ? found->text().toString() : absent;
}

XmlText XmlNode::attribute(XmlName name) const {
  const Attribute* found = findAttribute(name);
  return found ? found->text() : XmlText();
}

XmlText XmlNode::attribute(XmlName name, std::size_t& place) const {
  if (place < attributeCount_ && attributes_[place].name == name.id())
    return attributes_[place].text();
  const Attribute* found = findAttribute(name);
  if (found == nullptr) return {};
  place = static_cast<std::size_t>(found - attributes_);
  return found->text();
}

bool XmlNode::hasAttribute(XmlName name) const {
  return findAttribute(name) != nullptr;
}

XmlName XmlNode::attributeName(std::size_t index) const {
  return XmlName::fromId(attributes_[index].name);
}

XmlText XmlNode::attributeText(std::size_t index) const {
  return attributes_[index].text();
}

void XmlNode::setAttribute(XmlName name, std::u16string_view text) {
  setAttributeText(name, storage().pool().store(text));
}

void XmlNode::copyAttribute(const XmlNode& from, XmlName name) {
  if (&from.storage() != &storage()) storage().share(from.storage());
  setAttributeText(name, from.attribute(name));
}

void XmlNode::setAttributeText(XmlName name, XmlText text) {
  if (Attribute* found = findAttribute(name)) {
    found->setText(text);
    return;
  }
  if (attributeCount_ == attributeCapacity_)
    reserveAttributes(
        std::min<std::size_t>(attributeCapacity_ + 2U + attributeCapacity_ / 2U, MostAttributes));
  storage().hold(name);
  Attribute& added = attributes_[attributeCount_++];
  added.name = name.id();
  added.setText(text);
}

void XmlNode::reserveAttributes(std::size_t count) {
  if (count <= attributeCapacity_) return;
  Attribute* grown = storage().allocateAttributes(count);
  std::copy_n(attributes_, attributeCount_, grown);
  attributes_ = grown;
  attributeCapacity_ = static_cast<std::uint16_t>(count);
}

void XmlNode::takeAttributes(XmlNode& from, std::span<const XmlName> names) {
  if (takeRun(from, names)) return;
  reserveAttributes(std::min(attributeCount_ + names.size(), MostAttributes));
  for (const XmlName name : names) {
    Attribute* taken = from.findAttribute(name);
    setAttributeText(name, taken ? taken->text() : XmlText());
    if (taken == nullptr) continue;
    std::copy(taken + 1, from.attributes_ + from.attributeCount_, taken);
    --from.attributeCount_;
  }
}

// Where the other element has the attributes one behind the other, as it mostly has, they stay in
// its memory: what follows them moves in front of them, and its end belongs to this element.
bool XmlNode::takeRun(XmlNode& from, std::span<const XmlName> names) {
  if (attributeCount_ > 0 || names.empty()) return false;
  Attribute* const end = from.attributes_ + from.attributeCount_;
  Attribute* const first = from.findAttribute(names.front());
  if (first == nullptr || static_cast<std::size_t>(end - first) < names.size()) return false;
  for (std::size_t i = 1; i < names.size(); ++i)
    if (first[i].name != names[i].id()) return false;
  Attribute* const behind = first + names.size();
  attributes_ = behind == end ? first : std::rotate(first, behind, end);
  const auto taken = static_cast<std::uint16_t>(names.size());
  const auto left = static_cast<std::uint16_t>(from.attributeCount_ - taken);
  attributeCount_ = taken;
  attributeCapacity_ = static_cast<std::uint16_t>(from.attributeCapacity_ - left);
  from.attributeCount_ = from.attributeCapacity_ = left;
  return true;
}

bool XmlNode::eraseAttribute(XmlName name) {
  Attribute* found = findAttribute(name);
  if (found == nullptr) return false;
  std::copy(found + 1, attributes_ + attributeCount_, found);
  --attributeCount_;
  return true;
}

bool XmlNode::renameAttribute(XmlName name, XmlName newName) {
  if (findAttribute(name) == nullptr) return false;
  if (name == newName) return true;
  storage().hold(newName);
  eraseAttribute(newName);
  findAttribute(name)->name = newName.id();
  return true;
}

// --- texts

void XmlNode::setStoredText(XmlText text) {
  text_ = text.data();
  textSize_ = text.sizeAndWidth();
}

void XmlNode::SetText(std::u16string_view text) {
  setStoredText(storage().pool().store(text));
}

void XmlNode::SetText(XmlText text) {
  setStoredText(storage().pool().store(text));
}

void XmlNode::SetNarrowText(std::string ascii) {
  assert(ascii.size() <= XmlText::MaxSize);
  const std::string& kept = storage().pool().adopt(std::move(ascii));
  setStoredText(XmlText::narrow(kept));
}

XCBasicString XmlNode::Value(XmlName name, const XCBasicString& absent) const {
  for (const XmlNode& child : Children())
    if (child.TagName() == name) return child.Text();
  return absent;
}

void XmlNode::SetValue(XmlName name, std::u16string_view text) {
  for (XmlNode& child : Children()) {
    if (child.TagName() != name) continue;
    child.SetText(text);
    return;
  }
  NewChild(name, text);
}

void XmlNode::SetNarrowValue(XmlName name, std::string ascii) {
  for (XmlNode& child : Children()) {
    if (child.TagName() != name) continue;
    child.SetNarrowText(std::move(ascii));
    return;
  }
  NewChild(name).SetNarrowText(std::move(ascii));
}

// --- tree

XmlNode* XmlNode::find(std::string_view path,
                       std::initializer_list<host::FormatArgument> arguments) const {
  const XmlNode* at = this;
  auto argument = arguments.begin();
  while (at != nullptr && !path.empty()) {
    const std::size_t slash = path.find('/');
    const Step step = readStep(path.substr(0, slash));
    path = slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
    if (step.key.empty()) {
      at = childByTag(*at, XmlName::find(step.tag));
    } else if (argument != arguments.end()) {
      at = childByKey(*at, step, (argument++)->text(step.conversion));
    } else {
      at = nullptr;
    }
  }
  return const_cast<XmlNode*>(at);
}

void XmlNode::SetTag(XmlName tag) {
  storage().hold(tag);
  tag_ = tag.id();
}

XmlNode* XmlNode::append(XmlName tag) {
  storage().hold(tag);
  return appendHeld(tag);
}

XmlNode* XmlNode::appendHeld(XmlName tag) {
  auto* child = new (storage().allocateNode(sizeof(XmlNode))) XmlNode(tag.id());
  child->parent_ = this;
  if (first_ == nullptr) {
    first_ = child;
    child->previous_ = child;
  } else {
    XmlNode* last = first_->previous_;
    last->next_ = child;
    child->previous_ = last;
    first_->previous_ = child;
  }
  return child;
}

XmlNode& XmlNode::NewChild(XmlName name) {
  return *append(name);
}

XmlNode& XmlNode::NewChild(XmlName name, std::u16string_view text) {
  XmlNode* child = append(name);
  child->SetText(text);
  return *child;
}

XmlNode& XmlNode::NewChild(XmlName name, XmlText text) {
  XmlNode* child = append(name);
  child->SetText(text);
  return *child;
}

void XmlNode::unlink() {
  XmlNode*& head = parent_->first_;
  if (next_ != nullptr)
    next_->previous_ = previous_;
  else
    head->previous_ = previous_;
  if (head == this)
    head = next_;
  else
    previous_->next_ = next_;
  parent_ = next_ = previous_ = nullptr;
}

bool XmlNode::isAbove(const XmlNode& other) const {
  for (const XmlNode* at = other.parent_; at != nullptr; at = at->parent_)
    if (at == this) return true;
  return false;
}

bool XmlNode::RemoveChild(XmlNode* child) {
  if (child == nullptr || !isAbove(*child)) return false;
  child->unlink();
  return true;
}

void XmlNode::RemoveChildren() {
  while (first_ != nullptr) first_->unlink();
}

std::size_t XmlNode::ChildCount() const {
  std::size_t count = 0;
  for (const XmlNode* child = first_; child != nullptr; child = child->next_) ++count;
  return count;
}

// --- copy and comparison

void XmlNode::copyShallow(const XmlNode& other) {
  tag_ = other.tag_;
  text_ = other.text_;
  textSize_ = other.textSize_;
  if (other.attributeCount_ > attributeCapacity_) {
    attributes_ = storage().allocateAttributes(other.attributeCount_);
    attributeCapacity_ = other.attributeCount_;
  }
  std::copy_n(other.attributes_, other.attributeCount_, attributes_);
  attributeCount_ = other.attributeCount_;
}

void XmlNode::copyTree(const XmlNode& other) {
  const XmlNode* from = &other;
  XmlNode* to = this;
  to->copyShallow(*from);
  for (;;) {
    if (from->first_ != nullptr) {
      from = from->first_;
      to = to->appendHeld(from->TagName());
    } else {
      while (from != &other && from->next_ == nullptr) {
        from = from->parent_;
        to = to->parent_;
      }
      if (from == &other) return;
      from = from->next_;
      to = to->parent_->appendHeld(from->TagName());
    }
    to->copyShallow(*from);
  }
}

XmlNode& XmlNode::operator=(const XmlNode& other) {
  if (this == &other) return *this;
  if (&storage() == &other.storage() && (isAbove(other) || other.isAbove(*this))) {
    // One holds the other: copy from a document of its own, which nothing here changes.
    XmlDocument apart("copy");
    *apart.Root() = other;
    return *this = *apart.Root();
  }
  if (&storage() != &other.storage()) storage().share(other.storage());
  RemoveChildren();
  copyTree(other);
  return *this;
}

bool XmlNode::equalsShallow(const XmlNode& other) const {
  return tag_ == other.tag_ && attributeCount_ == other.attributeCount_ && text() == other.text() &&
         hasAttributesOf(other);
}

// Of elements with the same count of attributes, which mostly have them in the same order.
bool XmlNode::hasAttributesOf(const XmlNode& other) const {
  std::size_t at = 0;
  while (at < attributeCount_ && attributes_[at].name == other.attributes_[at].name) {
    if (!(attributes_[at].text() == other.attributes_[at].text())) return false;
    ++at;
  }
  const std::span<const Attribute> mine(attributes_ + at, attributeCount_ - at);
  const std::span<const Attribute> theirs(other.attributes_ + at, attributeCount_ - at);
  constexpr std::size_t Few = 8;
  return mine.size() <= Few ? isSameSet(mine, theirs) : isSameLargeSet(mine, theirs);
}

bool XmlNode::operator==(const XmlNode& other) const {
  return walkTogether(this, &other,
                      [](const XmlNode& a, const XmlNode& b) { return a.equalsShallow(b); });
}
