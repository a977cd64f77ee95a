#include "automation/refusal.h"
#include "automation/session.h"
#include "automation/words.h"
#include "workbench/pages/page_changes.h"

namespace automation {
namespace {

host::EditedPage& pageInFront(Session& session) {
  host::EditedPage* page = session.windows().dialog().Edits();
  if (page == nullptr) throw Refusal("the dialog has no entries");
  return *page;
}

void writeText(JsonWriter& out, std::string_view name, const std::optional<XCBasicString>& text) {
  out.name(name);
  if (text)
    out.value(std::u16string_view(*text));
  else
    out.null();
}

void changes(Session& session, const Command&) {
  const std::vector<workbench::ValueChange> all = workbench::changesOf(pageInFront(session));
  JsonWriter& out = session.answer();
  out.name("changes").beginList();
  for (const workbench::ValueChange& change : all) {
    out.beginObject();
    writeText(out, "row", change.row);
    out.member("name", change.name);
    out.member("caption", std::u16string_view(change.caption));
    writeText(out, "before", change.before);
    writeText(out, "after", change.after);
    out.endObject();
  }
  out.endList();
}

void faults(Session& session, const Command&) {
  host::EditedPage& page = pageInFront(session);
  const std::vector<workbench::ValueFault> all =
      workbench::faultsOf(session.windows().dialog(), page);
  JsonWriter& out = session.answer();
  out.name("faults").beginList();
  for (const workbench::ValueFault& fault : all) {
    out.beginObject();
    writeText(out, "row", fault.row);
    out.member("name", fault.name);
    out.member("text", std::u16string_view(fault.text));
    out.endObject();
  }
  out.endList();
}

}  // namespace

Word findPageWord(std::string_view name) {
  if (name == "changes") return &changes;
  return name == "faults" ? &faults : nullptr;
}

}  // namespace automation
