#include "programs/calendar_document.h"

#include <new>
#include <utility>

#include "host/services/files.h"
#include "host/services/identity.h"
#include "programs/calendar_names.h"
#include "programs/calendar_store.h"

namespace lamp {

namespace {

XmlDocument copyOf(const XmlDocument::XmlNode& root) {
  XmlDocument copy;
  copy.Create(root.TagName()) = root;
  return copy;
}

}  // namespace

CalendarDocument::CalendarDocument(ProgramKind kind)
    : working_(calendar::Calendar), untouched_(calendar::Calendar) {
  root().NewChild(calendar::Revision);
  root().NewChild(calendar::Name);
  root().SetValue(calendar::HasModule, moduleMark(kind));
  settle();
}

bool CalendarDocument::load(const std::optional<std::filesystem::path>& file) {
  XmlDocument stored;
  if (!readCalendar(file, stored)) return false;
  stored.Root()->SetTag(calendar::Calendar);
  working_ = std::move(stored);
  settle();
  return true;
}

XCBasicString CalendarDocument::year() const {
  return root().Value(calendar::Year);
}

void CalendarDocument::setYear(std::u16string_view year) {
  root().SetValue(calendar::Year, year);
}

void CalendarDocument::settle() {
  *untouched_.Root() = root();
}

bool CalendarDocument::save(const std::filesystem::path& file, const XCBasicString& name) {
  try {
    return attemptToSave(file, name);
  } catch (const std::bad_alloc&) {
    return false;
  }
}

// What is written becomes the calendar when it stands on the disk; until then nothing changes.
bool CalendarDocument::attemptToSave(const std::filesystem::path& file, const XCBasicString& name) {
  XmlDocument written = copyOf(root());
  written.Root()->SetValue(calendar::Revision, guidtow(NewGUID()));
  written.Root()->SetValue(calendar::Name, name);
  XmlDocument kept = copyOf(*written.Root());
  std::string cause;
  // Made in place of a disk that went away, the folder would be out of sight when it is back.
  const std::filesystem::path folder = file.parent_path();
  if (!host::fileSystem().exists(folder.parent_path())) return false;
  if (!host::fileSystem().makeFolder(folder, cause) || !written.Save(file, &cause)) return false;
  working_ = std::move(written);
  untouched_ = std::move(kept);
  return true;
}

}  // namespace lamp
