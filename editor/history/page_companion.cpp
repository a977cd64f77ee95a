#include "editor/history/page_companion.h"

#include <QtWidgets/QPushButton>

#include "editor/dialogs/dialog_window.h"
#include "editor/history/history_window.h"
#include "editor/qt_text.h"

namespace editor {

PageCompanion::PageCompanion(DialogWindow& window, PageSubject subject,
                             const workbench::SendJournal* journal,
                             const workbench::ExchangeRecord& record)
    : window_(window),
      subject_(std::move(subject)),
      journal_(journal),
      record_(record),
      before_(record.entries().size()) {
  if (journal_ != nullptr) addHistory();
}

PageCompanion::~PageCompanion() {
  XCBaseDlg& page = window_.body().dialog();
  if (page.Result() != IDOK || !onSent) return;
  for (std::size_t number = record_.entries().size(); number > before_; --number) {
    const workbench::ExchangeEntry& entry = record_.entries()[number - 1];
    if (entry.kind != host::CommandKind::put || !entry.ok || entry.section != subject_.written)
      continue;
    XCBasicString parameters;
    page.addUriParams(parameters, true);
    onSent(subject_, parameters, number);
    return;
  }
}

void PageCompanion::keepDraft(const std::filesystem::path& folder, QtFrontEnd& frontEnd,
                              DraftKeeper::Teller tell) {
  draft_ =
      std::make_unique<DraftKeeper>(folder, subject_, window_.body(), frontEnd, std::move(tell));
}

void PageCompanion::addHistory() {
  auto* button = new QPushButton(caption(host::TextId::HistoryOfPage), &window_);
  button->setAutoDefault(false);
  if (!window_.addToFoot(button)) {
    delete button;
    return;
  }
  history_ = button;
  connect(button, &QPushButton::clicked, this, [this] {
    auto* history = new HistoryWindow(*journal_, subject_, window_.body(), &window_);
    history->open();
  });
}

}  // namespace editor
