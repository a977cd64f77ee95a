#include "bench/node_table.h"
#include "bench/work.h"
#include "host/xml/xml_document.h"

namespace bench {
namespace {

const host::XmlName Reference("Reference");

class HostWork : public Work {
 public:
  explicit HostWork(std::size_t nodes) : xml_(nodeTable(nodes)) {
    for (const std::string& text : references(nodes))
      references_.push_back(XCBasicString::FromUtf8(text));
  }

  void parse() override { reply_.Parse(xml_); }
  void copy() override {
    untouched_.Create("copy") = *reply_.Root();
    working_.Create("copy") = *reply_.Root();
  }
  void change() override {
    auto text = references_.begin();
    for (XmlDocument::XmlNode& node : table(working_).Children())
      node.setAttribute(Reference, *text++);
  }
  bool compare() override { return table(untouched_) == table(reply_); }
  bool changed() override { return !(table(untouched_) == table(working_)); }
  void section() override { request_.Create("deviceCfg").NewChild("L04") = table(working_); }
  std::size_t write() override { return request_.ToString().size(); }

 private:
  static XmlDocument::XmlNode& table(XmlDocument& document) {
    return *document.Root()->Node("ZelLamp/L04");
  }

  const std::string xml_;
  std::vector<XCBasicString> references_;
  XmlDocument reply_;
  XmlDocument untouched_;
  XmlDocument working_;
  XmlDocument request_;
};

}  // namespace

std::unique_ptr<Work> hostWork(std::size_t nodes) {
  return std::make_unique<HostWork>(nodes);
}

}  // namespace bench
