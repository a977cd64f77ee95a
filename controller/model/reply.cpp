#include "controller/model/reply.h"

#include "controller/model/text_writer.h"

namespace lamp::controller {
Reply Reply::document(const pugi::xml_document& content) {
  TextWriter writer;
  content.save(writer, "", pugi::format_raw, pugi::encoding_utf8);
  return text(std::move(writer.text));
}

Reply Reply::text(std::string content) {
  return Reply{200, "application/xml", std::move(content)};
}

Reply Reply::refusal(const Refusal& refusal) {
  return Reply{refusal.status, "text/plain; charset=utf-8", refusal.text};
}

Reply Reply::done() {
  return Reply{200, "", ""};
}

}  // namespace lamp::controller
