#include "bench/documents.h"
#include "bench/work.h"
#include "host/xml/xml_document.h"

namespace bench {
namespace {

class HostWork : public Work {
 public:
  explicit HostWork(Task task)
      : xml_(std::move(task.reply)), section_(task.section), attribute_(task.attribute) {
    for (const std::string& text : task.texts) texts_.push_back(XCBasicString::FromUtf8(text));
  }

  void parse() override { reply_.Parse(xml_); }
  void copy() override {
    untouched_.Create("copy") = *reply_.Root();
    working_.Create("copy") = *reply_.Root();
  }
  void change() override {
    auto text = texts_.begin();
    for (XmlDocument::XmlNode& node : table(working_).Children())
      node.setAttribute(attribute_, *text++);
  }
  bool check() override {
    bool good = true;
    for (const XmlDocument::XmlNode& node : table(working_).Children())
      good = good && !node.attribute(attribute_).empty();
    return good;
  }
  bool compare() override { return table(untouched_) == table(reply_); }
  void section() override { request_.Create("deviceCfg").NewChild(section_) = table(working_); }
  std::size_t write() override { return request_.ToString().size(); }

 private:
  XmlDocument::XmlNode& table(XmlDocument& document) {
    return *document.Root()->FirstChild()->FirstChild();
  }

  const std::string xml_;
  const host::XmlName section_;
  const host::XmlName attribute_;
  std::vector<XCBasicString> texts_;
  XmlDocument reply_;
  XmlDocument untouched_;
  XmlDocument working_;
  XmlDocument request_;
};

}  // namespace

Task nodeTableTask(std::size_t nodes) {
  return {nodeTable(nodes), "L04", "Reference", references(nodes)};
}

std::unique_ptr<Work> hostWork(Task task) {
  return std::make_unique<HostWork>(std::move(task));
}

}  // namespace bench
