#include "workbench/process_guard.h"

#include <sys/prctl.h>
#include <sys/stat.h>

#include <csignal>
#include <cstdlib>

#include "host/services/open_file.h"

namespace workbench {
namespace {

constexpr const char* Variables[] = {
    "SSLKEYLOGFILE",   "OPENSSL_CONF",  "OPENSSL_CONF_INCLUDE", "OPENSSL_ENGINES",
    "OPENSSL_MODULES", "SSL_CERT_FILE", "SSL_CERT_DIR",
};

}  // namespace

bool guardProcess() {
  if (!host::holdStandardStreams()) return false;
  // Unlike a limit on the size of dumps, this holds where dumps go to a program, too.
  ::prctl(PR_SET_DUMPABLE, 0);
  for (const int signal : {SIGXFSZ, SIGPIPE}) std::signal(signal, SIG_IGN);
  ::umask(S_IRWXG | S_IRWXO);
  for (const char* variable : Variables) ::unsetenv(variable);
  return true;
}

}  // namespace workbench
