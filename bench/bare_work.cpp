#include <cstring>
#include <pugixml.hpp>

#include "bench/node_table.h"
#include "bench/work.h"

namespace bench {
namespace {

class StringWriter : public pugi::xml_writer {
 public:
  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
  std::string text;
};

// Tag, text, attributes and children in their order, as deep as they go.
bool equal(pugi::xml_node a, pugi::xml_node b) {
  if (std::strcmp(a.name(), b.name()) != 0 || std::strcmp(a.value(), b.value()) != 0) return false;
  pugi::xml_attribute x = a.first_attribute();
  pugi::xml_attribute y = b.first_attribute();
  for (; x && y; x = x.next_attribute(), y = y.next_attribute())
    if (std::strcmp(x.name(), y.name()) != 0 || std::strcmp(x.value(), y.value()) != 0)
      return false;
  if (x || y) return false;
  a = a.first_child();
  b = b.first_child();
  for (; a && b; a = a.next_sibling(), b = b.next_sibling())
    if (!equal(a, b)) return false;
  return !a && !b;
}

class BareWork : public Work {
 public:
  explicit BareWork(std::size_t nodes) : xml_(nodeTable(nodes)), references_(references(nodes)) {}

  void parse() override { reply_.load_buffer(xml_.data(), xml_.size()); }
  void copy() override {
    untouched_.reset(reply_);
    working_.reset(reply_);
  }
  void change() override {
    auto text = references_.begin();
    for (pugi::xml_node node : table(working_).children())
      node.attribute("Reference").set_value((text++)->c_str());
  }
  bool compare() override { return equal(table(untouched_), table(reply_)); }
  bool changed() override { return !equal(table(untouched_), table(working_)); }
  void section() override {
    request_.reset();
    request_.append_child("deviceCfg").append_copy(table(working_));
  }
  std::size_t write() override {
    StringWriter writer;
    request_.save(writer, "", pugi::format_raw);
    return writer.text.size();
  }

 private:
  static pugi::xml_node table(const pugi::xml_document& document) {
    return document.document_element().child("ZelLamp").child("L04");
  }

  const std::string xml_;
  const std::vector<std::string> references_;
  pugi::xml_document reply_;
  pugi::xml_document untouched_;
  pugi::xml_document working_;
  pugi::xml_document request_;
};

}  // namespace

std::unique_ptr<Work> bareWork(std::size_t nodes) {
  return std::make_unique<BareWork>(nodes);
}

}  // namespace bench
