#include "host/services/services.h"

namespace host {
namespace {
Services installed;
}

Clock::~Clock() = default;
IdSource::~IdSource() = default;
CommandChannel::~CommandChannel() = default;
FrontEnd::~FrontEnd() = default;
EditorSettings::~EditorSettings() = default;

void installServices(const Services& services) {
  installed = services;
}
const Services& services() {
  return installed;
}

WaitCursor::WaitCursor() {
  services().frontEnd().setCursor(CursorShape::wait);
}
WaitCursor::~WaitCursor() {
  services().frontEnd().setCursor(CursorShape::arrow);
}

}  // namespace host
