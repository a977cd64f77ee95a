// The node table in the editor beside a bare table view on a bare model, both on the offscreen
// platform: until the first paint, select all, type into all, sort, filter, each with the paint
// that follows. Names read "editor/<step>/<variant>/<nodes>".

#include <benchmark/benchmark.h>

#include <QtWidgets/QApplication>
#include <chrono>
#include <functional>

#include "bench/bare_window.h"
#include "bench/documents.h"
#include "bench/headless.h"
#include "bench/page_window.h"
#include "bench/sizes.h"

namespace {

using benchmark::State;
using Clock = std::chrono::steady_clock;

// Works on what is queued until the table has been painted anew.
class Paint : public QObject {
 public:
  explicit Paint(QWidget& viewport) {
    viewport.installEventFilter(this);
    viewport.update();
    while (!painted_) QApplication::processEvents();
    viewport.removeEventFilter(this);
  }
  bool eventFilter(QObject*, QEvent* event) override {
    painted_ = painted_ || event->type() == QEvent::Paint;
    return false;
  }

 private:
  bool painted_ = false;
};

void settle(bench::TableWindow& window) {
  Paint painted(*window.view().viewport());
}

void measure(State& state, bench::TableWindow& window, const std::function<void()>& act) {
  settle(window);
  const auto start = Clock::now();
  act();
  settle(window);
  state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
}

using Step = std::function<void(State&, bench::TableWindow&)>;

const std::pair<const char*, Step> Steps[] = {
    {"selectAll",
     [](State& state, bench::TableWindow& window) {
       for (auto _ : state) {
         window.view().clearSelection();
         measure(state, window, [&] { window.view().selectAll(); });
       }
     }},
    {"typeIntoAll",
     [](State& state, bench::TableWindow& window) {
       window.view().selectAll();
       int typed = 0;
       for (auto _ : state) measure(state, window, [&] { window.type(QString::number(++typed)); });
     }},
    {"sort",
     [](State& state, bench::TableWindow& window) {
       for (auto _ : state) measure(state, window, [&] { window.sort(); });
     }},
    {"filter",
     [](State& state, bench::TableWindow& window) {
       for (auto _ : state) {
         window.filter("");
         measure(state, window, [&] { window.filter("77"); });
       }
     }},
};

// From nothing but the reply's text to a table that can be seen.
void measureOpening(State& state, const std::function<void(const bench::AtWindow&)>& open) {
  for (auto _ : state) {
    const auto start = Clock::now();
    open([&](bench::TableWindow& window) {
      settle(window);
      state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
    });
  }
}

using Open = std::function<void(long nodes, const bench::AtWindow&)>;

void add(const std::string& variant, const Open& open) {
  const auto add = [&](const std::string& step, const std::function<void(State&)>& run) {
    auto* registered =
        benchmark::RegisterBenchmark(("editor/" + step + "/" + variant).c_str(), run);
    registered->UseManualTime();
    for (const long nodes : bench::Sizes) registered->Arg(nodes);
  };
  add("open", [open](State& state) {
    measureOpening(state, [&](const bench::AtWindow& then) { open(state.range(0), then); });
  });
  for (const auto& [name, step] : Steps)
    add(name, [open, &step = step](State& state) {
      open(state.range(0), [&](bench::TableWindow& window) { step(state, window); });
    });
}

const std::string& replyOf(long nodes) {
  static std::map<long, std::string> replies;
  std::string& reply = replies[nodes];
  if (reply.empty()) reply = bench::nodeTable(static_cast<std::size_t>(nodes));
  return reply;
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  bench::Headless headless;
  bench::PageOpener pages(headless);
  for (const long nodes : bench::Sizes) replyOf(nodes);
  add("bare",
      [](long nodes, const bench::AtWindow& then) { bench::openBareWindow(replyOf(nodes), then); });
  add("host", [&](long nodes, const bench::AtWindow& then) { pages.open(replyOf(nodes), then); });
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
