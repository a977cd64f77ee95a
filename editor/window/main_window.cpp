#include "editor/window/main_window.h"

#include <QtGui/QAction>
#include <QtGui/QCloseEvent>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>
#include <cstdio>

#include "editor/dialogs/dialog_window.h"
#include "editor/history/history_view.h"
#include "editor/history/page_companion.h"
#include "editor/images.h"
#include "editor/qt_text.h"
#include "editor/window/banner.h"
#include "editor/window/configuration_tree.h"
#include "editor/window/device_panel.h"
#include "editor/window/exchange_view.h"
#include "editor/window/first_steps_page.h"
#include "editor/window/group_commands.h"
#include "editor/window/main_menus.h"
#include "editor/window/start.h"
#include "host/services/setup.h"
#include "workbench/device_of.h"

namespace editor {
namespace {

using host::TextId;

// Posted by a plug-in when it rebuilt the child devices of a device.
constexpr unsigned NodesReloadedMessage = 1025;

constexpr QSize FirstSize(1060, 700);

// In lines that a person compares one by one.
XCBasicString inLines(std::string fingerprint) {
  constexpr std::size_t Line = 8 * 3;  // bytes with the colon behind each
  for (std::size_t at = Line - 1; at < fingerprint.size(); at += Line) fingerprint[at] = '\n';
  return XCBasicString::FromUtf8(fingerprint);
}

}  // namespace

MainWindow::MainWindow(workbench::Workspace& workspace, QtFrontEnd& frontEnd,
                       ExchangeWindow& exchange, EditorPreferences preferences,
                       std::filesystem::path texts)
    : workspace_(workspace),
      frontEnd_(frontEnd),
      exchange_(exchange),
      preferences_(std::move(preferences)),
      texts_(std::move(texts)),
      wnd_(*this),
      actions_(this, [this] { return isBusy(); }),
      readBack_(workspace.record(), [this] { return exchange_.isRunning(); }) {
  setWindowIcon(imageIcon(XCVarnisSetup::Get().ProgramIDResource()));
  makeActions();
  makeWidgets();
  makeGroups();
  makeMenus();
  retranslate();
  restorePlace();
  workspace_.record().setListener(
      [this](const workbench::ExchangeEntry&) { exchanges_->catchUp(); });
  makeHistory();
  workspace_.channel().setJudge([this](const workbench::CertificateQuestion& question) {
    const XCBasicString text =
        XCBasicString::Format(XCLoadString(TextId::CertificateUnknown), question.address,
                              question.cause, inLines(question.fingerprint));
    return frontEnd_.ask({nullptr, text, host::MessageButtons::yesNo,
                          host::MessageIcon::warning}) == host::MessageAnswer::yes;
  });
  frontEnd_.setPostedListener([this](const host::PostedMessage& message) { noteMessage(message); });
  frontEnd_.setIdleListener([this] {
    save();
    reload();
    updateActions();
  });
  const auto devices = workbench::DeviceCatalogue::devices();
  if (!devices.empty()) tree_->chooseDevice(devices.front()->Value("id"));
  showChosen();
}

MainWindow::~MainWindow() {
  workspace_.record().setListener({});
  if (workbench::SendLog* log = workspace_.log()) {
    log->onEntry = nullptr;
    log->onProblem = nullptr;
  }
  frontEnd_.setCompanions({});
  workspace_.channel().setJudge({});
  frontEnd_.setPostedListener({});
  frontEnd_.setIdleListener({});
}

// --- building

bool MainWindow::isBusy() const {
  return frontEnd_.isBusy() || exchange_.isRunning();
}

void MainWindow::makeActions() {
  actions_.add(TextId::ActionNewDevice, "NEW-16.png", [this] { newDevice(); })
      ->setShortcut(QKeySequence::New);
  actions_.add(TextId::ActionModify, "OPTIONS-16.png", [this] { modifyDevice(); })
      ->setShortcut(Qt::Key_F2);
  actions_.add(TextId::ActionRemove, "REMOVE-16.png", [this] { removeDevice(); });
  actions_.add(TextId::ActionOptions, "ZELLAMPMANAGER-50.png", [this] { configure(); });
  actions_.add(TextId::ActionUpdateNodes, "4527.png", [this] { updateNodes(); })
      ->setShortcut(QKeySequence::Refresh);
  actions_.add(TextId::ForgetCertificate, "", [this] { forgetCertificate(); });
  actions_.add(TextId::ActionQuit, "EXIT-16.png", [this] { close(); })
      ->setShortcut(QKeySequence::Quit);
}

void MainWindow::makeWidgets() {
  splitter_ = new QSplitter(Qt::Horizontal, this);
  tree_ = new ConfigurationTree(splitter_);
  right_ = new QSplitter(Qt::Vertical, splitter_);
  pages_ = new QStackedWidget(right_);
  firstSteps_ = new FirstStepsPage(pages_);
  panel_ = new DevicePanel(pages_);
  pages_->addWidget(firstSteps_);
  pages_->addWidget(panel_);
  tabs_ = new QTabWidget(right_);
  tabs_->setDocumentMode(true);
  exchanges_ = new ExchangeView(workspace_.record(), tabs_);
  notices_ = new QListWidget(tabs_);
  tabs_->addTab(exchanges_, {});
  tabs_->addTab(notices_, {});
  splitter_->setChildrenCollapsible(false);
  right_->setChildrenCollapsible(false);
  splitter_->setStretchFactor(0, 0);
  splitter_->setStretchFactor(1, 1);
  right_->setStretchFactor(0, 3);
  right_->setStretchFactor(1, 2);
  auto* frame = new QWidget(this);
  auto* column = new QVBoxLayout(frame);
  banner_ = new Banner(frame);
  column->addWidget(banner_);
  column->addWidget(splitter_, 1);
  setCentralWidget(frame);

  tree_->onChosen = [this] { showChosen(); };
  tree_->onActivated = [this] {
    if (tree_->chosenDevice() != nullptr)
      action(TextId::ActionOptions)->trigger();
    else if (tree_->chosenGroup() != nullptr)
      action(TextId::ActionModifyGroup)->trigger();
    else if (tree_->current().isValid())
      tree_->view().setExpanded(tree_->current(), !tree_->view().isExpanded(tree_->current()));
  };
  connect(&firstSteps_->button(), &QPushButton::clicked, action(TextId::ActionNewDevice),
          &QAction::trigger);
  connect(&banner_->button(), &QPushButton::clicked, this, [this] {
    if (isBusy()) return;
    if (workspace_.store().needsNewIds())
      separateIds();
    else
      reopen();
  });
}

void MainWindow::makeGroups() {
  groups_ = new GroupCommands(workspace_, *tree_, actions_, wnd_);
  groups_->setParent(this);
  groups_->onDone = [this](const workbench::ActionResult& result) {
    showResult(result);
    workspace_.catalogue().invalidate();
    reload();
  };
  groups_->onNotice = [this](const QString& text) { statusBar()->showMessage(text); };
}

void MainWindow::makeHistory() {
  workbench::SendLog* log = workspace_.log();
  if (log != nullptr) {
    log->onProblem = [this](const std::string& problem) {
      statusBar()->showMessage(QString::fromStdString(problem));
    };
    history_ = new HistoryView(log->journal(), tabs_);
    history_->onProblem = [this](const QString& problem) { statusBar()->showMessage(problem); };
    tabs_->insertTab(1, history_, caption(TextId::TabHistory));
    log->onEntry = [this](const workbench::JournalEntry&) { history_->noteSend(); };
  }
  readBack_.onReport = [this](std::size_t exchange, const QString& line, const QString& details) {
    exchanges_->remark(exchange, line, details);
  };
  frontEnd_.setCompanions([this, log](DialogWindow& window) -> std::unique_ptr<QObject> {
    auto subject = subjectOf(window.body().dialog(), workspace_.record());
    if (!subject) return nullptr;
    auto companion = std::make_unique<PageCompanion>(
        window, std::move(*subject), log ? &log->journal() : nullptr, workspace_.record());
    companion->onSent = [this](const PageSubject& page, const XCBasicString& parameters,
                               std::size_t exchange) {
      if (preferences_.readBack) readBack_.order(page, parameters, exchange);
    };
    if (log != nullptr && !companion->subject().device.id.empty())
      companion->keepDraft(log->journal().folder().parent_path() / "drafts", frontEnd_,
                           [this](const QString& text) { statusBar()->showMessage(text); });
    return companion;
  });
}

void MainWindow::makeMenus() {
  menus_ = new MainMenus(*this, actions_, *groups_, *tree_);
  menus_->setParent(this);
  menus_->addSwitch(TextId::VerifyNewDevices, workspace_.settings().created, [this](bool on) {
    preferences_.verifyNew = workspace_.settings().created = on;
  });
  menus_->addSwitch(TextId::VerifyExistingDevices, workspace_.settings().existing, [this](bool on) {
    preferences_.verifyExisting = workspace_.settings().existing = on;
  });
  menus_->addSwitch(TextId::ReadBackSwitch, preferences_.readBack,
                    [this](bool on) { preferences_.readBack = on; });
  menus_->addLanguages(preferences_.language,
                       [this](const std::string& language) { setLanguage(language); });
}

void MainWindow::retranslate() {
  actions_.retranslate();
  menus_->retranslate();
  groups_->retranslate();
  tabs_->setTabText(0, caption(TextId::TabExchanges));
  tabs_->setTabText(tabs_->indexOf(notices_), caption(TextId::TabNotices));
  if (history_ != nullptr) {
    tabs_->setTabText(tabs_->indexOf(history_), caption(TextId::TabHistory));
    history_->retranslate();
  }
  exchanges_->retranslate();
  firstSteps_->retranslate();
  tree_->retranslate();
  showStanding();
}

// How the configuration stands: whose it is, and whether it is the one that was wanted.
void MainWindow::showStanding() {
  const workbench::ConfigurationStore& store = workspace_.store();
  const QString title =
      caption(TextId::EditorTitle) + " – " + QString::fromStdU16String(store.folder().u16string());
  setWindowTitle(store.isReadOnly() ? caption(TextId::ReadOnlyTitle, hostText(title)) : title);
  QStringList texts;
  QString button;
  if (store.isReadOnly()) {
    texts << QString::fromStdString(store.readOnlyReason());
    button = caption(store.needsNewIds() ? TextId::GiveNewIds : TextId::TryAgain);
  } else if (store.isRecovered()) {
    const QString moment = momentOfKeptCopy(store);
    texts << caption(TextId::RecoveredConfiguration, hostText(moment),
                     store.damagedCopy().filename().u16string());
  }
  if (const std::string loss = store.lossOfNextSave(); !loss.empty())
    texts << QString::fromStdString(loss);
  banner_->showText(texts.join('\n'), button);
}

// The other program may have gone, and what it saved is worth having in any case.
void MainWindow::reopen() {
  panel_->showText({}, {});
  std::string cause;
  bool opened = false;
  tree_->reload([&] {
    opened = workspace_.store().open(cause);
    workspace_.catalogue().invalidate();
  });
  showStanding();
  if (!opened) return showResult({false, XCBasicString::FromUtf8(cause)});
  if (workspace_.store().isReadOnly()) statusBar()->showMessage(banner_->text());
}

void MainWindow::separateIds() {
  panel_->showText({}, {});
  std::string cause;
  bool saved = false;
  tree_->reload([&] {
    saved = workspace_.store().separateIds(cause);
    workspace_.catalogue().invalidate();
  });
  showStanding();
  if (!saved) showResult({false, XCBasicString::FromUtf8(cause)});
}

void MainWindow::tellUnreadSettings(const std::string& cause) {
  const std::string file = EditorPreferences::fileIn(workspace_.store().folder()).string();
  statusBar()->showMessage(caption(TextId::SettingsNotRead, XCBasicString::FromUtf8(file),
                                   XCBasicString::FromUtf8(cause)));
}

void MainWindow::setLanguage(const std::string& language) {
  std::string cause;
  if (!host::loadTexts(texts_, language, cause))
    return showResult({false, XCBasicString::FromUtf8(cause)});
  preferences_.language = language;
  retranslate();
  panel_->rebuild();
  showChosen();
}

void MainWindow::restorePlace() {
  if (!restoreGeometry(preferences_.geometry)) resize(FirstSize);
  if (!splitter_->restoreState(preferences_.splitter)) splitter_->setSizes({280, 780});
  if (!right_->restoreState(preferences_.rightSplitter)) right_->setSizes({400, 260});
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (isBusy()) return event->ignore();
  save();
  preferences_.geometry = saveGeometry();
  preferences_.splitter = splitter_->saveState();
  preferences_.rightSplitter = right_->saveState();
  std::string cause;
  // Nobody would see a window any more.
  if (!preferences_.save(workspace_.store().folder(), cause))
    std::fprintf(stderr, "lamp-editor: %s: %s\n",
                 EditorPreferences::fileIn(workspace_.store().folder()).c_str(), cause.c_str());
  event->accept();
}

// --- actions

void MainWindow::newDevice() {
  const auto before = workbench::DeviceCatalogue::devices();
  showResult(workspace_.actions().newDevice(&wnd_));
  reload();
  const auto after = workbench::DeviceCatalogue::devices();
  if (after.size() > before.size()) tree_->chooseDevice(after.back()->Value("id"));
}

void MainWindow::modifyDevice() {
  if (XmlDocument::XmlNode* device = tree_->chosenDevice())
    showResult(workspace_.actions().modifyDevice(&wnd_, *device));
  reload();
}

void MainWindow::removeDevice() {
  XmlDocument::XmlNode* device = tree_->chosenDevice();
  if (device == nullptr) return;
  const host::MessageAnswer answer = frontEnd_.ask(
      {&wnd_,
       XCBasicString::Format(XCLoadString(TextId::RemoveDeviceQuestion), device->Value("name")),
       host::MessageButtons::yesNo, host::MessageIcon::question});
  if (answer != host::MessageAnswer::yes) return;
  panel_->showText({}, {});
  showResult(workspace_.actions().removeDevice(&wnd_, *device));
  reload();
}

void MainWindow::configure() {
  if (XmlDocument::XmlNode* device = tree_->chosenDevice())
    showResult(workspace_.actions().configure(&wnd_, *device));
}

void MainWindow::updateNodes() {
  if (XmlDocument::XmlNode* device = tree_->chosenDevice())
    showResult(workspace_.actions().updateNodes(&wnd_, *device));
}

void MainWindow::forgetCertificate() {
  const XmlDocument::XmlNode* device = tree_->chosenDevice();
  if (device == nullptr || workspace_.trust() == nullptr) return;
  std::string cause;
  if (!workspace_.trust()->forget(workbench::addressOf(*device), cause))
    return showResult({false, XCBasicString::Format(XCLoadString(TextId::TrustNotStored),
                                                    XCBasicString::FromUtf8(cause))});
  statusBar()->showMessage(caption(TextId::CertificateForgotten, device->Value("name")));
  updateActions();
}

void MainWindow::showResult(const workbench::ActionResult& result) {
  if (result.done) return;
  frontEnd_.ask({&wnd_, result.reason, host::MessageButtons::ok, host::MessageIcon::warning});
}

// --- what is shown

void MainWindow::showChosen() {
  updateActions();
  if (isBusy()) return;
  const XmlDocument::XmlNode* chosen = tree_->chosenDevice();
  if (history_ != nullptr) history_->showDevice(chosen ? chosen->Value("id").ToUtf8() : "");
  if (XmlDocument::XmlNode* device = tree_->chosenDevice()) {
    panel_->showDevice(device, XCDriver::LockDriver(device->Value("id")));
    return pages_->setCurrentWidget(panel_);
  }
  if (const XmlDocument::XmlNode* group = tree_->chosenGroup()) {
    showGroup(*group, TextId::LampsOfGroup,
              {action(TextId::ActionModifyGroup), action(TextId::ActionRemoveGroup)});
  } else if (tree_->isCurrent(ConfigurationModel::Kind::group)) {
    showGroup(*tree_->model().element(tree_->current()), TextId::GroupDevices,
              {action(TextId::ActionNewGroup)});
  } else {
    panel_->showText({}, caption(TextId::NothingSelected));
    const bool isEmpty = workbench::DeviceCatalogue::devices().empty();
    return pages_->setCurrentWidget(isEmpty ? static_cast<QWidget*>(firstSteps_) : panel_);
  }
  pages_->setCurrentWidget(panel_);
}

void MainWindow::showGroup(const XmlDocument::XmlNode& group, TextId count,
                           const QList<QAction*>& actions) {
  const auto countOf = [&group](const char* part) {
    const XmlDocument::XmlNode* found = group.Node(part);
    return found ? found->ChildCount() : 0;
  };
  QString text = caption(count, countOf("devices"));
  if (const std::size_t inner = countOf("groups"); inner > 0)
    text += "\n" + caption(TextId::GroupsOfController, inner);
  panel_->showText(qtText(group.Value("id")), text, actions);
}

void MainWindow::updateActions() {
  const XmlDocument::XmlNode* device = tree_->chosenDevice();
  using workbench::ActionResult;
  const ActionResult create = workspace_.actions().canDefine(nullptr);
  const auto chosen = [device](const ActionResult& result) {
    return device == nullptr ? ActionResult::refused(TextId::NoDeviceChosen) : result;
  };
  const ActionResult define = chosen(workspace_.actions().canDefine(device));
  actions_.allow(TextId::ActionNewDevice, create);
  actions_.allow(TextId::ActionModify, define);
  actions_.allow(TextId::ActionUpdateNodes, define);
  actions_.allow(TextId::ActionRemove, chosen(ActionResult::ifWritable(workspace_.store())));
  actions_.allow(TextId::ActionOptions, chosen({}));
  const bool trusts = device != nullptr && workspace_.trust() != nullptr &&
                      workspace_.trust()->find(workbench::addressOf(*device)).has_value();
  actions_.allow(
      TextId::ForgetCertificate,
      chosen(trusts ? ActionResult{} : ActionResult::refused(TextId::NoCertificateTrusted)));
  firstSteps_->button().setEnabled(create.done);
  firstSteps_->button().setToolTip(qtText(create.reason));
  groups_->update();
}

void MainWindow::reload() {
  if (isBusy()) return;  // again when it has gone
  showStanding();
  tree_->reload();
}

// A page may have changed the device's element; the panel's buttons don't go through DeviceActions.
void MainWindow::save() {
  std::string cause;
  if (!workspace_.store().saveIfDifferent(cause))
    statusBar()->showMessage(QString::fromStdString(cause));
}

void MainWindow::noteMessage(const host::PostedMessage& message) {
  const QString time = qtText(XCDateTime::LTC().GetDateTime(1, false, u"/", u":"));
  const QString text =
      message.message == NodesReloadedMessage
          ? caption(TextId::NodesReloadedNotice)
          : caption(TextId::OtherNotice, message.message, message.wParam, message.lParam);
  notices_->insertItem(0, time + "   " + text);
  save();
  reload();
}

}  // namespace editor
