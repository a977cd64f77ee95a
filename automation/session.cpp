#include "automation/session.h"

#include <utility>

#include "automation/refusal.h"
#include "automation/words.h"

namespace automation {

void Session::run(workbench::Workspace& workspace) {
  workspace_ = &workspace;
  serve([] { return false; });
  writeAnswer();
}

void Session::serve(const std::function<bool()>& done) {
  std::string line;
  while (!done() && !ending_) {
    writeAnswer();
    if (ending_) return;
    switch (lines_.read(line)) {
      case LineChannel::Read::line:
        execute(line);
        break;
      case LineChannel::Read::tooLong:
        begin();
        refuse(commands_, "the line is too long");
        break;
      case LineChannel::Read::end:
        ending_ = true;
        break;
    }
  }
}

void Session::begin() {
  ++commands_;
  unanswered_ = true;
  error_.reset();
  members_ = JsonWriter();
}

void Session::execute(const std::string& line) {
  begin();
  const std::size_t command = commands_;
  try {
    const Command read(line);
    executeWord(*this, read);
  } catch (const Refusal& refusal) {
    refuse(command, refusal.what());
  } catch (const std::exception& error) {
    refuse(command, std::string("internal error: ") + error.what());
  }
}

// A command whose answer has gone out already can't be refused any more.
void Session::refuse(std::size_t command, const std::string& reason) {
  if (command == commands_ && unanswered_) error_ = reason;
}

void Session::writeAnswer() {
  if (!unanswered_) return;
  unanswered_ = false;
  JsonWriter out;
  out.beginObject().member("ok", !error_.has_value());
  if (error_)
    out.member("error", *error_);
  else
    out.members(members_.text());
  members_ = JsonWriter();
  out.name("top");
  windows_.describeTop(out);
  if (closed_)
    out.name("closed")
        .beginObject()
        .member("class", closed_->className)
        .member("result", closed_->result == IDOK ? "ok" : "cancel")
        .endObject();
  closed_.reset();
  out.endObject();
  // Nobody who reads is as good as nobody who writes.
  if (!lines_.write(std::move(out.text()))) ending_ = true;
}

CWnd* Session::parent() {
  if (windows_.empty()) return nullptr;
  XCBaseDlg* const* dialog = std::get_if<XCBaseDlg*>(&windows_.top());
  return dialog == nullptr ? nullptr : *dialog;
}

// --- windows

void Session::runModal(XCBaseDlg& dialog) {
  const Windows::Open open(windows_, &dialog);
  dialog.DispatchPosted();
  serve([&dialog] { return dialog.HasEnded(); });
  if (!dialog.HasEnded()) dialog.PressCancel();
  if (!dialog.HasEnded()) dialog.EndDialog(IDCANCEL);
  closed_ = {dialog.ClassName(), dialog.Result()};
}

host::MessageAnswer Session::ask(const host::MessageRequest& request) {
  MessageWindow window{request, std::nullopt};
  const Windows::Open open(windows_, &window);
  serve([&window] { return window.answer.has_value(); });
  return window.answer.value_or(mostNegative(request.buttons));
}

std::filesystem::path Session::openFile(const host::FileRequest& request) {
  FileWindow window{request, std::nullopt};
  const Windows::Open open(windows_, &window);
  serve([&window] { return window.path.has_value(); });
  return window.path.value_or(std::filesystem::path());
}

bool Session::showChild(XCBaseDlg&, CWnd*) {
  return false;
}
void Session::forget(XCBaseDlg&) {}
void Session::setCursor(host::CursorShape) {}
void Session::dialogChanged(XCBaseDlg&) {}

void Session::postToMainWindow(const host::PostedMessage& message) {
  posted_.push_back(message);
}

}  // namespace automation
