#include <malloc.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "controller/delivery/postman.h"
#include "controller/http/command_server.h"
#include "controller/model/controller.h"
#include "controller/model/controller_clock.h"
#include "controller/options.h"
#include "controller/storage/random_text.h"
#include "controller/storage/state_keeper.h"

namespace lamp::controller {
namespace {

constexpr int kUsage = 2;
constexpr int kFailure = 1;
constexpr std::chrono::milliseconds kTick{200};
// After something went wrong that is tried again, such as a disk that is full.
constexpr std::chrono::seconds kAfterFault{5};
// How much of what the lamps used may be lost when the machine loses its power.
constexpr std::chrono::minutes kBetweenUsage{10};

int complain(const std::string& text, int status) {
  std::cerr << "lamp-controller: " << text << '\n';
  return status;
}

// Goes on with the state that is there, or makes a new street. Returns what is wrong.
std::string prepare(const Options& options, Controller& controller, StateKeeper& keeper) {
  bool found = false;
  const std::filesystem::path file = stateFileOf(options.state);
  if (!file.empty()) machineDisk().makeFolder(folderOf(file));  // a fault shows in what follows
  if (const std::string fault = keeper.restore(found); !fault.empty()) {
    return "the state " + file.string() + " can't be used and was left as it is: " + fault +
           "; repair it, move it away, or name another with --state";
  }
  if (found && !options.id.empty() && options.id != controller.id()) {
    return "the state " + file.string() + " belongs to the controller " + controller.id() +
           ", not to " + options.id;
  }
  if (found) std::cerr << "going on with " << file.string() << '\n';
  if (!keeper.notice().empty()) std::cerr << "lamp-controller: " << keeper.notice() << '\n';
  if (!found) controller.buildStreet(options.street);
  std::string fault = keeper.begin();
  if (fault.empty()) fault = controller.tidyDataFolder();
  return fault.empty() ? "" : "the state can't be kept: " + fault;
}

// Returns what is wrong with the calendar, or an empty text.
std::string followCalendar(const std::string& file, Controller& controller) {
  if (file.empty()) return "";
  std::string text;
  DayCalendar calendar;
  std::string fault = machineDisk().read(file, text);
  if (fault.empty()) fault = calendar.load(text);
  if (!fault.empty()) return "the calendar " + file + " can't be used: " + fault;
  controller.followCalendar(std::move(calendar));
  return "";
}

// Does what is to be done while nobody asks for anything. Returns what went wrong.
std::string workAtTick(Controller& controller, StateKeeper& keeper, bool countUsage) {
  controller.advance();
  std::string fault = controller.takeFault();
  if (fault.empty() && countUsage) fault = controller.keepUsage();
  return fault.empty() ? keeper.compactWhenDue() : fault;
}

void watchClock(const std::stop_token& stop, Controller& controller, StateKeeper& keeper) {
  using Clock = std::chrono::steady_clock;
  Clock::time_point next = Clock::now();
  Clock::time_point nextUsage = next + kBetweenUsage;
  while (!stop.stop_requested()) {
    std::this_thread::sleep_for(kTick);
    if (Clock::now() < next) continue;
    const bool countUsage = Clock::now() >= nextUsage;
    if (countUsage) nextUsage = Clock::now() + kBetweenUsage;
    const std::string fault = workAtTick(controller, keeper, countUsage);
    if (fault.empty()) continue;
    std::cerr << "lamp-controller: " << fault << '\n';
    next = Clock::now() + kAfterFault;
  }
}

// The names by which a browser may know this controller.
std::vector<std::string> hostNamesOf(const Options& options) {
  std::vector<std::string> names = options.hostNames;
  names.push_back(options.listen);
  char machine[256] = "";
  if (::gethostname(machine, sizeof machine - 1) == 0) names.emplace_back(machine);
  return names;
}

// Becomes a new process of the same program on the same port, as a controller does that lost its
// power: nothing is saved or said. Faults that restart are left behind, or it would never end.
void restartProgram(const Options& options, int port) {
  std::vector<std::string> arguments = {"lamp-controller"};
  for (std::size_t i = 0; i < options.arguments.size(); ++i) {
    const std::string& argument = options.arguments[i];
    if (argument.find("restart-mid-command") != std::string::npos) {
      if (!argument.starts_with("--")) arguments.pop_back();
      continue;
    }
    arguments.push_back(argument);
  }
  arguments.insert(arguments.end(), {"--port", std::to_string(port)});
  // One that came from a file is read there again; a command line can be seen by others.
  if (!options.tokenIsSecret) arguments.insert(arguments.end(), {"--token", options.token});
  std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  ::close_range(STDERR_FILENO + 1, ~0U, 0);
  ::execv("/proc/self/exe", pointers.data());
  std::_Exit(kFailure);
}

// A connection that was accepted while a restart closed the others came along and would never be
// answered: it ends, and its client learns that it has to ask again.
void leaveEarlierLifeBehind() {
  ::close_range(STDERR_FILENO + 1, ~0U, 0);
}

// What was answered is on the disk at any moment, so an end that takes too long is cut short.
void endInTime(const std::stop_token& stop) {
  constexpr std::chrono::milliseconds kLongestEnd{1500};
  std::mutex mutex;
  std::unique_lock lock(mutex);
  std::condition_variable_any waking;
  if (waking.wait_for(lock, stop, kLongestEnd, [&] { return stop.stop_requested(); })) return;
  std::cerr << "lamp-controller: ended while commands were being carried out\n";
  std::_Exit(0);
}

// Every connection takes a descriptor.
void allowManyConnections() {
  rlimit limit{};
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
  limit.rlim_cur = limit.rlim_max;
  ::setrlimit(RLIMIT_NOFILE, &limit);
}

int serve(const Options& options, Controller& controller, ControllerClock& clock,
          StateKeeper& keeper) {
  // Every thread inherits the mask, so that only sigwait below hears these signals.
  sigset_t ending;
  sigemptyset(&ending);
  sigaddset(&ending, SIGINT);
  sigaddset(&ending, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &ending, nullptr);
  std::signal(SIGPIPE, SIG_IGN);

  FaultPlan faults;
  for (const Fault& fault : options.faults) faults.add(fault);
  CommandLog log;
  std::atomic<int> port = options.port;
  CommandServer server(Service{controller, clock, faults, log, options.token,
                               [&] { restartProgram(options, port); }, hostNamesOf(options)});
  if (!server.start(options.listen, options.port)) {
    return complain("can't listen on " + options.listen + " port " + std::to_string(options.port) +
                        "; it is in use or not of this machine. Choose another with --port",
                    kFailure);
  }
  port = server.port();
  std::cout << "listening on http://" << options.listen << ':' << server.port() << '\n';
  if (!options.tokenIsSecret) std::cout << "control token " << options.token << '\n';
  std::cout << std::flush;
  std::jthread clockWatch(
      [&](const std::stop_token& stop) { watchClock(stop, controller, keeper); });
  std::optional<Postman> postman;
  if (options.deliver) {
    postman.emplace(controller, clock, dataFolderOf(options.state) / "outbox", options.authorities);
  }
  int signal = 0;
  sigwait(&ending, &signal);
  const std::jthread limit(endInTime);
  server.stop();
  const std::string fault = keeper.compact();
  return fault.empty() ? 0 : complain("the state can't be kept: " + fault, kFailure);
}

// Replies and requests of many megabytes come and go in many threads. Large pieces of memory go
// back to the machine at once, and a few pools serve all threads; each of its own would keep its
// largest.
void shareMemory() {
#ifdef __GLIBC__
  constexpr int kPools = 4;
  constexpr int kLargePiece = 512 * 1024;
  ::mallopt(M_ARENA_MAX, kPools);
  ::mallopt(M_MMAP_THRESHOLD, kLargePiece);
#endif
}

// The settings hold passwords: nothing of this process's memory is left when it ends by a fault.
void forbidCoreDumps() {
  ::prctl(PR_SET_DUMPABLE, 0);
}

int run(const std::vector<std::string>& arguments) {
  Options options;
  if (const std::string fault = parseOptions(arguments, options); !fault.empty()) {
    return complain(fault, kUsage);
  }
  if (options.help) {
    std::cout << helpText();
    return 0;
  }
  options.arguments = arguments;
  if (options.deliver && options.state.empty()) {
    return complain("--deliver needs --state: reports are kept in its folder until they are sent",
                    kUsage);
  }
  if (!options.authorities.empty() && ::access(options.authorities.c_str(), R_OK) != 0) {
    return complain("the certificates in " + options.authorities + " can't be read", kUsage);
  }
  if (const std::string fault =
          readToken(options, std::getenv("CREDENTIALS_DIRECTORY"), options.tokenIsSecret);
      !fault.empty())
    return complain(fault, kUsage);
  if (options.token.empty()) options.token = randomHex(4);
  const MachineTime time;
  ControllerClock clock(time);
  Controller controller(options.id.empty() ? defaultIdentifier(options.street.seed) : options.id,
                        clock);
  controller.setDataFolder(dataFolderOf(options.state));
  StateKeeper keeper(controller, stateFileOf(options.state));
  if (const std::string fault = prepare(options, controller, keeper); !fault.empty()) {
    return complain(fault, kFailure);
  }
  if (const std::string fault = followCalendar(options.calendar, controller); !fault.empty()) {
    return complain(fault, kFailure);
  }
  clock.setSpeed(options.speed);
  return serve(options, controller, clock, keeper);
}

}  // namespace
}  // namespace lamp::controller

int main(int argc, char** argv) {
  lamp::controller::leaveEarlierLifeBehind();
  lamp::controller::shareMemory();
  lamp::controller::forbidCoreDumps();
  lamp::controller::allowManyConnections();
  try {
    return lamp::controller::run(std::vector<std::string>(argv + 1, argv + argc));
  } catch (const std::exception& fault) {
    std::cerr << "lamp-controller: " << fault.what() << '\n';
    return lamp::controller::kFailure;
  }
}
