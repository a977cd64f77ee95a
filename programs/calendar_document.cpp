#include "programs/calendar_document.h"

#include <new>
#include <utility>

#include "host/services/files.h"
#include "host/services/identity.h"
#include "programs/calendar_names.h"
#include "programs/calendar_store.h"

namespace lamp {

CalendarDocument::CalendarDocument(ProgramKind kind)
    : working_(calendar::Calendar), untouched_(calendar::Calendar) {
  root().NewChild(calendar::Revision);
  root().NewChild(calendar::Name);
  root().SetValue(calendar::HasModule, moduleMark(kind));
  settle();
}

bool CalendarDocument::load(const std::optional<std::filesystem::path>& file) {
  XmlDocument stored;
  if (!readCalendar(file, stored) || stored.Root()->TagName() != calendar::Calendar) return false;
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

bool CalendarDocument::attemptToSave(const std::filesystem::path& file, const XCBasicString& name) {
  root().SetValue(calendar::Revision, guidtow(NewGUID()));
  root().SetValue(calendar::Name, name);
  std::string cause;
  // Made in place of a disk that went away, the folder would be out of sight when it is back.
  const std::filesystem::path folder = file.parent_path();
  if (!host::fileSystem().exists(folder.parent_path())) return false;
  XmlDocument written;
  written.Create(root().TagName()) = root();
  if (!host::fileSystem().makeFolder(folder, cause) || !written.Save(file, &cause)) return false;
  untouched_ = std::move(written);
  return true;
}

}  // namespace lamp
