#include "editor/renderers/edit_renderer.h"

#include <algorithm>

#include "editor/qt_text.h"
#include "editor/renderers/model_line_edit.h"

namespace editor {
namespace {

constexpr int WidestInCharacters = 28;
constexpr int NarrowestInCharacters = 8;

/// What turned one text into another: units [from, to) became those up to `end` in the new text.
struct Replacement {
  std::size_t from;
  std::size_t to;
  std::size_t end;
};

// The caret tells which of several equal characters were typed: they end in front of it.
Replacement replacementOf(std::u16string_view before, std::u16string_view after,
                          std::size_t caret) {
  std::size_t tail = after.size() - std::min(caret, after.size());
  if (tail > before.size() || before.substr(before.size() - tail) != after.substr(caret)) {
    tail = 0;
    while (tail < std::min(before.size(), after.size()) &&
           before[before.size() - tail - 1] == after[after.size() - tail - 1])
      ++tail;
  }
  const std::size_t most = std::min(before.size(), after.size()) - tail;
  std::size_t from = 0;
  while (from < most && before[from] == after[from]) ++from;
  return {from, before.size() - tail, after.size() - tail};
}

}  // namespace

EditRenderer::EditRenderer(XCBaseDlg& dialog, host::EditControl& control, QWidget* parent)
    : ControlRenderer(dialog, control), edit_(control), line_(new ModelLineEdit(control, parent)) {
  line_->setReadOnly(edit_.isReadOnly());
  if (edit_.isPassword()) line_->setEchoMode(QLineEdit::Password);
  line_->setMinimumWidth(naturalWidth());
  line_->onInsert = [this](const QString& typed) {
    perform([&](host::UserInput& input) { input.insert(edit_, hostText(typed)); });
  };
  line_->onErase = [this](bool forward) {
    perform([&](host::UserInput& input) { input.erase(edit_, forward); });
  };
  connect(line_, &QLineEdit::textEdited, this, [this](const QString& text) { takeTyped(text); });
  connect(line_, &QLineEdit::selectionChanged, this, [this] { mirrorSelection(); });
  connect(line_, &QLineEdit::cursorPositionChanged, this, [this] { mirrorSelection(); });
}

QWidget& EditRenderer::widget() {
  return *line_;
}
QWidget* EditRenderer::focusWidget() {
  return line_;
}

unsigned EditRenderer::gestureChanges() const {
  return static_cast<unsigned>(host::Change::text) | static_cast<unsigned>(host::Change::selection);
}

int EditRenderer::naturalWidth() const {
  const int limit = edit_.limit() > 0         ? edit_.limit()
                    : edit_.mask().isActive() ? static_cast<int>(edit_.mask().length())
                    : edit_.isDigitsOnly()    ? NarrowestInCharacters
                                              : WidestInCharacters;
  const int characters = std::clamp(limit, NarrowestInCharacters, WidestInCharacters);
  const int frame = line_->sizeHint().height();  // about the frame, the margins and the caret
  return characters * line_->fontMetrics().averageCharWidth() + frame;
}

void EditRenderer::mirrorSelection() {
  // While text differs Qt's positions belong to a text that the model has not seen yet.
  if (isSyncing() || line_->text() != qtText(edit_.text())) return;
  const auto from = static_cast<std::size_t>(line_->hasSelectedText() ? line_->selectionStart()
                                                                      : line_->cursorPosition());
  const std::size_t to =
      line_->hasSelectedText() ? static_cast<std::size_t>(line_->selectionEnd()) : from;
  if (from != edit_.selectionFrom() || to != edit_.selectionTo()) edit_.select(from, to);
}

void EditRenderer::takeTyped(const QString& text) {
  perform([&](host::UserInput& input) {
    const std::u16string after(hostText(text));
    const Replacement change =
        replacementOf(edit_.text(), after, static_cast<std::size_t>(line_->cursorPosition()));
    edit_.select(change.from, change.to);
    const std::u16string typed = after.substr(change.from, change.end - change.from);
    if (typed.empty() && change.to > change.from)
      input.erase(edit_, true);
    else
      input.insert(edit_, typed);
  });
}

void EditRenderer::show(unsigned changes) {
  if (has(changes, host::Change::text)) {
    const QString text = qtText(edit_.text());
    if (line_->text() != text) line_->setText(text);
  }
  if (has(changes, host::Change::text) || has(changes, host::Change::selection)) showSelection();
}

void EditRenderer::showSelection() {
  const auto from = static_cast<int>(edit_.selectionFrom());
  const auto to = static_cast<int>(edit_.selectionTo());
  if (from == to) {
    if (line_->hasSelectedText() || line_->cursorPosition() != from) line_->setCursorPosition(from);
  } else if (line_->selectionStart() != from || line_->selectionEnd() != to) {
    line_->setSelection(from, to - from);
  }
}

}  // namespace editor
