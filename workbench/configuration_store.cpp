#include "workbench/configuration_store.h"

#include <new>
#include <utility>

#include "host/resources/texts.h"
#include "host/services/files.h"
#include "host/services/setup.h"
#include "workbench/shared_ids.h"

namespace workbench {
namespace {

namespace fs = std::filesystem;
using host::TextId;

const host::XmlName Root("configuration");
constexpr const char* Parts[] = {"commSystem", "deviceGroups", "viewSetups"};

XCBasicString shown(const fs::path& path) {
  return XCBasicString::FromUtf8(path.string());
}

// "configuration.lock" for "configuration.xml", and never the name of the file itself.
fs::path lockOf(const fs::path& configuration) {
  fs::path name = configuration.filename();
  if (name.extension() == ".xml") name.replace_extension();
  name += ".lock";
  return configuration.parent_path() / name;
}

template <class... Arguments>
bool failed(std::string& cause, TextId text, const Arguments&... arguments) {
  cause = XCBasicString::Format(XCLoadString(text), arguments...).ToUtf8();
  return false;
}

}  // namespace

// The folder is there, and the right to write asked for.
bool ConfigurationStore::takeFolder(std::string& cause) {
  std::string why;
  if (!host::fileSystem().makeFolder(folder_, why))
    return failed(cause, TextId::FolderNotMade, shown(folder_), XCBasicString::FromUtf8(why));
  fs::path target = file();
  // Links that lead nowhere are told when the file is read; nothing is made there.
  if (!host::fileSystem().followLinks(file(), target, why) || !host::fileSystem().exists(target))
    target = file();
  if (!lock_.take(lockOf(target), patience_)) return true;
  removeLeftovers(file());
  if (target != file()) removeLeftovers(target);
  return true;
}

// A program that was killed while it saved left the new file behind, or the name of the version
// before that it was about to give, which nobody reads. Whoever holds the lock knows that none is
// being written now.
void ConfigurationStore::removeLeftovers(const fs::path& file) {
  const std::string own = file.filename().string() + ".";
  std::string ignored;
  for (const fs::path& path : host::fileSystem().list(file.parent_path(), "")) {
    const std::string name = path.filename().string();
    if (name.starts_with(own) && name.find(".new-", own.size() - 1) != std::string::npos)
      host::fileSystem().remove(path, ignored);
  }
}

bool ConfigurationStore::read(const fs::path& file, host::NamedBy named, Content& content,
                              std::string& cause) {
  std::string text;
  std::string unread;
  if (!host::readFile(file, host::XmlLimits{}.bytes, text, unread, named))
    return failed(cause, TextId::FileNotRead, shown(file), XCBasicString::FromUtf8(unread));
  // Looked at before the document takes the text over; it means something once that was accepted.
  const UnkeptContent unkept = unkeptContentOf(text);
  host::XmlError error;
  if (!content.document.Parse(std::move(text), &error)) {
    const XCBasicString why = XCBasicString::FromUtf8(error.cause);
    if (error.line == 0) return failed(cause, TextId::FileNotRead, shown(file), why);
    return failed(cause, TextId::ConfigurationMalformed, shown(file), error.line, error.column,
                  why);
  }
  content.unkept = unkept;
  const std::string root(content.document.Root()->Tag());
  return root == Root.text() ||
         failed(cause, TextId::NoConfiguration, shown(file), XCBasicString::FromUtf8(root));
}

void ConfigurationStore::take(Content content) {
  XmlDocument& document = content.document;
  for (const char* part : Parts)
    if (document.Root()->Node(part) == nullptr) document.Root()->NewChild(part);
  XCMainCfg::Get().Document() = std::move(document);
  onDisk_ = text();
  sharesIds_ = !sharedIds().empty();
  unkept_ = content.unkept;
  loaded_ = true;
}

// The lock is taken first: what is loaded is then what no other program will change.
bool ConfigurationStore::open(std::string& cause) {
  if (!takeFolder(cause)) return false;
  Content content;
  if (!host::fileSystem().exists(file()))
    content.document.Create(Root);
  else if (!read(file(), host::NamedBy::person, content, cause))
    return false;
  take(std::move(content));
  recovered_ = false;
  return true;
}

bool ConfigurationStore::keptCopyOpens() const {
  Content content;
  std::string ignored;
  return read(host::keptCopy(file()), host::NamedBy::program, content, ignored);
}

bool ConfigurationStore::openKeptCopy(std::string& cause) {
  Content content;
  if (!read(host::keptCopy(file()), host::NamedBy::program, content, cause)) return false;
  take(std::move(content));
  recovered_ = true;
  return true;
}

std::string ConfigurationStore::lossOfNextSave() const {
  if (!lock_.isHeld() || !unkept_.any()) return {};
  std::string text;
  failed(text, TextId::ContentNotKept, unkept_.text(), shown(host::keptCopy(file()).filename()));
  return text;
}

std::string ConfigurationStore::text() const {
  return XCMainCfg::Get().Document().ToString(XmlDocument::Layout::indented);
}

std::string ConfigurationStore::readOnlyReason() const {
  std::string reason;
  if (!lock_.isHeld())
    failed(reason, TextId::ConfigurationReadOnly, shown(folder_), lock_.problem());
  if (!sharesIds_) return reason;
  std::string shared;
  failed(shared, TextId::SharedIdsReadOnly, sharedIdsText(sharedIds()));
  return reason.empty() ? shared : reason + "\n" + shared;
}

bool ConfigurationStore::separateIds(std::string& cause) {
  giveNewIds(sharedIds());
  sharesIds_ = false;
  return saveIfDifferent(cause);
}

fs::path ConfigurationStore::damagedCopy() const {
  const fs::path first = file().string() + ".damaged";
  fs::path copy = first;
  for (int number = 2; host::fileSystem().exists(copy); ++number)
    copy = first.string() + "-" + std::to_string(number);
  return copy;
}

bool ConfigurationStore::saveIfDifferent(std::string& cause) {
  XCMainCfg::Get().Document().ReleaseRemoved();
  try {
    return attemptToSave(cause);
  } catch (const std::bad_alloc&) {
    return failed(cause, TextId::NotEnoughMemory);
  }
}

bool ConfigurationStore::attemptToSave(std::string& cause) {
  if (!loaded_) return failed(cause, TextId::NoConfigurationOpen);
  std::string now = text();
  if (now == onDisk_) return true;
  if (isReadOnly()) {
    cause = readOnlyReason();
    return false;
  }
  std::string why;
  // The version before is the good one as long as the file is the damaged one: it stays.
  const fs::path copy = recovered_ ? damagedCopy() : host::keptCopy(file());
  if (!host::saveWholeKeeping(file(), now, copy, why))
    return failed(cause, TextId::FileNotWritten, shown(file()), XCBasicString::FromUtf8(why));
  onDisk_ = std::move(now);
  unkept_ = {};
  recovered_ = false;
  return true;
}

}  // namespace workbench
