#include "Figures.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <map>

namespace kelvane::bench {

namespace {

// Takes note of the best time of every benchmark and prints nothing.
class BestTimes : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type == Run::RT_Iteration && !run.error_occurred && run.iterations > 0) {
        const double all = run.run_name.time_type.empty() ? run.cpu_accumulated_time : run.real_accumulated_time;
        const double time = all / static_cast<double>(run.iterations);
        const auto [best, added] = seconds_.try_emplace(run.run_name.function_name, time);
        if (!added) {
          best->second = std::min(best->second, time);
        }
      }
    }
  }

  // In seconds; 0 for a benchmark that didn't run.
  [[nodiscard]] double Best(const std::string& name) const {
    const auto best = seconds_.find(name);
    return best == seconds_.end() ? 0 : best->second;
  }

 private:
  std::map<std::string, double> seconds_;
};

void Register(const std::string& name, const std::function<void()>& work, const Figure& figure) {
  auto* entry = benchmark::RegisterBenchmark(name.c_str(), [work, prepare = figure.prepare](benchmark::State& state) {
    for (auto step : state) {
      (void)step;
      if (prepare) {
        state.PauseTiming();
        prepare();
        state.ResumeTiming();
      }
      work();
    }
  });
  if (figure.waits) {
    entry->UseRealTime();
  }
}

std::string OursOf(const Figure& figure) {
  return figure.name + ", ours";
}

std::string BesideOf(const Figure& figure) {
  return figure.name + ", beside";
}

}  // namespace

void Use(const void* value) {
  benchmark::DoNotOptimize(value);
  benchmark::ClobberMemory();
}

int RunFigures(int argc, char** argv, const std::vector<Figure>& figures) {
  // In turns, so that what else the machine does meets both sides alike. What the user says comes later and counts.
  std::vector<std::string> arguments = {argv[0], "--benchmark_repetitions=25", "--benchmark_min_time=0.02",
                                        "--benchmark_enable_random_interleaving=true"};
  arguments.insert(arguments.end(), argv + 1, argv + argc);
  std::vector<char*> pointers;
  pointers.reserve(arguments.size());
  for (std::string& argument : arguments) {
    pointers.push_back(argument.data());
  }
  int count = static_cast<int>(pointers.size());
  benchmark::Initialize(&count, pointers.data());
  if (benchmark::ReportUnrecognizedArguments(count, pointers.data())) {
    return 2;
  }
  for (const Figure& figure : figures) {
    Register(OursOf(figure), figure.ours, figure);
    Register(BesideOf(figure), figure.beside, figure);
  }
  BestTimes times;
  benchmark::RunSpecifiedBenchmarks(&times);
  for (const Figure& figure : figures) {
    const double ours = times.Best(OursOf(figure));
    const double beside = times.Best(BesideOf(figure));
    if (ours <= 0 || beside <= 0) {
      continue;  // left out by a filter
    }
    std::printf("%-56s %8.1f us   ratio %6.2f", figure.name.c_str(), ours * 1e6, ours / beside);
    if (figure.aim > 0) {
      std::printf("   aim %.2f%s", figure.aim, ours / beside > figure.aim ? "   MISSED" : "");
    }
    std::printf("\n");
  }
  return 0;
}

}  // namespace kelvane::bench
