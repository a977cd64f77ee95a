#include "editor/options.h"

#include <gtest/gtest.h>

namespace {

struct Refusal {
  const char* argument;
  const char* part;  // of the message
};

class EditorOptions : public testing::Test {
 protected:
  bool read(const QStringList& arguments) {
    error_.clear();
    options_ = {};
    return editor::readOptions(arguments, options_, error_);
  }
  editor::Options options_;
  QString error_;
};

TEST_F(EditorOptions, EveryOptionTakesItsValueWithABlankOrAnEqualsSign) {
  ASSERT_TRUE(read({"--config", "/tmp/a b", "--language=es", "--now=2025-03-15T10:00:00",
                    "--tour=pictures", "--tour-address", "127.0.0.1:8080"}));
  EXPECT_EQ(options_.workspace.configuration, "/tmp/a b");
  EXPECT_EQ(options_.workspace.language, "es");
  EXPECT_EQ(options_.workspace.now, XCDateTime(2025, 3, 15, 10, 0, 0));
  EXPECT_EQ(options_.tour, "pictures");
  EXPECT_EQ(options_.tourAddress, "127.0.0.1:8080");
}

TEST_F(EditorOptions, WithoutAFolderTheConfigurationIsThePersonsOwn) {
  ASSERT_TRUE(read({}));
  EXPECT_FALSE(options_.workspace.configuration.empty());
  EXPECT_TRUE(options_.workspace.language.empty());
}

TEST_F(EditorOptions, WhatIsNotUnderstoodIsNamed) {
  for (const Refusal& row : {Refusal{"--colour", "\"--colour\""},
                             {"--config", "--config needs"},
                             {"--now=tomorrow", "\"tomorrow\""},
                             {"--tour-address=8080", "8080"}}) {
    EXPECT_FALSE(read({row.argument})) << row.argument;
    EXPECT_TRUE(error_.contains(row.part)) << error_.toStdString();
  }
}

TEST_F(EditorOptions, TheHelpNamesThemAll) {
  for (const char* name : {"--config", "--plugin", "--language", "--now", "--tour", "--help"})
    EXPECT_TRUE(editor::helpText().contains(name)) << name;
}

}  // namespace
