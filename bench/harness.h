#pragma once
// The part of Google Benchmark's interface that the benchmarks use, for the
// Windows build, where that library is not at hand. Each benchmark runs its
// repetitions, each of as many iterations as fill about half a second, and
// reports per iteration the mean, median, standard deviation and coefficient
// of variation over the repetitions, with the items processed per second.
#include <chrono>
#include <cstdint>
#include <string>
#include <utility>

namespace benchmark {

enum TimeUnit { kNanosecond, kMicrosecond, kMillisecond, kSecond };
using IterationCount = std::int64_t;

class State {
public:
    explicit State(IterationCount iterations) : iterations_(iterations), left_(iterations) {}

    // `for (auto _ : state)` runs the iterations; the clock runs from the first
    // to the end of the last, less any paused stretch.
    struct [[maybe_unused]] Value {};
    class Iterator {
    public:
        explicit Iterator(State* state) : state_(state) {}
        Value operator*() const { return {}; }
        Iterator& operator++() {
            --state_->left_;
            return *this;
        }
        bool operator!=(const Iterator&) const {
            if (state_->left_ > 0) return true;
            state_->PauseTiming();
            return false;
        }

    private:
        State* state_;
    };
    Iterator begin() {
        ResumeTiming();
        return Iterator(this);
    }
    Iterator end() { return Iterator(this); }

    void PauseTiming();
    void ResumeTiming();
    void SetItemsProcessed(std::int64_t items) { items_ = items; }
    IterationCount iterations() const { return iterations_; }

    double seconds() const { return seconds_; }
    std::int64_t items() const { return items_; }

private:
    IterationCount iterations_;
    IterationCount left_;
    std::int64_t items_ = 0;
    double seconds_ = 0;
    bool running_ = false;
    std::chrono::steady_clock::time_point started_;
};

class Benchmark {
public:
    Benchmark(std::string name, void (*function)(State&)) : name_(std::move(name)), function_(function) {}
    Benchmark* Unit(TimeUnit unit) {
        unit_ = unit;
        return this;
    }
    Benchmark* Repetitions(int repetitions) {
        repetitions_ = repetitions;
        return this;
    }
    Benchmark* Iterations(IterationCount iterations) {
        iterations_ = iterations;
        return this;
    }
    // Only aggregates are ever reported here.
    Benchmark* ReportAggregatesOnly(bool = true) { return this; }

    void Run(int defaultRepetitions) const;
    const std::string& name() const { return name_; }

private:
    std::string name_;
    void (*function_)(State&);
    TimeUnit unit_ = kNanosecond;
    int repetitions_ = 0;
    IterationCount iterations_ = 0;
};

Benchmark* Register(const char* name, void (*function)(State&));
// Runs the registered benchmarks; --benchmark_filter=TEXT keeps those whose
// name holds TEXT, --benchmark_repetitions=N sets the repetitions of those
// that set none.
int RunAll(int argc, char** argv);

namespace internal {
void UseCharPointer(char const volatile* pointer);  // out of line, so the value must exist
}

template <class T>
void DoNotOptimize(T const& value) {
    internal::UseCharPointer(&reinterpret_cast<char const volatile&>(value));
}

}  // namespace benchmark

#define TESSMARK_BENCH_CONCAT2(a, b) a##b
#define TESSMARK_BENCH_CONCAT(a, b) TESSMARK_BENCH_CONCAT2(a, b)
#define BENCHMARK(function)                                                            \
    [[maybe_unused]] static ::benchmark::Benchmark* TESSMARK_BENCH_CONCAT(benchmark_, \
                                                                          __LINE__) = \
        ::benchmark::Register(#function, function)
#define BENCHMARK_MAIN() \
    int main(int argc, char** argv) { return ::benchmark::RunAll(argc, argv); }
