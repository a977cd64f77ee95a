#include "fuzz/xml/edited_document.h"

#include <algorithm>
#include <iterator>

#include "fuzz/fault.h"

namespace fuzz {

struct EditedDocument::Plain {
  std::string_view tag;  // names live as long as the program
  Attributes attributes;
  std::u16string text;
  std::vector<std::unique_ptr<Plain>> children;
  Node* node = nullptr;

  std::u16string* find(std::string_view name) {
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&](const auto& one) { return one.first == name; });
    return found == attributes.end() ? nullptr : &found->second;
  }
  void set(std::string_view name, const std::u16string& value) {
    if (std::u16string* found = find(name))
      *found = value;
    else
      attributes.emplace_back(name, value);
  }
  bool erase(std::string_view name) {
    return std::erase_if(attributes, [&](const auto& one) { return one.first == name; }) > 0;
  }
  Plain* child(std::string_view name) {
    const auto found = std::find_if(children.begin(), children.end(),
                                    [&](const auto& one) { return one->tag == name; });
    return found == children.end() ? nullptr : found->get();
  }
};

namespace {

std::string_view chosenName(Input& input) {
  constexpr std::string_view Names[] = {"a", "b", "nodeId", "Node", "L04", "\u00F1", "x-1"};
  return Names[input.below(std::size(Names))];
}

// Narrow and wide ones, long and short ones; all that XML can hold.
std::u16string chosenText(Input& input) {
  constexpr const char16_t* Texts[] = {u"",       u"x",        u" ",    u"12:30:00",
                                       u"<&>\"'", u"\t\r\n",   u"ñ",    u"\U0001F4A1",
                                       u"]]>",    u"\u20AC 1", u" a  ", u"a longer text of a lamp"};
  const std::size_t chosen = input.below(std::size(Texts) + 2);
  if (chosen < std::size(Texts)) return Texts[chosen];
  std::u16string out(input.below(300), u'y');
  if (chosen == std::size(Texts)) out += u'\u0107';
  return out;
}

}  // namespace

EditedDocument::EditedDocument(XmlDocument& document)
    : document_(document), root_(plainOf(*document.Root())) {}

EditedDocument::~EditedDocument() = default;

std::unique_ptr<EditedDocument::Plain> EditedDocument::plainOf(Node& node) {
  auto plain = std::make_unique<Plain>();
  plain->tag = node.Tag();
  for (std::size_t i = 0; i < node.attributeCount(); ++i)
    plain->attributes.emplace_back(node.attributeName(i).text(), node.attributeText(i).toString());
  plain->text = node.Text().str();
  for (Node& child : node.Children()) plain->children.push_back(plainOf(child));
  plain->node = &node;
  return plain;
}

std::unique_ptr<EditedDocument::Plain> EditedDocument::copyOf(const Plain& plain) {
  auto copy = std::make_unique<Plain>();
  copy->tag = plain.tag;
  copy->attributes = plain.attributes;
  copy->text = plain.text;
  for (const auto& child : plain.children) copy->children.push_back(copyOf(*child));
  return copy;
}

// Finds the elements of a copied tree again. A difference in shape is left to check().
void EditedDocument::relink(Plain& plain, Node& node) {
  plain.node = &node;
  Node* child = node.FirstChild();
  for (const auto& one : plain.children) {
    if (child == nullptr) fault("a copied element lacks a child");
    relink(*one, *child);
    child = child->NextSibling();
  }
}

EditedDocument::Plain& EditedDocument::choose(Input& input) {
  Plain* at = root_.get();
  for (int turns = 0; turns < 70 && !at->children.empty(); ++turns) {
    const std::size_t next = input.below(at->children.size() + 1);
    if (next == at->children.size()) break;
    at = at->children[next].get();
  }
  return *at;
}

void EditedDocument::edit(Input& input) {
  Plain& at = choose(input);
  switch (input.below(4)) {
    case 0:
      return editAttribute(at, input);
    case 1:
      return editText(at, input);
    case 2:
      return editChildren(at, input);
    default:
      return editBetween(at, choose(input), input);
  }
}

void EditedDocument::editAttribute(Plain& at, Input& input) {
  const std::string_view name = chosenName(input);
  switch (input.below(3)) {
    case 0: {
      const std::u16string value = chosenText(input);
      at.node->setAttribute(name, value);
      at.set(name, value);
      break;
    }
    case 1:
      expect(at.node->eraseAttribute(name) == at.erase(name), "an attribute erased or not");
      break;
    default: {
      const std::string_view newName = chosenName(input);
      const bool known = at.find(name) != nullptr;
      expect(at.node->renameAttribute(name, newName) == known, "an attribute renamed or not");
      if (!known || name == newName) break;
      at.erase(newName);
      for (auto& one : at.attributes)
        if (one.first == name) one.first = newName;
    }
  }
}

void EditedDocument::editText(Plain& at, Input& input) {
  const std::string_view name = chosenName(input);
  const std::u16string text = chosenText(input);
  switch (input.below(4)) {
    case 0:
      at.node->SetText(text);
      at.text = text;
      break;
    case 1:
      at.node->SetTag(name);
      at.tag = name;
      break;
    case 2:
      at.node->SetNarrowText(std::string(name[0] > 0 ? name : "n"));
      at.text = at.node->Text().str();
      break;
    default: {
      at.node->SetValue(name, text);
      Plain* child = at.child(name);
      if (child == nullptr) {
        child = at.children.emplace_back(std::make_unique<Plain>()).get();
        child->tag = name;
        relink(at, *at.node);
      }
      child->text = text;
      expect(at.node->Value(name).str() == text, "a value reads as it was set");
    }
  }
}

void EditedDocument::editChildren(Plain& at, Input& input) {
  switch (input.below(3)) {
    case 0: {
      auto added = std::make_unique<Plain>();
      added->tag = chosenName(input);
      added->text = chosenText(input);
      added->node = &at.node->NewChild(added->tag, added->text);
      at.children.push_back(std::move(added));
      break;
    }
    case 1: {
      if (at.children.empty()) return;
      const std::size_t which = input.below(at.children.size());
      expect(at.node->RemoveChild(at.children[which]->node), "a child can be removed");
      expect(!at.node->RemoveChild(at.children[which]->node), "a child is removed once");
      at.children.erase(at.children.begin() + static_cast<std::ptrdiff_t>(which));
      break;
    }
    default:
      if (!input.flag()) return;  // seldom: it leaves little to edit
      at.node->RemoveChildren();
      at.children.clear();
  }
}

void EditedDocument::editBetween(Plain& at, Plain& other, Input& input) {
  const std::string_view name = chosenName(input);
  switch (input.below(4)) {
    case 0: {
      const std::u16string* value = other.find(name);
      const std::u16string copied = value != nullptr ? *value : std::u16string();
      at.node->copyAttribute(*other.node, name);
      at.set(name, copied);
      break;
    }
    case 1: {
      if (&at == &other || at.find(name) != nullptr) return;
      const std::u16string* value = other.find(name);
      const std::u16string taken = value != nullptr ? *value : std::u16string();
      const host::XmlName names[] = {name};
      at.node->takeAttributes(*other.node, names);
      other.erase(name);
      at.set(name, taken);
      break;
    }
    case 2:
      at.node->SetText(other.node->text());
      at.text = other.text;
      break;
    default: {
      std::unique_ptr<Plain> copy = copyOf(other);
      // Assigning an ancestor to one of its descendants doubles what is there.
      if (document_.ToString().size() > 20000) return;
      *at.node = *other.node;
      Node* node = at.node;
      at = std::move(*copy);
      relink(at, *node);
    }
  }
}

std::size_t EditedDocument::depth() const {
  const auto below = [](const auto& self, const Plain& plain) -> std::size_t {
    std::size_t deepest = 0;
    for (const auto& child : plain.children) deepest = std::max(deepest, self(self, *child));
    return deepest + 1;
  };
  return below(below, *root_);
}

void EditedDocument::check(const Plain& plain, const Node& node, const Node* parent) {
  expect(plain.node == &node, "an element stays where it is");
  expect(node.Parent() == parent, "a child knows its parent");
  expect(node.Tag() == plain.tag, "a tag is the one that was set");
  expect(node.Text().str() == plain.text, "a text is the one that was set");
  expect(node.attributeCount() == plain.attributes.size(), "there are as many attributes");
  for (std::size_t i = 0; i < plain.attributes.size(); ++i) {
    expect(node.attributeName(i).text() == plain.attributes[i].first,
           "attributes keep their order");
    expect(node.attributeText(i).toString() == plain.attributes[i].second,
           "an attribute is the one that was set");
  }
  expect(node.ChildCount() == plain.children.size(), "there are as many children");
  const Node* child = node.FirstChild();
  for (const auto& one : plain.children) {
    check(*one, *child, &node);
    child = child->NextSibling();
  }
  expect(child == nullptr, "the last child has none behind it");
}

void EditedDocument::check() const {
  check(*root_, *document_.Root(), nullptr);
}

}  // namespace fuzz
