#include <gtest/gtest.h>

#include <set>
#include <string>

#include "host/dialogs/extension_module.h"

namespace {

// A program finds a control by its name; a name that stands twice hides the second control.
TEST(Templates, NamesAndIdsOfTheirControlsAreUnique) {
  int dialogs = 0;
  for (int number = 1; number < 5000; ++number) {
    const host::DialogTemplate* found = host::findTemplate(number);
    if (found == nullptr) continue;
    ++dialogs;
    std::set<std::string> names;
    std::set<int> ids;
    for (const host::ControlSpec& control : found->controls) {
      EXPECT_TRUE(names.insert(control.name).second) << found->className << ": " << control.name;
      EXPECT_TRUE(ids.insert(control.id).second) << found->className << ": " << control.id;
    }
  }
  EXPECT_GE(dialogs, 20);
}

}  // namespace
