#include "harness.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace benchmark {
namespace {

constexpr double kMinSecondsPerRepetition = 0.5;
constexpr int kDefaultRepetitions = 1;

std::vector<std::unique_ptr<Benchmark>>& Registry() {
    static std::vector<std::unique_ptr<Benchmark>> benchmarks;
    return benchmarks;
}

struct UnitScale {
    const char* name;
    double perSecond;
};

UnitScale ScaleOf(TimeUnit unit) {
    switch (unit) {
    case kSecond: return {"s", 1};
    case kMillisecond: return {"ms", 1e3};
    case kMicrosecond: return {"us", 1e6};
    default: return {"ns", 1e9};
    }
}

std::string PerSecond(double rate) {
    const char* suffixes[] = {"", "k", "M", "G"};
    int i = 0;
    while (rate >= 1000 && i < 3) rate /= 1000, ++i;
    char text[32];
    std::snprintf(text, sizeof text, "%.4g%s/s", rate, suffixes[i]);
    return text;
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

}  // namespace

void State::PauseTiming() {
    if (!running_) return;
    seconds_ += std::chrono::duration<double>(std::chrono::steady_clock::now() - started_).count();
    running_ = false;
}

void State::ResumeTiming() {
    if (running_) return;
    running_ = true;
    started_ = std::chrono::steady_clock::now();
}

void Benchmark::Run(int defaultRepetitions) const {
    IterationCount iterations = iterations_;
    if (iterations == 0) {
        // One trial iteration decides how many fill a repetition.
        State trial(1);
        function_(trial);
        const double each = std::max(trial.seconds(), 1e-9);
        iterations = std::clamp<IterationCount>(static_cast<IterationCount>(std::ceil(kMinSecondsPerRepetition / each)),
                                                1, 1'000'000'000);
    }
    const int repetitions = repetitions_ > 0 ? repetitions_ : defaultRepetitions;
    std::vector<double> times, rates;
    for (int r = 0; r < repetitions; ++r) {
        State state(iterations);
        function_(state);
        times.push_back(state.seconds() / static_cast<double>(iterations));
        rates.push_back(state.seconds() > 0 ? static_cast<double>(state.items()) / state.seconds() : 0);
    }

    double mean = 0;
    for (double t : times) mean += t;
    mean /= static_cast<double>(times.size());
    double variance = 0;
    for (double t : times) variance += (t - mean) * (t - mean);
    const double stddev = times.size() > 1 ? std::sqrt(variance / static_cast<double>(times.size() - 1)) : 0;

    const UnitScale scale = ScaleOf(unit_);
    auto row = [&](const char* aggregate, const std::string& time, const std::string& rate) {
        std::printf("%-44s %14s %12lld %s\n", (name_ + "_" + aggregate).c_str(), time.c_str(),
                    static_cast<long long>(iterations), rate.c_str());
    };
    auto inUnit = [&](double seconds) {
        char text[32];
        std::snprintf(text, sizeof text, "%.3f %s", seconds * scale.perSecond, scale.name);
        return std::string(text);
    };
    double meanRate = 0;
    for (double r : rates) meanRate += r;
    meanRate /= static_cast<double>(rates.size());
    row("mean", inUnit(mean), "items_per_second=" + PerSecond(meanRate));
    row("median", inUnit(Median(times)), "items_per_second=" + PerSecond(Median(rates)));
    row("stddev", inUnit(stddev), "");
    char cv[32];
    std::snprintf(cv, sizeof cv, "%.2f %%", mean > 0 ? 100 * stddev / mean : 0.0);
    row("cv", cv, "");
    std::fflush(stdout);
}

void internal::UseCharPointer(char const volatile*) {}

Benchmark* Register(const char* name, void (*function)(State&)) {
    Registry().push_back(std::make_unique<Benchmark>(name, function));
    return Registry().back().get();
}

int RunAll(int argc, char** argv) {
    std::string filter;
    int repetitions = kDefaultRepetitions;
    for (int i = 1; i < argc; ++i) {
        const char* arg = argv[i];
        if (std::strncmp(arg, "--benchmark_filter=", 19) == 0) {
            filter = arg + 19;
        } else if (std::strncmp(arg, "--benchmark_repetitions=", 24) == 0) {
            repetitions = std::max(1, std::atoi(arg + 24));
        } else {
            std::fprintf(stderr, "unknown argument: %s\n", arg);
            return 2;
        }
    }
    std::printf("%-44s %14s %12s %s\n", "Benchmark", "Time", "Iterations", "UserCounters...");
    for (const auto& benchmark : Registry())
        if (benchmark->name().find(filter) != std::string::npos) benchmark->Run(repetitions);
    return 0;
}

}  // namespace benchmark
