#include "automation/windows.h"

#include "automation/refusal.h"

namespace automation {
namespace {

using host::MessageAnswer;
using host::MessageButtons;

const char* wordFor(host::MessageIcon icon) {
  switch (icon) {
    case host::MessageIcon::information:
      return "information";
    case host::MessageIcon::warning:
      return "warning";
    case host::MessageIcon::question:
      return "question";
    case host::MessageIcon::error:
      return "error";
    default:
      return "none";
  }
}

void beginTop(JsonWriter& out, const char* kind, std::string_view className, int number,
              std::u16string_view title) {
  out.beginObject().member("kind", kind).member("class", className);
  out.member("template", number).member("title", title);
}

// Messages and file choices carry the title of the window that they stand in front of.
std::u16string_view titleOf(const CWnd* parent) {
  if (parent == nullptr) return {};
  return parent->GetWindowText();
}

void describe(JsonWriter& out, const MessageWindow& window) {
  beginTop(out, "message", "", 0, titleOf(window.request.parent));
  out.member("text", std::u16string_view(window.request.text));
  out.name("buttons").beginList();
  for (const MessageAnswer answer : buttonsOf(window.request.buttons))
    out.value(automation::wordFor(answer));
  out.endList().member("icon", wordFor(window.request.icon)).endObject();
}

void describe(JsonWriter& out, const FileWindow& window) {
  beginTop(out, "file", "", 0, titleOf(window.request.parent));
  out.name("filters").beginList();
  for (const host::FileFilter& filter : window.request.filters)
    out.beginObject()
        .member("description", std::u16string_view(filter.description))
        .member("pattern", filter.pattern)
        .endObject();
  out.endList().endObject();
}

}  // namespace

std::vector<MessageAnswer> buttonsOf(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::retryCancel:
      return {MessageAnswer::retry, MessageAnswer::cancel};
    case MessageButtons::yesNo:
      return {MessageAnswer::yes, MessageAnswer::no};
    default:
      return {MessageAnswer::ok};
  }
}

MessageAnswer mostNegative(MessageButtons buttons) {
  return buttonsOf(buttons).back();
}

const char* wordFor(MessageAnswer answer) {
  switch (answer) {
    case MessageAnswer::cancel:
      return "cancel";
    case MessageAnswer::retry:
      return "retry";
    case MessageAnswer::yes:
      return "yes";
    case MessageAnswer::no:
      return "no";
    default:
      return "ok";
  }
}

std::string Windows::inFront() const {
  if (stack_.empty()) return "no window is open";
  if (std::holds_alternative<MessageWindow*>(stack_.back()))
    return "a message is in front: answer it first";
  if (std::holds_alternative<FileWindow*>(stack_.back()))
    return "a file choice is in front: pick a file first";
  return "the dialog \"" + std::get<XCBaseDlg*>(stack_.back())->ClassName() + "\" is in front";
}

XCBaseDlg& Windows::dialog() const {
  if (!stack_.empty())
    if (XCBaseDlg* const* found = std::get_if<XCBaseDlg*>(&stack_.back())) return **found;
  throw Refusal(inFront());
}

MessageWindow& Windows::message() const {
  if (!stack_.empty())
    if (MessageWindow* const* found = std::get_if<MessageWindow*>(&stack_.back())) return **found;
  throw Refusal("no message waits for an answer: " + inFront());
}

FileWindow& Windows::file() const {
  if (!stack_.empty())
    if (FileWindow* const* found = std::get_if<FileWindow*>(&stack_.back())) return **found;
  throw Refusal("no file choice waits for a path: " + inFront());
}

void Windows::describeTop(JsonWriter& out) const {
  if (stack_.empty()) {
    beginTop(out, "none", "", 0, {});
    out.endObject();
  } else if (XCBaseDlg* const* dialog = std::get_if<XCBaseDlg*>(&stack_.back())) {
    beginTop(out, "dialog", (*dialog)->ClassName(), (*dialog)->TemplateNumber(),
             (*dialog)->GetWindowText());
    out.endObject();
  } else if (MessageWindow* const* message = std::get_if<MessageWindow*>(&stack_.back())) {
    describe(out, **message);
  } else {
    describe(out, *std::get<FileWindow*>(stack_.back()));
  }
}

}  // namespace automation
