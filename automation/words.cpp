#include "automation/words.h"

#include "automation/refusal.h"

namespace automation {

void executeWord(Session& session, const Command& command) {
  Word word = findWindowWord(command.word());
  if (word == nullptr) word = findPageWord(command.word());
  if (word == nullptr) word = findEditorWord(command.word());
  if (word == nullptr) throw Refusal("there is no word \"" + command.word() + "\"");
  word(session, command);
}

}  // namespace automation
