// Compiled twice: against the shared library, and with the whole library in this source.

#include <cstring>
#include <pugixml.hpp>

#include "bench/work.h"

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

class BareWork : public bench::Work {
 public:
  explicit BareWork(bench::Task task) : task_(std::move(task)) {}

  void parse() override { reply_.load_buffer(task_.reply.data(), task_.reply.size()); }
  void copy() override {
    untouched_.reset(reply_);
    working_.reset(reply_);
  }
  void change() override {
    auto text = task_.texts.begin();
    for (pugi::xml_node node : table(working_).children())
      node.attribute(task_.attribute.c_str()).set_value((text++)->c_str());
  }
  bool check() override {
    bool good = true;
    for (pugi::xml_node node : table(working_).children())
      good = good && *node.attribute(task_.attribute.c_str()).value() != '\0';
    return good;
  }
  bool compare() override { return equal(table(untouched_), table(reply_)); }
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
  pugi::xml_node table(const pugi::xml_document& document) const {
    return document.document_element().first_child().child(task_.section.c_str());
  }

  const bench::Task task_;
  pugi::xml_document reply_;
  pugi::xml_document untouched_;
  pugi::xml_document working_;
  pugi::xml_document request_;
};

}  // namespace

namespace bench {

#ifdef PUGIXML_HEADER_ONLY
std::unique_ptr<Work> headerWork(Task task) {
#else
std::unique_ptr<Work> sharedWork(Task task) {
#endif
  return std::make_unique<BareWork>(std::move(task));
}

}  // namespace bench
