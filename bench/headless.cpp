#include "bench/headless.h"

#include <cstdio>
#include <cstdlib>
#include <numeric>

#include "host/resources/texts.h"
#include "tests/support/sequential_ids.h"

namespace bench {
namespace {

// The largest replies measured are larger than a controller may send.
constexpr host::XmlLimits WithoutBound{.bytes = ~std::size_t(0)};

[[noreturn]] void fail(const std::string& why) {
  std::fprintf(stderr, "FAULT: %s\n", why.c_str());
  std::exit(2);
}

host::Control& control(XCBaseDlg& dialog, std::string_view name) {
  host::Control* found = dialog.FindControl(name);
  if (found == nullptr) fail("there is no control " + std::string(name));
  return *found;
}

void expectDone(const host::Outcome& outcome, std::string_view name) {
  if (!outcome) fail(std::string(name) + ": " + outcome.reason);
}

}  // namespace

class Headless::StandingClock : public host::Clock {
 public:
  XCDateTime now() const override { return {2025, 3, 15, 10, 0, 0}; }
};

class Headless::Channel : public host::CommandChannel {
 public:
  explicit Channel(Headless& owner) : owner_(owner) {}
  host::ExchangeReply exchange(const host::ExchangeRequest& request) override {
    host::ExchangeReply reply;
    reply.status = host::ExchangeReply::Status::succeeded;
    if (request.kind == host::CommandKind::put)
      owner_.written_ = request.document->ToString().size();
    else if (!reply.document.Parse(owner_.reply_, nullptr, WithoutBound))
      fail("the reply is no XML");
    return reply;
  }

 private:
  Headless& owner_;
};

class Headless::ScriptedUser : public host::FrontEnd {
 public:
  explicit ScriptedUser(Headless& owner) : owner_(owner) {}
  void runModal(XCBaseDlg& dialog) override {
    owner_.script_(dialog);
    if (!dialog.HasEnded()) dialog.EndDialog(IDCANCEL);
  }
  bool showChild(XCBaseDlg&, CWnd*) override { return false; }
  void forget(XCBaseDlg&) override {}
  host::MessageAnswer ask(const host::MessageRequest& request) override {
    fail("a message: " + request.text.ToUtf8());
  }
  std::filesystem::path openFile(const host::FileRequest&) override { fail("a file choice"); }
  void setCursor(host::CursorShape) override {}
  void postToMainWindow(const host::PostedMessage&) override {}
  void dialogChanged(XCBaseDlg&) override {}

 private:
  Headless& owner_;
};

class Headless::Settings : public host::EditorSettings {
 public:
  bool verifyConnection(bool) const override { return false; }
};

Headless::Headless()
    : clock_(std::make_unique<StandingClock>()),
      ids_(std::make_unique<support::SequentialIds>()),
      channel_(std::make_unique<Channel>(*this)),
      user_(std::make_unique<ScriptedUser>(*this)),
      settings_(std::make_unique<Settings>()) {
  std::string cause;
  if (!host::loadTexts(LAMP_TEXTS_FOLDER, "en", cause)) fail(cause);
  host::installServices({clock_.get(), ids_.get(), channel_.get(), user_.get(), settings_.get()});
}

Headless::~Headless() = default;

void type(XCBaseDlg& dialog, std::string_view edit, std::u16string_view text) {
  expectDone(host::UserInput(dialog).type(control(dialog, edit), text), edit);
}

void click(XCBaseDlg& dialog, std::string_view button) {
  expectDone(host::UserInput(dialog).click(control(dialog, button)), button);
}

host::ListControl& listOf(XCBaseDlg& dialog, std::string_view name) {
  auto* list = dynamic_cast<host::ListControl*>(&control(dialog, name));
  if (list == nullptr) fail(std::string(name) + " is no list");
  return *list;
}

void select(XCBaseDlg& dialog, std::string_view list, std::vector<std::size_t> rows) {
  expectDone(host::UserInput(dialog).select(listOf(dialog, list), std::move(rows)), list);
}

void selectAll(XCBaseDlg& dialog, std::string_view list) {
  select(dialog, list, firstRows(listOf(dialog, list).rowCount()));
}

void sort(XCBaseDlg& dialog, std::string_view list, std::size_t column) {
  expectDone(host::UserInput(dialog).sort(listOf(dialog, list), column), list);
}

std::vector<std::size_t> firstRows(std::size_t count) {
  std::vector<std::size_t> rows(count);
  std::iota(rows.begin(), rows.end(), std::size_t(0));
  return rows;
}

}  // namespace bench
