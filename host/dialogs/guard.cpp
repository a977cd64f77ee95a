#include "host/dialogs/guard.h"

#include <new>
#include <utility>

#include "host/resources/texts.h"
#include "host/services/services.h"

namespace host {
namespace {

int guards = 0;  // that would catch what is thrown now

XCBasicString textOf(const std::exception_ptr& failure) {
  const auto because = [](std::string_view cause) {
    return XCBasicString::Format(XCLoadString(TextId::OperationFailed),
                                 XCBasicString::FromUtf8(cause));
  };
  try {
    std::rethrow_exception(failure);
  } catch (const std::bad_alloc&) {
    return XCLoadString(TextId::NotEnoughMemory);
  } catch (const std::exception& error) {
    return because(error.what());
  } catch (...) {
    return because("?");
  }
}

}  // namespace

Guard::Guard() noexcept {
  ++guards;
}
Guard::~Guard() {
  --guards;
}
bool Guard::isActive() noexcept {
  return guards > 0;
}

FrontEndLoop::FrontEndLoop() noexcept : guards_(std::exchange(guards, 0)) {}
FrontEndLoop::~FrontEndLoop() {
  guards = guards_;
}

void tellFailure(CWnd* parent, const std::exception_ptr& failure) noexcept {
  if (services().frontEndService == nullptr) return;
  try {
    const FrontEndLoop loop;
    services().frontEnd().ask({parent, textOf(failure), MessageButtons::ok, MessageIcon::error});
  } catch (...) {
    // There is no memory for the message either: the operation has failed without a word.
  }
}

}  // namespace host
