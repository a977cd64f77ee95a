#include "workbench/workspace.h"

#include <utility>

#include "host/resources/texts.h"
#include "host/services/setup.h"

namespace workbench {

Workspace::Workspace(const ProgramPaths& paths, WorkspaceOptions options)
    : paths_(paths), options_(std::move(options)), store_(options_.configuration) {
  if (options_.plugin.empty()) options_.plugin = paths_.plugin;
  if (options_.now) clock_.fix(*options_.now);
  if (options_.answerWithin) channel_.setLimits(HttpLimits::within(*options_.answerWithin));
  if (!options_.state.empty()) {
    log_ = std::make_unique<SendLog>(SendJournal(options_.state / "journal"), record_,
                                     options_.program);
    trust_ = std::make_unique<TrustedCertificates>(options_.state / "trust" / "certificates.json");
    channel_.setTrust(trust_.get());
  }
  settings_.created = options_.verifyNew;
  settings_.existing = options_.verifyExisting;
}

Workspace::~Workspace() {
  plugin_.unload();
  XCMainCfg::Get().SetChangeListener({});
  host::setDriverRegistry(nullptr);
}

bool Workspace::open(host::FrontEnd& frontEnd, std::string& cause) {
  if (!host::loadTexts(paths_.texts, options_.language, cause)) return false;
  host::installServices({.clockService = &clock_,
                         .idService = &ids_,
                         .channelService = &record_,
                         .frontEndService = &frontEnd,
                         .settingsService = &settings_});
  XCVarnisSetup::Get().SetConfigurationPath(options_.configuration);
  XCVarnisSetup::Get().SetImageFolder(paths_.images);
  host::setDriverRegistry(&catalogue_);
  XCMainCfg::Get().SetChangeListener([this] { catalogue_.invalidate(); });
  configurationRefused_ = !store_.open(cause);
  return !configurationRefused_ && plugin_.load(options_.plugin, cause);
}

bool Workspace::openKeptCopy(std::string& cause) {
  configurationRefused_ = !store_.openKeptCopy(cause);
  return !configurationRefused_ && plugin_.load(options_.plugin, cause);
}

}  // namespace workbench
