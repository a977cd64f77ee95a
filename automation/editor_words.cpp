#include <algorithm>

#include "automation/refusal.h"
#include "automation/session.h"
#include "automation/words.h"

namespace automation {
namespace {

using Node = XmlDocument::XmlNode;
using workbench::ActionResult;

// Windows are nested calls; far more than any person opens would exhaust the stack.
constexpr std::size_t MostWindows = 100;

Node& deviceOf(const Command& command) {
  const XCBasicString name = command.text("device");
  Node* device = workbench::DeviceCatalogue::deviceNamed(name);
  if (device == nullptr) throw Refusal("the configuration has no device \"" + name.ToUtf8() + "\"");
  return *device;
}

void require(const ActionResult& result) {
  if (!result.done) throw Refusal(result.reason.ToUtf8());
}

void requireRoom(Session& session) {
  if (session.windows().count() >= MostWindows) throw Refusal("too many windows are open");
}

void newDevice(Session& session, const Command&) {
  requireRoom(session);
  require(session.workspace().actions().newDevice(session.parent()));
}

void modifyDevice(Session& session, const Command& command) {
  requireRoom(session);
  Node& device = deviceOf(command);
  require(session.workspace().actions().modifyDevice(session.parent(), device));
}

void removeDevice(Session& session, const Command& command) {
  requireRoom(session);
  Node& device = deviceOf(command);
  require(session.workspace().actions().removeDevice(session.parent(), device));
}

void configure(Session& session, const Command& command) {
  requireRoom(session);
  Node& device = deviceOf(command);
  require(session.workspace().actions().configure(session.parent(), device));
}

void updateNodes(Session& session, const Command& command) {
  requireRoom(session);
  Node& device = deviceOf(command);
  require(session.workspace().actions().updateNodes(session.parent(), device));
}

Node& groupOf(const Command& command, const Node& device) {
  const XCBasicString name = command.text("group");
  Node* group = workbench::LampGroups(device).named(name);
  if (group == nullptr)
    throw Refusal("the device \"" + device.Value("name").ToUtf8() + "\" has no group \"" +
                  name.ToUtf8() + "\"");
  return *group;
}

void newGroup(Session& session, const Command& command) {
  requireRoom(session);
  const Node& device = deviceOf(command);
  require(session.workspace().groups().newGroup(session.parent(), device));
}

void modifyGroup(Session& session, const Command& command) {
  requireRoom(session);
  const Node& device = deviceOf(command);
  require(
      session.workspace().groups().modifyGroup(session.parent(), device, groupOf(command, device)));
}

void removeGroup(Session& session, const Command& command) {
  requireRoom(session);
  const Node& device = deviceOf(command);
  require(
      session.workspace().groups().removeGroup(session.parent(), device, groupOf(command, device)));
}

void undo(Session& session, const Command&) {
  requireRoom(session);
  require(session.workspace().groups().undo(session.parent()));
}

void redo(Session& session, const Command&) {
  requireRoom(session);
  require(session.workspace().groups().redo(session.parent()));
}

workbench::ListCallback callbackOf(const Command& command) {
  const std::string name = command.utf8("callback");
  if (name == "A") return workbench::ListCallback::A;
  if (name == "B") return workbench::ListCallback::B;
  throw Refusal("the field \"callback\" must be \"A\" or \"B\"");
}

XCListFlags flagsOf(const Command& command) {
  XCListFlags flags;
  for (const std::size_t flag :
       command.has("flags") ? command.counts("flags") : std::vector<std::size_t>()) {
    if (flag >= flags.size())
      throw Refusal("the field \"flags\" must hold numbers from 0 to " +
                    std::to_string(flags.size() - 1));
    flags.set(flag);
  }
  return flags;
}

void list(Session& session, const Command& command) {
  requireRoom(session);
  Node& device = deviceOf(command);
  const workbench::ListCallback which = callbackOf(command);
  const XCListFlags flags = flagsOf(command);
  XCNameList names = command.has("names") ? command.texts("names") : XCNameList();
  bool result = false;
  require(
      session.workspace().actions().list(session.parent(), device, which, flags, names, result));
  // Behind a message that the callback showed this belongs to the answer that closed it.
  JsonWriter& out = session.answer();
  out.member("result", result).name("names").beginList();
  for (const XCBasicString& name : names) out.value(std::u16string_view(name));
  out.endList();
}

void config(Session& session, const Command&) {
  session.answer().member("xml", session.workspace().store().text());
}

void exchanges(Session& session, const Command& command) {
  const auto& entries = session.workspace().record().entries();
  JsonWriter& out = session.answer();
  const std::size_t since = command.count("since", 0);
  out.name("exchanges").beginList();
  for (std::size_t at = since; at < entries.size(); ++at) {
    const workbench::ExchangeEntry& entry = entries[at];
    out.beginObject().member("n", entry.number).member("command", entry.command);
    out.member("kind", entry.kind == host::CommandKind::get ? "get" : "put");
    out.member("uri", entry.uri).member("request", entry.request.text());
    out.member("reply", entry.reply.text());
    out.member("ok", entry.ok).member("error", entry.error).endObject();
  }
  out.endList();
}

void cancelNextExchange(Session& session, const Command& command) {
  session.workspace().record().cancelNext(command.count("after", 0));
}

void posted(Session& session, const Command&) {
  JsonWriter& out = session.answer();
  out.name("posted").beginList();
  for (const host::PostedMessage& message : session.takePosted())
    out.beginObject()
        .member("message", static_cast<std::int64_t>(message.message))
        .member("wParam", static_cast<std::int64_t>(message.wParam))
        .member("lParam", message.lParam)
        .endObject();
  out.endList();
}

struct Entry {
  std::string_view name;
  Word word;
};

constexpr Entry Words[] = {
    {"editor.newDevice", &newDevice},
    {"editor.modifyDevice", &modifyDevice},
    {"editor.removeDevice", &removeDevice},
    {"editor.configure", &configure},
    {"editor.updateNodes", &updateNodes},
    {"editor.newGroup", &newGroup},
    {"editor.modifyGroup", &modifyGroup},
    {"editor.removeGroup", &removeGroup},
    {"editor.undo", &undo},
    {"editor.redo", &redo},
    {"editor.list", &list},
    {"editor.config", &config},
    {"editor.exchanges", &exchanges},
    {"editor.cancelNextExchange", &cancelNextExchange},
    {"editor.posted", &posted},
};

}  // namespace

Word findEditorWord(std::string_view name) {
  for (const Entry& entry : Words)
    if (entry.name == name) return entry.word;
  return nullptr;
}

}  // namespace automation
