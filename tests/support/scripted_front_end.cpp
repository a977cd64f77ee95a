#include "tests/support/scripted_front_end.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace support {

using host::MessageAnswer;
using host::MessageButtons;

MessageAnswer negativeAnswer(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::retryCancel:
      return MessageAnswer::cancel;
    case MessageButtons::yesNo:
      return MessageAnswer::no;
    case MessageButtons::ok:
      break;
  }
  return MessageAnswer::ok;
}

bool offers(MessageButtons buttons, MessageAnswer answer) {
  switch (buttons) {
    case MessageButtons::retryCancel:
      return answer == MessageAnswer::retry || answer == MessageAnswer::cancel;
    case MessageButtons::yesNo:
      return answer == MessageAnswer::yes || answer == MessageAnswer::no;
    case MessageButtons::ok:
      break;
  }
  return answer == MessageAnswer::ok;
}

namespace {

// A child dialog that ended is still known, but nobody sees it any more.
bool isGone(const ScriptedFrontEnd::Waiting& entry) {
  return entry.child && entry.dialog->HasEnded();
}

template <class Wanted>
ScriptedFrontEnd::Waiting* topmost(
    const std::vector<std::unique_ptr<ScriptedFrontEnd::Waiting>>& stack, Wanted wanted) {
  const auto found = std::find_if(stack.rbegin(), stack.rend(), [&](const auto& entry) {
    return !isGone(*entry) && wanted(*entry);
  });
  return found == stack.rend() ? nullptr : found->get();
}

}  // namespace

ScriptedFrontEnd::Waiting* ScriptedFrontEnd::top() const {
  return topmost(stack_, [](const Waiting&) { return true; });
}

ScriptedFrontEnd::Waiting* ScriptedFrontEnd::topModal() const {
  return topmost(stack_, [](const Waiting& entry) { return !entry.child; });
}

XCBaseDlg* ScriptedFrontEnd::topDialog() const {
  const Waiting* found =
      topmost(stack_, [](const Waiting& entry) { return entry.kind == TopKind::dialog; });
  return found ? found->dialog : nullptr;
}

void ScriptedFrontEnd::remove(const Waiting& entry) {
  std::erase_if(stack_, [&](const auto& one) { return one.get() == &entry; });
}

bool ScriptedFrontEnd::canWait(const char* what) const {
  if (lockstep_.onWorker()) return true;
  ADD_FAILURE() << what << " opened outside of DialogDriver::run: nobody could answer it";
  return false;
}

void ScriptedFrontEnd::runModal(XCBaseDlg& dialog) {
  if (!canWait("a dialog")) {
    dialog.EndDialog(IDCANCEL);
    return;
  }
  auto entry = std::make_unique<Waiting>();
  entry->kind = TopKind::dialog;
  entry->dialog = &dialog;
  const Waiting& mine = *entry;
  push(std::move(entry));
  lockstep_.serveUntil([&] { return dialog.HasEnded(); });
  remove(mine);
  closed_.push_back({dialog.ClassName(), dialog.Result()});
}

bool ScriptedFrontEnd::showChild(XCBaseDlg& dialog, CWnd*) {
  if (childrenRefused_) return false;
  auto entry = std::make_unique<Waiting>();
  entry->kind = TopKind::dialog;
  entry->dialog = &dialog;
  entry->child = true;
  push(std::move(entry));
  return true;
}

void ScriptedFrontEnd::forget(XCBaseDlg& dialog) {
  const auto shown = std::find_if(stack_.begin(), stack_.end(),
                                  [&](const auto& entry) { return entry->dialog == &dialog; });
  if (shown == stack_.end()) return;
  if ((*shown)->child) {
    stack_.erase(shown);
    return;
  }
  // A test that failed unwinds: its dialog goes while the worker still waits inside DoModal.
  ADD_FAILURE() << "the dialog " << dialog.ClassName()
                << " was destroyed while it was open: declare it before the DialogDriver, or let "
                   "DialogDriver::show own it";
  while (Waiting* top = topModal()) {
    const bool last = top->dialog == &dialog;
    lockstep_.run([top] {
      top->settled = true;
      if (top->dialog != nullptr) top->dialog->EndDialog(IDCANCEL);
    });
    if (last) return;
  }
}

MessageAnswer ScriptedFrontEnd::ask(const host::MessageRequest& request) {
  if (!canWait("a message")) return negativeAnswer(request.buttons);
  auto entry = std::make_unique<Waiting>();
  entry->kind = TopKind::message;
  entry->message = request;
  Waiting& mine = *entry;
  push(std::move(entry));
  lockstep_.serveUntil([&] { return mine.settled; });
  const MessageAnswer answer = mine.answer;
  remove(mine);
  return answer;
}

std::filesystem::path ScriptedFrontEnd::openFile(const host::FileRequest& request) {
  if (!canWait("a file choice")) return {};
  auto entry = std::make_unique<Waiting>();
  entry->kind = TopKind::file;
  entry->file = request;
  Waiting& mine = *entry;
  push(std::move(entry));
  lockstep_.serveUntil([&] { return mine.settled; });
  const std::filesystem::path path = mine.path;
  remove(mine);
  return path;
}

}  // namespace support
