#include "controller/model/reply.h"

namespace lamp::controller {
namespace {

struct TextWriter final : pugi::xml_writer {
  std::string text;
  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
};

}  // namespace

Reply Reply::document(const pugi::xml_document& content) {
  TextWriter writer;
  content.save(writer, "", pugi::format_raw, pugi::encoding_utf8);
  return Reply{200, "application/xml", std::move(writer.text), false};
}

Reply Reply::refusal(const Refusal& refusal) {
  return Reply{refusal.status, "text/plain; charset=utf-8", refusal.text, false};
}

Reply Reply::done() {
  return Reply{200, "", "", true};
}

}  // namespace lamp::controller
