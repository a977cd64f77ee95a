#pragma once

#include <span>
#include <type_traits>

#include "host/ui/control.h"

class XCBaseDlg;

namespace host {

/// What a handler may want to know about the notice that called it.
struct NoticeEvent {
  int controlId = 0;
  int parameter = 0;
};

/// One row of a dialog's message map: notices of one kind from a range of controls, and the
/// handler.
struct MessageEntry {
  Notice notice;
  int first;
  int last;
  void (*call)(XCBaseDlg&, const NoticeEvent&);
};

/// A dialog's handlers; those of its base class serve what it does not handle itself.
struct MessageMap {
  const MessageMap* base = nullptr;
  std::span<const MessageEntry> entries;
};

namespace detail {

template <class Class, class... Arguments>
Class classOf(void (Class::*)(Arguments...));

/// Calls a member function that takes nothing, the control's id, a Key, or id and parameter.
template <auto Method>
void callHandler(XCBaseDlg& dialog, const NoticeEvent& event) {
  using Class = decltype(classOf(Method));
  auto& target = static_cast<Class&>(dialog);
  if constexpr (std::is_invocable_v<decltype(Method), Class&>)
    (target.*Method)();
  else if constexpr (std::is_invocable_v<decltype(Method), Class&, Key>)
    (target.*Method)(static_cast<Key>(event.parameter));
  else if constexpr (std::is_invocable_v<decltype(Method), Class&, int>)
    (target.*Method)(event.controlId);
  else
    (target.*Method)(event.controlId, event.parameter);
}

template <auto Method>
constexpr MessageEntry entry(Notice notice, int first, int last) {
  return {notice, first, last, &callHandler<Method>};
}

}  // namespace detail

// Rows of a message map. The handler is a member function of the dialog.

template <auto Method>
constexpr MessageEntry onClick(int id) {
  return detail::entry<Method>(Notice::clicked, id, id);
}
template <auto Method>
constexpr MessageEntry onClick(int first, int last) {
  return detail::entry<Method>(Notice::clicked, first, last);
}
template <auto Method>
constexpr MessageEntry onChange(int id) {
  return detail::entry<Method>(Notice::changed, id, id);
}
template <auto Method>
constexpr MessageEntry onChange(int first, int last) {
  return detail::entry<Method>(Notice::changed, first, last);
}
template <auto Method>
constexpr MessageEntry onChoose(int id) {
  return detail::entry<Method>(Notice::chosen, id, id);
}
template <auto Method>
constexpr MessageEntry onChoose(int first, int last) {
  return detail::entry<Method>(Notice::chosen, first, last);
}
template <auto Method>
constexpr MessageEntry onSelection(int id) {
  return detail::entry<Method>(Notice::selectionChanged, id, id);
}
template <auto Method>
constexpr MessageEntry onDoubleClick(int id) {
  return detail::entry<Method>(Notice::doubleClicked, id, id);
}
template <auto Method>
constexpr MessageEntry onKey(int id) {
  return detail::entry<Method>(Notice::keyPressed, id, id);
}
template <auto Method>
constexpr MessageEntry onPaint(int id) {
  return detail::entry<Method>(Notice::painted, id, id);
}
/// A message that the dialog posts to itself; the handler takes the message's parameter as an int
/// in the place of the control's id.
template <auto Method>
constexpr MessageEntry onPosted(int message) {
  return detail::entry<Method>(Notice::posted, message, message);
}

}  // namespace host
