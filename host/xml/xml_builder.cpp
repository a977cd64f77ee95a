#include "host/xml/xml_builder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <pugixml.hpp>
#include <utility>

#include "host/text/utf.h"
#include "host/xml/xml_bytes.h"

namespace host::xml {
namespace {

using Node = XmlDocument::XmlNode;

// The library neither resolves references nor folds line ends: Builder::decode does both and sees
// what is wrong with them. Comments and processing instructions are read to be checked.
constexpr unsigned ParseOptions = pugi::parse_cdata | pugi::parse_ws_pcdata_single |
                                  pugi::parse_doctype | pugi::parse_declaration |
                                  pugi::parse_comments | pugi::parse_pi | pugi::parse_fragment;

enum CharacterClass : unsigned char { Plain, End, Special };

// Bytes that end the fast way through a value: everything but printable ASCII that stands for
// itself in every place.
constexpr std::array<unsigned char, 256> makeClasses() {
  std::array<unsigned char, 256> classes{};
  for (std::size_t i = 0; i < classes.size(); ++i)
    classes[i] = i == 0                                                      ? End
                 : i < 0x20 || i >= 0x80 || i == '&' || i == '<' || i == '>' ? Special
                                                                             : Plain;
  return classes;
}
constexpr auto Classes = makeClasses();

constexpr std::size_t LongestName = 256;
// Until the element is filled.
const XmlName NoName = XmlName::fromId(0);
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view DeclarationStart = "<?xml";
constexpr std::size_t LongestNamedReference = sizeof "quot" - 1;

// How many of eight bytes in front are of the class Plain.
unsigned plainInFront(const char* bytes) {
  const std::uint64_t word = loadWord(bytes);
  return unmarkedInFront(word | marksBelow(word, 0x20) | marksOf(word, '&') | marksOf(word, '<') |
                         marksOf(word, '>'));
}

bool isXmlCharacter(char32_t c) {
  return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) ||
         (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

bool isBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; };
    return lower(x) == lower(y);
  });
}

// Whether the text begins with an XML declaration. "<?xml-stylesheet" and the like are processing
// instructions.
bool beginsWithDeclaration(std::string_view text) {
  if (!text.starts_with(DeclarationStart)) return false;
  text.remove_prefix(DeclarationStart.size());
  return text.empty() || std::string_view(" \t\r\n?/>").find(text[0]) != std::string_view::npos;
}

// The library's tree takes 16 times as much as markup that is as short as it can be. A sample of
// the document tells whether it is of that kind.
bool isDense(std::string_view text) {
  constexpr std::size_t Looked = 64;
  constexpr std::size_t Step = 4096;
  constexpr std::size_t ShortMarkup = 16;
  std::size_t looked = 0;
  std::size_t markup = 0;
  for (std::size_t at = 0; at < text.size(); at += Step) {
    const std::string_view part = text.substr(at, Looked);
    looked += part.size();
    markup += static_cast<std::size_t>(std::count(part.begin(), part.end(), '<'));
  }
  return text.size() > Step && markup * ShortMarkup > looked;
}

// "1." and digits.
bool isVersion(std::string_view text) {
  return text.starts_with("1.") && text.size() > 2 &&
         text.find_first_not_of("0123456789", 2) == std::string_view::npos;
}

}  // namespace

Node* Builder::newRoot(Storage& storage, XmlName tag) {
  storage.hold(tag);
  auto* root = new (storage.allocateNode(sizeof(Node))) Node(tag.id());
  root->previous_ = root;
  return root;
}

bool Builder::fail(const char* place, std::string cause) {
  if (!cause_.empty()) return false;
  cause_ = std::move(cause);
  // The library was given the terminator too, and may stumble behind it.
  offset_ = place != nullptr && begin_ != nullptr && place >= begin_
                ? static_cast<std::size_t>(std::min(place, end_) - begin_)
                : 0;
  return false;
}

bool Builder::checkBeginning(const std::string& utf8) {
  if (utf8.size() > limits_.bytes)
    return fail(nullptr, "the document has " + std::to_string(utf8.size()) +
                             " bytes, more than the " + std::to_string(limits_.bytes) + " allowed");
  if (isBlank(utf8)) return fail(nullptr, "the document is empty");
  if (utf8.starts_with("\xFE\xFF") || utf8.starts_with("\xFF\xFE"))
    return fail(nullptr, "the encoding is not UTF-8");
  if (const void* zero = std::memchr(utf8.data(), 0, utf8.size()))
    return fail(static_cast<const char*>(zero), "a character with the code 0");
  std::string_view text = utf8;
  if (text.starts_with(ByteOrderMark)) text.remove_prefix(ByteOrderMark.size());
  // The library passes over a second one too.
  if (text.starts_with(ByteOrderMark)) return fail(nullptr, "text outside the root element");
  // The library also takes a declaration that ends as an empty element does.
  const std::size_t end = text.find('>');
  if (beginsWithDeclaration(text) && end != std::string_view::npos && text[end - 1] != '?')
    return fail(nullptr, "a malformed XML declaration");
  return true;
}

// The declaration stands at the very beginning and holds a version, perhaps an encoding and
// perhaps "standalone", in this order.
bool Builder::checkDeclaration(const pugi::xml_node& declaration) {
  const char* place = begin_ + declaration.offset_debug();
  // Its place is that of its name, behind "<?".
  if (declaration.offset_debug() != 2)
    return fail(place, "an XML declaration that is not in front");
  pugi::xml_attribute at = declaration.first_attribute();
  bool good = std::string_view(declaration.name()) == "xml" &&
              std::string_view(at.name()) == "version" && isVersion(at.value());
  if (good && std::string_view((at = at.next_attribute()).name()) == "encoding") {
    const std::string_view encoding = at.value();
    if (!equalsIgnoringCase(encoding, "utf-8") && !equalsIgnoringCase(encoding, "us-ascii"))
      return fail(place, "the encoding \"" + std::string(encoding) + "\" is not UTF-8");
    at = at.next_attribute();
  }
  if (good && std::string_view(at.name()) == "standalone") {
    const std::string_view answer = at.value();
    good = answer == "yes" || answer == "no";
    at = at.next_attribute();
  }
  return (good && !at) || fail(place, "a malformed XML declaration");
}

// A comment or a processing instruction, which is not kept.
bool Builder::checkAside(const pugi::xml_node& aside) {
  const std::string_view content = aside.value();
  if (aside.type() == pugi::node_comment) {
    const std::size_t dashes = content.find("--");
    if (dashes != std::string_view::npos)
      return fail(content.data() + dashes, "\"--\" inside a comment");
    if (content.ends_with('-')) return fail(&content.back(), "a comment that ends with \"--->\"");
  } else if (!isXmlName(aside.name()) || equalsIgnoringCase(aside.name(), "xml")) {
    return fail(aside.name(), "a processing instruction without a name of its own");
  }
  return checkCharacters(content);
}

bool Builder::checkCharacters(std::string_view raw) {
  bool malformed = false;
  for (std::size_t at = 0; at < raw.size();) {
    const char* here = raw.data() + at;
    const char32_t c = nextCodePoint(raw, at, &malformed);
    if (malformed) return fail(here, "a byte that is no UTF-8");
    if (!isXmlCharacter(c)) return fail(here, "a character that XML does not allow");
  }
  return true;
}

// One element at the top, beside it nothing but a declaration in front.
bool Builder::checkTop(const pugi::xml_document& tree) {
  int roots = 0;
  for (const pugi::xml_node& child : tree.children()) {
    const char* place = begin_ + child.offset_debug();
    switch (child.type()) {
      case pugi::node_element:
        if (++roots > 1) return fail(place, "a second root element");
        break;
      case pugi::node_doctype:
        return fail(place, "a document type (DTD), which is not accepted");
      case pugi::node_declaration:
        if (!checkDeclaration(child)) return false;
        break;
      case pugi::node_comment:
      case pugi::node_pi:
        if (!checkAside(child)) return false;
        break;
      default:
        if (child.type() == pugi::node_cdata || !isBlank(child.value()))
          return fail(place, "text outside the root element");
    }
  }
  return roots == 1 || fail(nullptr, "there is no root element");
}

Node* Builder::build(std::string utf8, XmlError& error) {
  if (checkBeginning(utf8)) {
    if (utf8.starts_with(ByteOrderMark)) utf8.erase(0, ByteOrderMark.size());
    std::string& buffer = storage_.pool().adopt(std::move(utf8));
    begin_ = buffer.data();
    end_ = begin_ + buffer.size();
    noteLines(buffer);  // before the library writes its terminators over line ends
    frugal_ = isDense(buffer);
    pugi::xml_document tree;
    // With the terminator, over which the library writes its own: else it overlooks a last
    // character behind the root.
    const pugi::xml_parse_result result = tree.load_buffer_inplace(
        buffer.data(), buffer.size() + 1, ParseOptions, pugi::encoding_utf8);
    if (!result) {
      // Another encoding is the better cause: its bytes are no markup here.
      const pugi::xml_node first = tree.first_child();
      if (first.type() == pugi::node_declaration) checkDeclaration(first);
      fail(begin_ + result.offset, result.description());
    } else if (checkTop(tree)) {
      const pugi::xml_node source = tree.document_element();
      std::uint32_t tag = 0;
      if (name(source.name(), Unknown, tag)) {
        Node* root = newRoot(storage_, XmlName::fromId(tag));
        if (buildTree(source, *root)) return root;
      }
    }
  }
  locate(error);
  return nullptr;
}

void Builder::noteLines(std::string_view buffer) {
  for (std::size_t at = buffer.find('\n'); at != std::string_view::npos;
       at = buffer.find('\n', at + 1))
    lineEnds_.push_back(static_cast<std::uint32_t>(at));
}

void Builder::locate(XmlError& error) const {
  error = {cause_, offset_, 0, 0};
  if (begin_ == nullptr) return;
  const auto after = std::lower_bound(lineEnds_.begin(), lineEnds_.end(), offset_);
  error.line = static_cast<std::size_t>(after - lineEnds_.begin()) + 1;
  error.column = offset_ + 1 - (after == lineEnds_.begin() ? 0 : *(after - 1) + 1U);
}

// Names repeat: most are those of the element before, which @p known tells, or were read not long
// ago.
bool Builder::name(const char* text, std::uint32_t known, std::uint32_t& id) {
  if (known != Unknown && isNamed(text, known)) {
    id = known;
    return true;
  }
  std::uint32_t& recent = recentNames_[slotOf(text)];
  if (recent != Unknown && isNamed(text, recent)) {
    id = recent;
    return true;
  }
  if (!newName(text, id)) return false;
  recent = id;
  return true;
}

// Names of one document mostly differ in their length or in one of three characters. The factor
// spreads what differs little over the whole table.
std::size_t Builder::slotOf(const char* name) const {
  const std::size_t size = std::strlen(name);
  const auto unit = [&](std::size_t at) {
    return std::uint32_t(static_cast<unsigned char>(name[at]));
  };
  std::uint32_t mixed = static_cast<std::uint32_t>(size);
  if (size > 0) mixed += unit(0) << 24 | unit(size / 2) << 16 | unit(size - 1) << 8;
  return mixed * 0x9E3779B1U >> (32 - RecentBits);
}

// Compares with the terminator, which the library has set behind the name.
bool Builder::isNamed(const char* text, std::uint32_t id) const {
  const NameRecord& known = NameTable::isOfDocuments(id) ? names_.record(id) : knownNames_[id];
  if (static_cast<std::size_t>(end_ - text) < std::max<std::size_t>(known.size, WordBytes))
    return std::strcmp(text, known.text) == 0;
  if ((loadWord(text) & known.frontMask) != known.front) return false;
  if (known.size <= WordBytes) return true;
  if (known.size > 2 * WordBytes) return std::memcmp(text, known.text, known.size) == 0;
  return loadWord(text + known.size - WordBytes) == known.back;
}

// A name that was not read lately. Those of the document are counted: the pool met them before.
bool Builder::newName(const char* text, std::uint32_t& id) {
  const std::string_view view(text);
  SharedPool& pool = storage_.pool();
  const std::optional<std::uint32_t> known = names_.find(view);
  if (known && names_.record(*known).lastPool == pool.stamp()) {
    id = *known;
    return true;
  }
  if (!isXmlName(view))
    return fail(text, "\"" + std::string(view.substr(0, 40)) + "\" is not a name");
  if (view.size() > LongestName || ++differentNames_ > limits_.names)
    return fail(text, "too many or too long names of elements and attributes");
  if (!known) {
    id = pool.holdNew(view);
  } else {
    id = *known;
    storage_.hold(XmlName::fromId(id));
    names_.record(id).lastPool = pool.stamp();
  }
  return true;
}

// The piece of the document behind one that is no element, which was read.
pugi::xml_node Builder::nextAfter(pugi::xml_node piece) const {
  pugi::xml_node next = piece.next_sibling();
  if (frugal_) piece.parent().remove_child(piece);
  return next;
}

bool Builder::buildTree(const pugi::xml_node& source, Node& root) {
  pugi::xml_node from = source;
  Node* to = &root;
  std::size_t depth = 1;
  if (!fill(from, *to, nullptr)) return false;
  for (;;) {
    pugi::xml_node next = from.first_child();
    while (next && next.type() != pugi::node_element) {
      if (!addPiece(next, *to, depth)) return false;
      next = nextAfter(next);
    }
    if (next) {
      if (++depth > limits_.depth)
        return fail(next.name(),
                    "elements are nested more than " + std::to_string(limits_.depth) + " deep");
      to = to->appendHeld(NoName);
    } else {
      for (;;) {
        if (brokenTextsOpen_ > 0) endText(*to, depth);
        if (from == source) return true;
        next = from.next_sibling();
        if (!frugal_ && next.type() == pugi::node_element) break;
        const pugi::xml_node done = std::exchange(from, from.parent());
        if (frugal_) from.remove_child(done);
        while (next && next.type() != pugi::node_element) {
          if (!addPiece(next, *to->parent_, depth - 1)) return false;
          next = nextAfter(next);
        }
        if (next) break;
        to = to->parent_;
        --depth;
      }
      to = to->parent_->appendHeld(NoName);
    }
    from = next;
    // Neighbours mostly look alike: the one before serves as the model for names.
    const Node* model = to->previous_ != to ? to->previous_ : nullptr;
    if (!fill(from, *to, model)) return false;
  }
}

bool Builder::fill(const pugi::xml_node& source, Node& node, const Node* model) {
  if (!name(source.name(), model ? model->tag_ : Unknown, node.tag_)) return false;
  const std::size_t modelled = model ? model->attributeCount_ : 0;
  std::size_t count = 0;
  bool asModel = true;  // names that the model has in this order are all different
  for (pugi::xml_attribute a = source.first_attribute(); a; a = a.next_attribute()) {
    const char* const text = a.name();
    std::uint32_t id = 0;
    if (asModel && count < modelled && isNamed(text, model->attributes_[count].name)) {
      id = model->attributes_[count].name;
    } else {
      if (asModel) markAttributes(count);
      asModel = false;
      if (!attributeName(text, id)) return false;
    }
    XmlText value;
    if (!decode(a.value(), Place::attribute, value)) return false;
    if (count == attributes_.size()) attributes_.resize(2 * count + 16);
    Attribute& added = attributes_[count++];
    added.name = id;
    added.setText(value);
  }
  if (count == 0) return true;
  const std::size_t most = std::min(limits_.attributes, XmlLimits::MostAttributes);
  if (count > most)
    return fail(source.name(), "an element has more than " + std::to_string(most) + " attributes");
  node.attributes_ = storage_.allocateAttributes(count);
  node.attributeCount_ = node.attributeCapacity_ = static_cast<std::uint16_t>(count);
  std::copy_n(attributes_.begin(), count, node.attributes_);
  return true;
}

// From here on the names of the element's attributes are marked, the first @p count of them now.
void Builder::markAttributes(std::size_t count) {
  element_ = names_.newStamp();
  for (std::size_t i = 0; i < count; ++i) names_.record(attributes_[i].name).lastElement = element_;
}

// A name that none of the element's attributes read before has.
bool Builder::attributeName(const char* text, std::uint32_t& id) {
  if (!name(text, Unknown, id)) return false;
  NameRecord& record = names_.record(id);
  if (record.lastElement == element_)
    return fail(text, "an element has the attribute \"" + std::string(text) + "\" twice");
  record.lastElement = element_;
  return true;
}

// What stands in an element beside its children.
bool Builder::addPiece(const pugi::xml_node& piece, Node& node, std::size_t depth) {
  XmlText text;
  switch (piece.type()) {
    case pugi::node_doctype:
    case pugi::node_declaration:
      return fail(begin_ + piece.offset_debug(), "a declaration inside the root element");
    case pugi::node_comment:
    case pugi::node_pi:
      return checkAside(piece);
    case pugi::node_pcdata:
      if (!decode(piece.value(), Place::text, text)) return false;
      break;
    case pugi::node_cdata:
      if (!decodeCharacterData(piece.value())) return false;
      text = XmlText::wide(decoded_);
      break;
    default:
      return true;
  }
  addText(text, node, depth);
  return true;
}

// Most texts are of one piece, which stays where it lies. Others are joined where their element
// ends: to join them piece by piece would copy the text once for each.
void Builder::addText(XmlText text, Node& node, std::size_t depth) {
  if (brokenTexts_.size() <= depth) brokenTexts_.resize(depth + 1);
  BrokenText& broken = brokenTexts_[depth];
  if (broken.element == &node) {
    text.appendTo(broken.text);
  } else if (node.text().empty()) {
    node.setStoredText(text.data() == decoded_.data() ? storage_.pool().store(decoded_) : text);
  } else {
    broken.element = &node;
    ++brokenTextsOpen_;
    broken.text.clear();
    node.text().appendTo(broken.text);
    text.appendTo(broken.text);
  }
}

void Builder::endText(Node& node, std::size_t depth) {
  if (brokenTexts_.size() <= depth || brokenTexts_[depth].element != &node) return;
  node.setStoredText(storage_.pool().store(brokenTexts_[depth].text));
  brokenTexts_[depth].element = nullptr;
  --brokenTextsOpen_;
}

// A text refers to decoded_ where it can't stay as it lies: addText stores it, or joins it.
bool Builder::decode(const char* raw, Place place, XmlText& value) {
  const char* at = raw;
  unsigned plain = WordBytes;
  while (plain == WordBytes && static_cast<std::size_t>(end_ - at) >= WordBytes) {
    plain = plainInFront(at);
    at += plain;
  }
  if (plain == WordBytes)
    while (Classes[static_cast<unsigned char>(*at)] == Plain) ++at;
  if (*at == '\0') {
    value = XmlText::narrow({raw, static_cast<std::size_t>(at - raw)});
    return true;
  }
  if (!decodeSlowly({raw, static_cast<std::size_t>(at - raw) + std::strlen(at)}, place))
    return false;
  value = place == Place::text ? XmlText::wide(decoded_) : storage_.pool().store(decoded_);
  return true;
}

bool Builder::decodeSlowly(std::string_view raw, Place place) {
  decoded_.clear();
  bool malformed = false;
  for (std::size_t at = 0; at < raw.size();) {
    const char* here = raw.data() + at;
    if (raw[at] == '&') {
      if (!decodeReference(raw, at, decoded_))
        return fail(here, "an unknown reference after \"&\"");
      continue;
    }
    if (raw[at] == '<') return fail(here, "\"<\" inside a value");
    if (place == Place::text && raw.substr(at).starts_with("]]>"))
      return fail(here, "\"]]>\" inside a text");
    char32_t c = nextCodePoint(raw, at, &malformed);
    if (malformed) return fail(here, "a byte that is no UTF-8");
    if (!isXmlCharacter(c)) return fail(here, "a character that XML does not allow");
    if (c == U'\r') {
      if (at < raw.size() && raw[at] == '\n') ++at;
      c = U'\n';
    }
    if (place == Place::attribute && (c == U'\n' || c == U'\t')) c = U' ';
    appendCodePoint(decoded_, c);
  }
  return true;
}

// Of a CDATA section, which knows no references.
bool Builder::decodeCharacterData(std::string_view raw) {
  if (!checkCharacters(raw)) return false;
  decoded_.clear();
  for (std::size_t at = 0; at < raw.size();) {
    const char32_t c = nextCodePoint(raw, at);
    if (c == U'\r' && at < raw.size() && raw[at] == '\n') continue;
    appendCodePoint(decoded_, c == U'\r' ? U'\n' : c);
  }
  return true;
}

bool Builder::decodeReference(std::string_view raw, std::size_t& at, std::u16string& out) {
  const bool numeric = at + 1 < raw.size() && raw[at + 1] == '#';
  // A number may have any count of leading zeros; a name is short.
  const std::size_t end =
      numeric ? raw.find(';', at) : raw.substr(0, at + LongestNamedReference + 2).find(';', at);
  if (end == std::string_view::npos) return false;
  const std::string_view body = raw.substr(at + 1, end - at - 1);
  at = end + 1;
  constexpr std::pair<std::string_view, char16_t> Known[] = {
      {"amp", u'&'}, {"lt", u'<'}, {"gt", u'>'}, {"quot", u'"'}, {"apos", u'\''}};
  for (const auto& [text, character] : Known) {
    if (body != text) continue;
    out += character;
    return true;
  }
  if (!numeric || body.size() < 2) return false;
  const bool hexadecimal = body[1] == 'x';
  const std::string_view digits = body.substr(hexadecimal ? 2 : 1);
  if (digits.empty()) return false;
  char32_t code = 0;
  for (const char c : digits) {
    const char32_t digit = c >= '0' && c <= '9'   ? char32_t(c - '0')
                           : c >= 'a' && c <= 'f' ? char32_t(c - 'a' + 10)
                           : c >= 'A' && c <= 'F' ? char32_t(c - 'A' + 10)
                                                  : 16;
    const char32_t base = hexadecimal ? 16 : 10;
    if (digit >= base) return false;
    code = code * base + digit;
    if (code > 0x10FFFF) return false;
  }
  if (!isXmlCharacter(code)) return false;
  appendCodePoint(out, code);
  return true;
}

}  // namespace host::xml
