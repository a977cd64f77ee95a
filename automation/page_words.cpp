#include "automation/refusal.h"
#include "automation/session.h"
#include "automation/words.h"
#include "host/dialogs/base_dlg.h"
#include "workbench/pages/page_changes.h"
#include "workbench/pages/row_edit.h"
#include "workbench/pages/row_filter.h"
#include "workbench/pages/row_text.h"
#include "workbench/table/list_table.h"

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

host::Control& controlIn(Session& session, const Command& command) {
  return controlOf(session.windows().dialog(), command);
}

host::ListControl& listIn(Session& session, const Command& command) {
  auto* list = dynamic_cast<host::ListControl*>(&controlIn(session, command));
  if (list == nullptr) throw Refusal("the control is no list");
  return *list;
}

void matches(Session& session, const Command& command) {
  const host::ListControl& list = listIn(session, command);
  const workbench::RowFilter filter(command.text("filter"), list,
                                    workbench::filterSourceOf(session.windows().dialog(), list));
  JsonWriter& out = session.answer();
  out.name("rows").beginList();
  for (const std::size_t row : filter.rows()) out.value(row);
  out.endList();
}

/// An edit of rows, of which some are selected.
workbench::RowEdit selectedRowsEdit(Session& session, const Command& command) {
  host::EditedPage& page = pageInFront(session);
  host::Control& control = controlIn(session, command);
  const auto edit = workbench::rowEditOf(session.windows().dialog(), page, control);
  if (!edit)
    throw Refusal("the control \"" + control.name() + "\" is no edit of rows that is enabled");
  if (edit->list->selection().empty()) throw Refusal("no row is selected");
  return *edit;
}

void putTexts(Session& session, const workbench::RowEdit& edit, workbench::RowTexts made) {
  if (!made.refused.empty()) throw Refusal(made.refused);
  const workbench::RowValues values{edit.list->selection(), std::move(made.texts)};
  if (const std::string why = workbench::whyRefused(edit, values); !why.empty()) throw Refusal(why);
  session.answer().member("changed", workbench::putRowValues(pageInFront(session), edit, values));
}

void fill(Session& session, const Command& command) {
  const workbench::RowEdit edit = selectedRowsEdit(session, command);
  putTexts(session, edit,
           workbench::numberedTexts(command.text("pattern"), edit.list->selection().size()));
}

void replace(Session& session, const Command& command) {
  const workbench::RowEdit edit = selectedRowsEdit(session, command);
  const XCBasicString find = command.text("find");
  const XCBasicString with = command.text("with");
  const bool expression = command.has("regex") && command.flag("regex");
  std::vector<XCBasicString> texts;
  for (const std::size_t row : edit.list->selection())
    texts.push_back(edit.binding->valueIn(*edit.list->element(row)));
  putTexts(session, edit,
           expression ? workbench::replacedByExpression(texts, find, with)
                      : workbench::replacedTexts(texts, find, with));
}

/// The rows of a list that has edits.
const host::RowSet& tableIn(Session& session, const host::ListControl& list) {
  const host::RowSet* rows = workbench::rowsShownIn(pageInFront(session), list);
  if (rows == nullptr || !rows->identity)
    throw Refusal("the list \"" + list.name() + "\" is no table of entries");
  return *rows;
}

void exportTable(Session& session, const Command& command) {
  pageInFront(session);
  host::ListControl& list = listIn(session, command);
  const host::RowSet& rows = tableIn(session, list);
  session.answer().member("csv", workbench::exportTable(session.windows().dialog(), rows, list));
}

void importTable(Session& session, const Command& command) {
  host::EditedPage& page = pageInFront(session);
  host::ListControl& list = listIn(session, command);
  const host::RowSet& rows = tableIn(session, list);
  const bool dryRun = command.has("dryRun") && command.flag("dryRun");
  const workbench::TableImport result = workbench::importTable(
      session.windows().dialog(), page, rows, list, command.utf8("csv"), dryRun);
  JsonWriter& out = session.answer();
  out.member("changed", result.changed).member("rows", result.rows);
  out.name("faults").beginList();
  for (const workbench::TableFault& fault : result.faults) {
    out.beginObject().member("line", fault.line).member("column", fault.column).name("name");
    if (fault.name)
      out.value(std::string_view(*fault.name));
    else
      out.null();
    out.member("text", std::u16string_view(fault.text)).endObject();
  }
  out.endList();
}

struct Entry {
  std::string_view name;
  Word word;
};

constexpr Entry Words[] = {{"changes", &changes},        {"faults", &faults},
                           {"matches", &matches},        {"fill", &fill},
                           {"replace", &replace},        {"exportTable", &exportTable},
                           {"importTable", &importTable}};

}  // namespace

Word findPageWord(std::string_view name) {
  for (const Entry& entry : Words)
    if (entry.name == name) return entry.word;
  return nullptr;
}

}  // namespace automation
