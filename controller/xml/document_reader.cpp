#include "controller/xml/document_reader.h"

#include <expat.h>
#include <strings.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>

namespace lamp::controller {
namespace {

bool isBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

bool isUtf8(const char* encoding) {
  return ::strcasecmp(encoding, "utf-8") == 0 || ::strcasecmp(encoding, "us-ascii") == 0;
}

template <class Handle>
Handle made(Handle handle) {
  if (!handle) throw std::bad_alloc();
  return handle;
}

// Builds the document while expat judges the text.
class Builder {
 public:
  Builder(std::size_t depth, pugi::xml_document& document)
      : depth_(depth), node_(document), parser_(XML_ParserCreate("UTF-8")) {
    if (!parser_) throw std::bad_alloc();
    XML_SetUserData(parser_.get(), this);
    XML_SetElementHandler(
        parser_.get(),
        [](void* self, const char* name, const char** attributes) {
          of(self).guarded(&Builder::begin, name, attributes);
        },
        [](void* self, const char*) { of(self).guarded(&Builder::end); });
    XML_SetCharacterDataHandler(parser_.get(), [](void* self, const char* text, int length) {
      of(self).guarded(&Builder::addText, std::string_view(text, static_cast<std::size_t>(length)));
    });
    XML_SetStartCdataSectionHandler(parser_.get(), [](void* self) { of(self).kept_ = true; });
    XML_SetDoctypeDeclHandler(
        parser_.get(),
        [](void* self, const char*, const char*, const char*, int) {
          of(self).stop("a document type declaration is not accepted; send without it");
        },
        nullptr);
    XML_SetXmlDeclHandler(parser_.get(), [](void* self, const char*, const char* encoding, int) {
      if (encoding != nullptr && !isUtf8(encoding))
        of(self).stop("the document must be encoded in UTF-8");
    });
  }

  // The library reads from a copy of its own; the text is given up for it, because it may be an
  // image of many megabytes.
  std::optional<XmlFault> read(std::string text) {
    // The library counts in int; no request is that long.
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
      return XmlFault{1, 1, "the document is too long"};
    const int size = static_cast<int>(text.size());
    void* copy = XML_GetBuffer(parser_.get(), std::max(size, 1));
    if (copy == nullptr) throw std::bad_alloc();
    std::memcpy(copy, text.data(), text.size());
    whole_ = std::string_view(static_cast<const char*>(copy), text.size());
    std::string().swap(text);
    const XML_Status status = XML_ParseBuffer(parser_.get(), size, XML_TRUE);
    if (thrown_) std::rethrow_exception(thrown_);
    if (fault_ || status == XML_STATUS_OK) return fault_;
    const XML_Error error = XML_GetErrorCode(parser_.get());
    if (error == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
    XmlFault fault = faultHere(XML_ErrorString(error));
    // The library shows the name in a closing tag; people look for the tag.
    if (error == XML_ERROR_TAG_MISMATCH) fault.column -= std::string_view("</").size();
    return fault;
  }

 private:
  struct ParserEnd {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };

  static Builder& of(void* self) { return *static_cast<Builder*>(self); }

  // Nothing is thrown through the library, and nothing is built once something is wrong.
  template <class Step, class... Arguments>
  void guarded(Step step, Arguments... arguments) noexcept {
    if (fault_ || thrown_) return;
    try {
      (this->*step)(arguments...);
    } catch (...) {
      thrown_ = std::current_exception();
      XML_StopParser(parser_.get(), XML_FALSE);
    }
  }

  XmlFault faultHere(std::string text) const {
    return XmlFault{XML_GetCurrentLineNumber(parser_.get()),
                    XML_GetCurrentColumnNumber(parser_.get()) + 1, std::move(text)};
  }

  void stop(const char* text) {
    if (!fault_) fault_ = faultHere(text);
    XML_StopParser(parser_.get(), XML_FALSE);
  }

  void begin(const char* name, const char** attributes) {
    if (++level_ > depth_)
      return stop(("elements are nested deeper than " + std::to_string(depth_)).c_str());
    const auto count = static_cast<std::size_t>(XML_GetSpecifiedAttributeCount(parser_.get())) / 2;
    if (count > MostAttributes)
      return stop(
          ("an element has more than " + std::to_string(MostAttributes) + " attributes").c_str());
    flushText();
    node_ = made(node_.append_child(name));
    for (; *attributes != nullptr; attributes += 2) {
      pugi::xml_attribute attribute = made(node_.append_attribute(attributes[0]));
      if (!attribute.set_value(attributes[1])) throw std::bad_alloc();
    }
  }

  void end() {
    flushText();
    node_ = node_.parent();
    --level_;
  }

  // Pieces that lie one behind the other in the text that is read (an image of many megabytes) are
  // not copied twice; others (what a reference stands for) are gone when this returns.
  void addText(std::string_view text) {
    if (text_.empty() && continues(text)) {
      const char* begin = piece_.empty() ? text.data() : piece_.data();
      piece_ = std::string_view(begin, piece_.size() + text.size());
      return;
    }
    if (text_.empty()) text_ = piece_;
    text_ += text;
  }

  // The end of a line comes from elsewhere; it continues a piece where one stands there.
  bool continues(std::string_view text) const {
    const std::less<const char*> before;
    const char* end = whole_.data() + whole_.size();
    if (piece_.empty()) return !before(text.data(), whole_.data()) && before(text.data(), end);
    const char* next = piece_.data() + piece_.size();
    return text.data() == next || (text == "\n" && before(next, end) && *next == '\n');
  }

  void flushText() {
    const std::string_view text = text_.empty() ? piece_ : std::string_view(text_);
    if (kept_ ? !text.empty() : !isBlank(text)) {
      pugi::xml_node child = made(node_.append_child(pugi::node_pcdata));
      if (!child.set_value(text.data(), text.size())) throw std::bad_alloc();
    }
    piece_ = {};
    text_.clear();
    kept_ = false;
  }

  const std::size_t depth_;
  pugi::xml_node node_;
  std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserEnd> parser_;
  std::size_t level_ = 0;
  std::string_view whole_;
  std::string_view piece_;
  std::string text_;
  bool kept_ = false;  // the text has a part that stood in CDATA
  std::optional<XmlFault> fault_;
  std::exception_ptr thrown_;
};

}  // namespace

std::string XmlFault::message() const {
  return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + text;
}

std::optional<XmlFault> readXml(std::string text, std::size_t depth, pugi::xml_document& document) {
  document.reset();
  return Builder(depth, document).read(std::move(text));
}

}  // namespace lamp::controller
