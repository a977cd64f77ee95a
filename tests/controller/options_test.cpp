#include "controller/options.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

#include "tests/controller/support/scratch_folder.h"

namespace lamp::controller {
namespace {

TEST(Options, HaveDefaults) {
  Options options;
  EXPECT_EQ(parseOptions({}, options), "");
  EXPECT_EQ(options.port, 8080);
  EXPECT_EQ(options.listen, "127.0.0.1");
  EXPECT_EQ(options.street.nodes, 200U);
}

TEST(Options, AreReadInBothForms) {
  Options options;
  EXPECT_EQ(parseOptions({"--port", "0", "--nodes=5", "--seed", "9", "--state", "a b", "--id",
                          "LM-1", "--with-inputs", "--listen", "0.0.0.0"},
                         options),
            "");
  EXPECT_EQ(options.port, 0);
  EXPECT_EQ(options.street.nodes, 5U);
  EXPECT_EQ(options.street.seed, 9U);
  EXPECT_EQ(options.state, "a b");
  EXPECT_EQ(options.id, "LM-1");
  EXPECT_TRUE(options.street.withInputs);
  EXPECT_EQ(options.listen, "0.0.0.0");
}

TEST(Options, SayWhatIsWrongAndWhatIsExpected) {
  const std::pair<std::vector<std::string>, const char*> bad[] = {
      {{"--nodez", "5"}, "--help"},
      {{"extra"}, "no option"},
      {{"--port"}, "needs a value"},
      {{"--port", "x"}, "0 to 65535"},
      {{"--port", "65536"}, "0 to 65535"},
      {{"--port", "80 "}, "0 to 65535"},
      {{"--port="}, "0 to 65535"},
      {{"--nodes", "-1"}, "0 to 1000000"},
      {{"--nodes", "1000001"}, "0 to 1000000"},
      {{"--seed", "1.5"}, "not negative"},
      {{"--id", ""}, "1 to 16"},
      {{"--id", "12345678901234567"}, "1 to 16"},
      {{"--id", "a b"}, "1 to 16"},
      {{"--state", ""}, "file or folder"},
      {{"--with-inputs=yes"}, "takes no value"},
      {{"--speed", "-1"}, "0 to 86400"},
      {{"--speed", "fast"}, "0 to 86400"},
      {{"--fault", "bogus"}, "no-answer"},
      {{"--token", "short"}, "at least 8"},
  };
  for (const auto& [arguments, said] : bad) {
    Options options;
    const std::string fault = parseOptions(arguments, options);
    EXPECT_NE(fault.find(said), std::string::npos) << arguments[0] << ": " << fault;
  }
}

TEST(Options, TheTokenMayComeFromAFileThatOthersCannotRead) {
  const test::ScratchFolder folder;
  const std::string file = (folder.path() / "control-token").string();
  const auto read = [&](std::string token, std::string tokenFile, const char* credentials,
                        bool& secret, std::string& fault) {
    Options options;
    options.token = std::move(token);
    options.tokenFile = std::move(tokenFile);
    fault = readToken(options, credentials, secret);
    return options.token;
  };
  bool secret = false;
  std::string fault;
  std::ofstream(file) << "letters123\n";
  ::chmod(file.c_str(), 0600);
  const std::string credentials = folder.path().string();
  EXPECT_EQ(read("", file, nullptr, secret, fault), "letters123") << fault;
  EXPECT_TRUE(secret);
  EXPECT_EQ(read("", "", credentials.c_str(), secret, fault), "letters123") << fault;
  EXPECT_TRUE(secret);
  EXPECT_EQ(read("given1234", "", credentials.c_str(), secret, fault), "given1234");
  EXPECT_FALSE(secret);
  EXPECT_EQ(read("", "", nullptr, secret, fault), "");
  EXPECT_EQ(fault, "");
  read("given1234", file, nullptr, secret, fault);
  EXPECT_NE(fault.find("exclude"), std::string::npos);
  read("", file + "x", nullptr, secret, fault);
  EXPECT_NE(fault.find("can't be read"), std::string::npos);
  ::chmod(file.c_str(), 0640);
  EXPECT_EQ(read("", file, nullptr, secret, fault), "");
  EXPECT_NE(fault.find("chmod 600"), std::string::npos);
  ::chmod(file.c_str(), 0600);
  std::ofstream(file) << "short";
  read("", file, nullptr, secret, fault);
  EXPECT_NE(fault.find("at least 8"), std::string::npos);
}

TEST(Options, TheHelpNamesEveryOption) {
  for (const char* name : {"--port", "--listen", "--id", "--nodes", "--seed", "--with-inputs",
                           "--state", "--speed", "--fault", "--token", "--token-file", "--help"}) {
    EXPECT_NE(helpText().find(name), std::string::npos) << name;
  }
}

}  // namespace
}  // namespace lamp::controller
